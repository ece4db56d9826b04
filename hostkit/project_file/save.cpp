#include "hostkit/project_file/save.h"

#include "automation/error.h"
#include "automation/file_handle.h"
#include "hostkit/project_file/loader.h"
#include "hostkit/project_file/model_changes.h"

namespace hostkit::project_file {
namespace {

[[noreturn]] void fail_writing(const std::wstring& path) {
    const DWORD error = GetLastError();
    automation::fail(HRESULT_FROM_WIN32(error), L"The file \"" + path + L"\" cannot be written");
}

// A file of its own beside the one that it shall replace, gone unless it does.
class Replacement {
  public:
    Replacement(const std::wstring& path, const std::string& bytes)
        : path_(path), temporary_(path + L".tessera-new") {
        const automation::FileHandle file(CreateFileW(temporary_.c_str(), GENERIC_WRITE, 0, nullptr,
                                                      CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                                                      nullptr));
        DWORD written = 0;
        if (!file.is_open() ||
            !WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                       nullptr) ||
            written != bytes.size() || !FlushFileBuffers(file.get()))
            fail_writing(temporary_);
    }
    ~Replacement() { DeleteFileW(temporary_.c_str()); }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    void move_into_place() const {
        if (!MoveFileExW(temporary_.c_str(), path_.c_str(), MOVEFILE_REPLACE_EXISTING))
            fail_writing(path_);
    }

  private:
    const std::wstring path_;
    const std::wstring temporary_;
};

// The text that the edits make, if reading it again gives what the model holds.
std::string proven(const Model& original, const Model& model, const XmlElement& root) {
    const ProjectSource& source = model.source;
    std::string bytes = edited(source.bytes, changes_between(original, model, root));
    const auto saved = load(ProjectSource{source.path, bytes});
    if (!changes_between(*saved, model, read_xml(source.path, bytes)).empty())
        automation::fail(E_UNEXPECTED, L"\"" + source.path +
                                           L"\" would not hold all that was changed; it stays as "
                                           L"it is");
    return bytes;
}

}  // namespace

void save(Model& model, const std::wstring& backup_path) {
    const std::wstring& path = model.source.path;
    if (read_file(path) != model.source.bytes)
        automation::fail(HRESULT_FROM_WIN32(ERROR_FILE_INVALID),
                         L"\"" + path + L"\" was changed by somebody else since it was opened");
    const auto original = load(model.source);
    std::string bytes = proven(*original, model, read_xml(path, model.source.bytes));
    if (bytes == model.source.bytes) return;
    const Replacement replacement(path, bytes);
    if (!backup_path.empty()) Replacement(backup_path, model.source.bytes).move_into_place();
    replacement.move_into_place();
    model.source.bytes = std::move(bytes);
}

}  // namespace hostkit::project_file
