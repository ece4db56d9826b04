#include "hostkit/project_file/save.h"

#include "automation/error.h"
#include "automation/unfinished_file.h"
#include "hostkit/project_file/loader.h"
#include "hostkit/project_file/model_changes.h"

namespace hostkit::project_file {
namespace {

[[noreturn]] void fail_writing(const std::wstring& path) {
    const DWORD error = GetLastError();
    automation::fail(HRESULT_FROM_WIN32(error), L"The file \"" + path + L"\" cannot be written");
}

// The bytes in a file that is not at its place yet.
class Replacement {
  public:
    Replacement(const std::wstring& path, const std::string& bytes) : path_(path), file_(path) {
        if (!file_.is_open() || !file_.write(bytes)) fail_writing(path_);
    }

    void move_into_place() {
        if (!file_.move_into_place()) fail_writing(path_);
    }

  private:
    const std::wstring path_;
    automation::UnfinishedFile file_;
};

// What a file says differently from the model.
MarkupEdits changes_since(const ProjectSource& source, const Model& model) {
    const XmlElement root = read_xml(source.path, source.bytes);
    return changes_between(*load(source, root), model, root);
}

// The bytes of the changed file, if reading them again gives what the model holds.
std::string proven_bytes(const Model& model) {
    const ProjectSource& source = model.source;
    ProjectSource changed{source.path, edited(source.bytes, changes_since(source, model))};
    if (!changes_since(changed, model).empty())
        automation::fail(E_UNEXPECTED, L"\"" + source.path +
                                           L"\" would not hold all that was changed; it stays as "
                                           L"it is");
    return std::move(changed.bytes);
}

}  // namespace

void save(Model& model, const std::wstring& backup_path) {
    const std::wstring& path = model.source.path;
    if (read_file(path) != model.source.bytes)
        automation::fail(HRESULT_FROM_WIN32(ERROR_FILE_INVALID),
                         L"\"" + path + L"\" was changed by somebody else since it was opened");
    std::string bytes = proven_bytes(model);
    if (bytes == model.source.bytes) return;
    Replacement replacement(path, bytes);
    if (!backup_path.empty()) Replacement(backup_path, model.source.bytes).move_into_place();
    replacement.move_into_place();
    model.source.bytes = std::move(bytes);
}

}  // namespace hostkit::project_file
