#include "cli/output_file.h"

#include "cli/console.h"
#include "cli/failure.h"
#include "cli/standard_path.h"

namespace cli {

OutputFile::OutputFile(const std::wstring& path) : path_(path), device_(open_device()) {
    if (is_standard(path_) || device_.is_open()) return;
    file_.emplace(path_);
    if (!file_->is_open()) fail();
}

// What is there must be writable now, not only when there is a result to lose.
HANDLE OutputFile::open_device() const {
    if (is_standard(path_)) {
        if (!ConsoleStream(STD_OUTPUT_HANDLE).is_terminal()) return INVALID_HANDLE_VALUE;
        throw Failure(
            L"standard output is a terminal, which shows no such file; lead it to a file or a "
            L"program, or name a file with \"--out\"");
    }
    const HANDLE there = CreateFileW(path_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (there == INVALID_HANDLE_VALUE) {
        if (GetLastError() != ERROR_FILE_NOT_FOUND) fail();
        return there;
    }
    if (GetFileType(there) != FILE_TYPE_DISK) return there;
    CloseHandle(there);
    return INVALID_HANDLE_VALUE;
}

void OutputFile::write(std::string_view bytes) {
    if (is_standard(path_))
        for_standard_output_ += bytes;
    else if (!(file_ ? file_->write(bytes) : automation::write_bytes(device_.get(), bytes)))
        fail();
}

void OutputFile::finish() {
    device_.close();
    if (file_ && !file_->move_into_place()) fail();
    const HANDLE standard_output = GetStdHandle(STD_OUTPUT_HANDLE);
    if (is_standard(path_) && !automation::write_bytes(standard_output, for_standard_output_))
        fail();
}

void OutputFile::fail() const {
    const std::wstring reason = reason_of(GetLastError());
    if (is_standard(path_)) throw Failure(L"standard output cannot be written: " + reason);
    throw Failure(L"\"" + path_ + L"\" cannot be written: " + reason);
}

}  // namespace cli
