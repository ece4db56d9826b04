#include "cli/text_file.h"

#include <utility>

#include "automation/bstr.h"
#include "automation/file_handle.h"
#include "cli/console.h"
#include "cli/failure.h"
#include "cli/standard_path.h"
#include "text/utf8.h"

namespace cli {
namespace {

[[noreturn]] void fail_reading(const std::wstring& path, const wchar_t* role,
                               const std::wstring& reason) {
    const std::wstring name = is_standard(path) ? L" on standard input" : L" \"" + path + L"\"";
    throw Failure(role + name + L" cannot be read: " + reason);
}

// A pipe that its writer has closed is at its end.
std::string read_all(HANDLE file, const std::wstring& path, const wchar_t* role) {
    std::string bytes;
    char block[65536];
    DWORD got = 0;
    do {
        if (!ReadFile(file, block, sizeof block, &got, nullptr)) {
            if (GetLastError() == ERROR_BROKEN_PIPE) break;
            fail_reading(path, role, reason_of(GetLastError()));
        }
        bytes.append(block, got);
    } while (got > 0);
    return bytes;
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

}  // namespace

std::string read_bytes(const std::wstring& path, const wchar_t* role) {
    if (is_standard(path)) return read_all(GetStdHandle(STD_INPUT_HANDLE), path, role);
    const automation::FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ,
                                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                                  nullptr));
    if (!file.is_open()) fail_reading(path, role, reason_of(GetLastError()));
    return read_all(file.get(), path, role);
}

std::u16string read_text_file(const std::wstring& path, const wchar_t* role) {
    return decoded_text(read_bytes(path, role), path, role);
}

std::u16string decoded_text(std::string_view bytes, const std::wstring& path, const wchar_t* role) {
    constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
    constexpr std::string_view little_endian_mark = "\xFF\xFE";
    constexpr std::string_view big_endian_mark = "\xFE\xFF";
    const bool is_little_endian = bytes.starts_with(little_endian_mark);
    if (is_little_endian || bytes.starts_with(big_endian_mark)) {
        if (bytes.size() % 2 != 0)
            fail_reading(path, role, L"it ends in the middle of a UTF-16 character; save it again");
        return from_utf16(bytes.substr(2), is_little_endian ? 0 : 1);
    }
    if (bytes.starts_with(utf8_mark)) {
        if (auto text = tessera::from_utf8(bytes.substr(utf8_mark.size()))) return std::move(*text);
        fail_reading(path, role, L"it says that it is UTF-8, but it is not; save it again");
    }
    if (auto text = tessera::from_utf8(bytes)) return std::move(*text);
    return from_ansi(bytes);
}

TextFile::TextFile(const std::wstring& path, FileEncoding encoding)
    : encoding_(is_standard(path) ? FileEncoding::utf8 : encoding) {
    if (!is_standard(path)) file_.emplace(path);
    if (encoding_ == FileEncoding::utf16) write(u"\uFEFF");
}

std::u16string_view TextFile::encoding_name() const noexcept {
    return encoding_ == FileEncoding::utf16 ? u"UTF-16" : u"UTF-8";
}

void TextFile::write(std::u16string_view text) {
    if (!file_)
        for_standard_output_ += text;
    else if (encoding_ == FileEncoding::utf8)
        file_->write(tessera::to_utf8(text));
    else
        // Bytes may be looked at through any type.
        file_->write({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)});
}

void TextFile::finish() {
    if (file_) return file_->finish();
    ConsoleStream(STD_OUTPUT_HANDLE).write(for_standard_output_);
}

}  // namespace cli
