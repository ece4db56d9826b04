#include "cli/text_file.h"

#include <algorithm>
#include <utility>

#include "automation/bstr.h"
#include "cli/console.h"
#include "cli/failure.h"
#include "text/utf8.h"

namespace cli {
namespace {

[[noreturn]] void fail_reading(const std::wstring& path, const wchar_t* role,
                               const std::wstring& reason) {
    throw Failure(std::wstring(role) + L" \"" + path + L"\" cannot be read: " + reason);
}

// `low` is the position of the low byte in each pair.
std::u16string from_utf16(std::string_view bytes, std::size_t low) {
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i + low]) |
                                      static_cast<unsigned char>(bytes[i + 1 - low]) << 8);
    return text;
}

std::u16string from_ansi(std::string_view bytes) {
    const auto size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), length);
    return std::u16string(automation::as_u16(text));
}

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

std::string read_bytes(const std::wstring& path, const wchar_t* role) {
    const automation::FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ,
                                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                                  nullptr));
    if (!file.is_open()) fail_reading(path, role, reason_of(GetLastError()));
    std::string bytes;
    char block[65536];
    DWORD got = 0;
    do {
        if (!ReadFile(file.get(), block, sizeof block, &got, nullptr))
            fail_reading(path, role, reason_of(GetLastError()));
        bytes.append(block, got);
    } while (got > 0);
    return bytes;
}

std::u16string read_text_file(const std::wstring& path, const wchar_t* role) {
    constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
    constexpr std::string_view little_endian_mark = "\xFF\xFE";
    constexpr std::string_view big_endian_mark = "\xFE\xFF";

    const std::string file = read_bytes(path, role);
    std::string_view bytes = file;
    const bool is_little_endian = bytes.starts_with(little_endian_mark);
    if (is_little_endian || bytes.starts_with(big_endian_mark)) {
        if (bytes.size() % 2 != 0)
            fail_reading(path, role, L"it ends in the middle of a UTF-16 character");
        return from_utf16(bytes.substr(2), is_little_endian ? 0 : 1);
    }
    if (bytes.starts_with(utf8_mark)) {
        if (auto text = tessera::from_utf8(bytes.substr(utf8_mark.size()))) return std::move(*text);
        fail_reading(path, role, L"it says that it is UTF-8, but it is not");
    }
    if (auto text = tessera::from_utf8(bytes)) return std::move(*text);
    return from_ansi(bytes);
}

TextFile::TextFile(const std::wstring& path, FileEncoding encoding)
    : path_(path), encoding_(encoding), file_(open()) {
    if (encoding_ == FileEncoding::utf16) write(u"\uFEFF");
}

TextFile::~TextFile() {
    file_.close();
    if (!temporary_.empty()) DeleteFileW(temporary_.c_str());
}

// What is there must be writable now, not only when there is a result to lose. Where it is no file
// ("NUL", a pipe), it takes the result itself.
HANDLE TextFile::open() {
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

void TextFile::write(std::u16string_view text) {
    if (encoding_ == FileEncoding::utf16)
        return write_bytes(text.data(), text.size() * sizeof(char16_t));
    const std::string bytes = tessera::to_utf8(text);
    write_bytes(bytes.data(), bytes.size());
}

void TextFile::finish() {
    if (temporary_.empty()) return file_.close();
    if (!FlushFileBuffers(file_.get())) fail();
    let_vanish(file_.get(), false);
    file_.close();
    if (!MoveFileExW(temporary_.c_str(), path_.c_str(), MOVEFILE_REPLACE_EXISTING)) fail();
    temporary_.clear();
}

void TextFile::write_bytes(const void* data, std::size_t size) {
    constexpr std::size_t bytes_at_once = 1 << 20;
    const auto* next = static_cast<const char*>(data);
    while (size > 0) {
        const auto part = static_cast<DWORD>(std::min(size, bytes_at_once));
        DWORD written = 0;
        if (!WriteFile(file_.get(), next, part, &written, nullptr)) fail();
        next += written;
        size -= written;
    }
}

void TextFile::fail() const {
    throw Failure(L"\"" + path_ + L"\" cannot be written: " + reason_of(GetLastError()));
}

}  // namespace cli
