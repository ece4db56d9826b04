#include "cli/output_file.h"

#include <algorithm>

#include "cli/console.h"
#include "cli/failure.h"
#include "cli/standard_path.h"

namespace cli {
namespace {

std::wstring_view folder_of(std::wstring_view path) noexcept {
    const std::size_t separator = path.find_last_of(L"/\\");
    if (separator != path.npos) return path.substr(0, separator + 1);
    return path.substr(0, path.substr(1, 1) == L":" ? 2 : 0);
}

// Makes a file under a name that no other one in the folder has.
HANDLE create_temporary(std::wstring_view folder, std::wstring& path) {
    const std::wstring begin =
        std::wstring(folder) + L"tessera-" + std::to_wstring(GetCurrentProcessId()) + L"-";
    for (int number = 1;; ++number) {
        path = begin + std::to_wstring(number) + L".tmp";
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ,
                                        nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_EXISTS) return file;
    }
}

// A file that vanishes does so however the process ends.
void let_vanish(HANDLE file, bool vanishes) noexcept {
    FILE_DISPOSITION_INFO disposition{vanishes};
    SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof disposition);
}

}  // namespace

OutputFile::OutputFile(const std::wstring& path) : path_(path), file_(open()) {}

OutputFile::~OutputFile() {
    file_.close();
    if (!temporary_.empty()) DeleteFileW(temporary_.c_str());
}

// What is there must be writable now, not only when there is a result to lose. Where it is no file
// ("NUL", a pipe), it takes the result itself.
HANDLE OutputFile::open() {
    if (is_standard(path_)) {
        if (!ConsoleStream(STD_OUTPUT_HANDLE).is_terminal()) return INVALID_HANDLE_VALUE;
        throw Failure(
            L"standard output is a terminal, which shows no such file; lead it to a file or a "
            L"program, or name a file with \"--out\"");
    }
    const HANDLE there = CreateFileW(path_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (there != INVALID_HANDLE_VALUE) {
        if (GetFileType(there) != FILE_TYPE_DISK) return there;
        CloseHandle(there);
    } else if (GetLastError() != ERROR_FILE_NOT_FOUND) {
        fail();
    }
    const HANDLE file = create_temporary(folder_of(path_), temporary_);
    if (file == INVALID_HANDLE_VALUE) fail();
    let_vanish(file, true);
    return file;
}

void OutputFile::write(std::string_view bytes) {
    if (is_standard(path_))
        for_standard_output_ += bytes;
    else
        write_to(file_.get(), bytes);
}

void OutputFile::write_to(HANDLE file, std::string_view bytes) const {
    constexpr std::size_t bytes_at_once = 1 << 20;
    while (!bytes.empty()) {
        const auto part = static_cast<DWORD>(std::min(bytes.size(), bytes_at_once));
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), part, &written, nullptr)) fail();
        bytes.remove_prefix(written);
    }
}

void OutputFile::finish() {
    if (is_standard(path_)) return write_to(GetStdHandle(STD_OUTPUT_HANDLE), for_standard_output_);
    if (temporary_.empty()) return file_.close();
    if (!FlushFileBuffers(file_.get())) fail();
    let_vanish(file_.get(), false);
    file_.close();
    if (!MoveFileExW(temporary_.c_str(), path_.c_str(), MOVEFILE_REPLACE_EXISTING)) fail();
    temporary_.clear();
}

void OutputFile::fail() const {
    const std::wstring reason = reason_of(GetLastError());
    if (is_standard(path_)) throw Failure(L"standard output cannot be written: " + reason);
    throw Failure(L"\"" + path_ + L"\" cannot be written: " + reason);
}

}  // namespace cli
