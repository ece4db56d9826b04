#include "hostkit/project_file/file_text.h"

#include <algorithm>
#include <string_view>

#include "automation/bstr.h"
#include "automation/text.h"
#include "hostkit/model/texts.h"
#include "hostkit/project_file/xml_tree.h"
#include "text/utf8.h"

namespace hostkit::project_file {
namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

// The place of encoding="…" in the XML declaration; empty when none is declared.
struct DeclaredEncoding {
    std::size_t start = 0;
    std::size_t length = 0;
    std::string name;
};

DeclaredEncoding declared_encoding(std::string_view text) {
    if (!text.starts_with("<?xml")) return {};
    const std::string_view declaration = text.substr(0, text.find("?>"));
    const std::size_t start = declaration.find("encoding");
    const std::size_t quote = declaration.find_first_of("\"'", std::min(start, text.size()));
    if (quote == std::string_view::npos) return {};
    const std::size_t end = declaration.find(declaration[quote], quote + 1);
    if (end == std::string_view::npos) return {};
    return {start, end + 1 - start, std::string(declaration.substr(quote + 1, end - quote - 1))};
}

// Throws at the first line that is not valid.
template <class Character, class IsValid>
void check_lines(const std::wstring& path, std::basic_string_view<Character> text,
                 IsValid&& is_valid, const wchar_t* encoding) {
    unsigned line = 1;
    for (std::size_t start = 0; start < text.size(); ++line) {
        const std::size_t end = std::min(text.find(Character{'\n'}, start), text.size());
        if (end > start && !is_valid(text.data() + start, static_cast<int>(end - start)))
            fail_in_file(path, line, std::wstring(L"there are bytes that are no ") + encoding);
        start = end + 1;
    }
}

std::string checked_utf8(const std::wstring& path, std::string text) {
    const auto is_valid = [](const char* line, int length) {
        return tessera::from_utf8({line, static_cast<std::size_t>(length)}).has_value();
    };
    check_lines<char>(path, text, is_valid, L"UTF-8");
    return text;
}

std::string utf8_of(std::wstring_view text) {
    return tessera::to_utf8(automation::as_u16(text));
}

// Half of a pair is no character.
bool is_utf16(std::u16string_view text) {
    while (!text.empty()) {
        const tessera::CodePoint point = tessera::first_code_point(text);
        if (point.is_lone_surrogate()) return false;
        text.remove_prefix(point.units);
    }
    return true;
}

std::string from_utf16(const std::wstring& path, std::string_view bytes, bool big_first) {
    std::wstring text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        text += static_cast<wchar_t>(big_first ? first << 8 | second : second << 8 | first);
    }
    const auto is_valid = [](const wchar_t* line, int length) {
        return is_utf16(automation::as_u16({line, static_cast<std::size_t>(length)}));
    };
    check_lines<wchar_t>(path, text, is_valid, L"UTF-16");
    if (bytes.size() % 2 != 0) fail_in_file(path, 0, L"the file ends in the middle of a character");
    return utf8_of(text);
}

std::string from_latin_1(std::string_view bytes) {
    std::wstring text;
    for (const char byte : bytes)
        text += static_cast<unsigned char>(byte);
    return utf8_of(text);
}

std::string from_windows_1252(const std::wstring& path, std::string_view bytes) {
    constexpr UINT code_page = 1252;
    const auto is_valid = [](const char* line, int length) {
        constexpr std::string_view unassigned = "\x81\x8D\x8F\x90\x9D";
        return std::string_view(line, static_cast<std::size_t>(length)).find_first_of(unassigned) ==
               std::string_view::npos;
    };
    check_lines<char>(path, bytes, is_valid, L"windows-1252");
    const auto size = static_cast<int>(bytes.size());
    std::wstring text(bytes.size(), L'\0');
    MultiByteToWideChar(code_page, 0, bytes.data(), size, text.data(), size);
    return utf8_of(text);
}

[[noreturn]] void fail_encoding(const std::wstring& path, std::string_view bytes) {
    const std::string declared = declared_encoding(bytes).name;
    const std::wstring name(declared.begin(), declared.end());
    fail_in_file(path, 1,
                 automation::equal_ignoring_case(name, L"UTF-16")
                     ? L"the file is not encoded in UTF-16, as it says"
                     : L"the encoding \"" + name +
                           L"\" is not read: UTF-8, UTF-16, windows-1252 and ISO-8859-1 are");
}

std::string decoded(const std::wstring& path, std::string&& bytes) {
    const auto encoding = encoding_of(bytes);
    if (!encoding) fail_encoding(path, bytes);
    std::string_view all = bytes;
    switch (*encoding) {
        case Encoding::utf8:
            all.remove_prefix(all.starts_with(utf8_mark) ? utf8_mark.size() : 0);
            return checked_utf8(path, std::string(all));
        case Encoding::utf16_little:
        case Encoding::utf16_big:
            // The first character is a byte-order mark or a "<".
            all.remove_prefix(all.find('<') < 2 ? 0 : 2);
            return from_utf16(path, all, encoding == Encoding::utf16_big);
        case Encoding::windows_1252:
            return from_windows_1252(path, bytes);
        case Encoding::latin_1:
            return from_latin_1(bytes);
    }
    return {};
}

}  // namespace

std::optional<Encoding> encoding_of(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (bytes.starts_with(utf8_mark)) return Encoding::utf8;
    // Without a mark the first character tells.
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("<\0"sv)) return Encoding::utf16_little;
    if (bytes.starts_with("\xFE\xFF") || bytes.starts_with("\0<"sv)) return Encoding::utf16_big;
    const std::string declared = declared_encoding(bytes).name;
    const std::wstring name(declared.begin(), declared.end());
    const auto is = [&](std::wstring_view known) {
        return automation::equal_ignoring_case(name, known);
    };
    if (name.empty() || is(L"UTF-8")) return Encoding::utf8;
    if (is(L"windows-1252")) return Encoding::windows_1252;
    if (is(L"ISO-8859-1")) return Encoding::latin_1;
    return {};
}

std::string utf8_text(const std::wstring& path, std::string bytes) {
    std::string text = decoded(path, std::move(bytes));
    if (const std::size_t null = text.find('\0'); null != std::string::npos) {
        const auto line_ends =
            std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(null), '\n');
        fail_in_file(path, static_cast<unsigned>(line_ends) + 1, L"there is a null character");
    }
    const DeclaredEncoding declared = declared_encoding(text);
    return text.replace(declared.start, declared.length, declared.length, ' ');
}

}  // namespace hostkit::project_file
