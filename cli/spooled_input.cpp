#include "cli/spooled_input.h"

#include "automation/file_handle.h"
#include "cli/console.h"
#include "cli/failure.h"
#include "cli/standard_path.h"
#include "cli/text_file.h"

namespace cli {
namespace {

[[noreturn]] void fail(DWORD error = GetLastError()) {
    throw Failure(L"standard input cannot be kept in a file of the folder for temporary files: " +
                  reason_of(error));
}

std::wstring temporary_path() {
    wchar_t folder[MAX_PATH + 1];
    wchar_t path[MAX_PATH + 1];
    const DWORD length = GetTempPathW(static_cast<DWORD>(std::size(folder)), folder);
    if (length == 0 || length > MAX_PATH || !GetTempFileNameW(folder, L"tes", 0, path)) fail();
    return path;
}

bool write_file(const std::wstring& path, const std::string& bytes) {
    const automation::FileHandle file(CreateFileW(
        path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_TEMPORARY, nullptr));
    DWORD written = 0;
    return file.is_open() &&
           WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     nullptr) &&
           written == bytes.size();
}

}  // namespace

SpooledInput::SpooledInput() {
    const std::string bytes = read_bytes(std::wstring(standard_path), L"the project file");
    path_ = temporary_path();
    if (write_file(path_, bytes)) return;
    const DWORD error = GetLastError();
    DeleteFileW(path_.c_str());
    fail(error);
}

SpooledInput::~SpooledInput() {
    DeleteFileW(path_.c_str());
}

std::wstring SpooledInput::renamed(std::wstring sentence) const {
    const std::size_t place = sentence.find(path_);
    if (place != sentence.npos) sentence.replace(place, path_.size(), L"standard input");
    return sentence;
}

}  // namespace cli
