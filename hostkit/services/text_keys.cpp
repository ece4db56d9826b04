#include "hostkit/services/text_keys.h"

#include <algorithm>
#include <optional>

namespace hostkit {
namespace {

constexpr std::size_t digit_count = 5;
constexpr std::size_t text_start = 1 + digit_count + 1;

struct EnglishText {
    unsigned key;
    std::wstring_view text;
};

constexpr EnglishText english_texts[] = {
    {0x001d4, L"Abort"},
    {0x006f2, L"Unexpected error"},
    {0x00811, L"Please wait..."},
    {0x008a0, L"Information"},
    {0x00910, L"The variable cannot be read."},
    {0x00911, L"Variable read: '"},
    {0x00912, L"The variable cannot be stored in the archive."},
    {0x00918, L"Archive was not found."},
    {0x018a0, L"Reading query..."},
    {0x02ad8, L"Unknown property or property constant"},
    {0x06150, L"XML processing"},
};

std::optional<unsigned> digit(wchar_t character) {
    if (character >= L'0' && character <= L'9') return character - L'0';
    if (character >= L'a' && character <= L'f') return character - L'a' + 10;
    if (character >= L'A' && character <= L'F') return character - L'A' + 10;
    return std::nullopt;
}

// The number of a text that begins as a key does.
std::optional<unsigned> key_number(std::wstring_view text) {
    if (text.size() < text_start || text.front() != L'~' || text[text_start - 1] != L' ')
        return std::nullopt;
    unsigned number = 0;
    for (const wchar_t character : text.substr(1, digit_count)) {
        const auto value = digit(character);
        if (!value) return std::nullopt;
        number = number * 16 + *value;
    }
    return number;
}

}  // namespace

std::wstring_view translate_key(std::wstring_view text, HostKitLanguage language) {
    const auto number = key_number(text);
    if (!number) return text;
    if (language == hklEnglish) {
        const auto found = std::ranges::find(english_texts, *number, &EnglishText::key);
        if (found != std::end(english_texts)) return found->text;
    }
    return text.substr(text_start);
}

}  // namespace hostkit
