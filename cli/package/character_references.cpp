#include "cli/package/character_references.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "text/utf8.h"

namespace cli {
namespace {

// Unicode's noncharacters from here on are for internal use: no text that is exchanged has them.
constexpr char32_t first_stand_in = 0xFDD0;

constexpr bool is_white_space(char32_t character) noexcept {
    return character == U'\t' || character == U'\n' || character == U'\r';
}

bool is_resolved(char32_t character) noexcept {
    const bool is_half = character >= 0xD800 && character <= 0xDFFF;
    return is_white_space(character) || (character > 0x7F && character <= 0x10FFFF && !is_half);
}

struct Reference {
    char32_t character = 0;
    std::size_t length = 0;  // 0: there is none that is to be resolved
};

Reference reference_at_start_of(std::string_view text) noexcept {
    // No more than anybody writes: a text full of unfinished ones is not searched to its end each
    // time.
    constexpr std::size_t longest = 32;
    if (!text.starts_with("&#")) return {};
    text = text.substr(0, longest);
    const std::size_t end = text.find(';');
    if (end == text.npos) return {};
    const bool is_hexadecimal = text.substr(2, 1) == "x";
    std::uint32_t number = 0;
    const auto read = std::from_chars(text.data() + (is_hexadecimal ? 3 : 2), text.data() + end,
                                      number, is_hexadecimal ? 16 : 10);
    if (read.ec != std::errc() || read.ptr != text.data() + end || !is_resolved(number)) return {};
    return {number, end + 1};
}

// How many bytes from the start on are no markup in which references count.
std::size_t literal_length(std::string_view text) noexcept {
    constexpr std::string_view sections[][2] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}};
    for (const auto& [begin, end] : sections)
        if (text.starts_with(begin)) return std::min(text.find(end, begin.size()), text.size());
    return 1;
}

void append_utf8(std::string& text, char32_t character) {
    std::u16string units;
    tessera::append(units, is_white_space(character) ? first_stand_in + character : character);
    text += tessera::to_utf8(units);
}

}  // namespace

std::string resolved_references(std::string_view text) {
    if (text.find("&#") == text.npos) return std::string(text);
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find_first_of("<&"), text.size());
        result.append(text.substr(0, plain));
        text.remove_prefix(plain);
        const Reference found = reference_at_start_of(text);
        if (found.length > 0) append_utf8(result, found.character);
        const std::size_t kept = found.length > 0 || text.empty() ? 0 : literal_length(text);
        result.append(text.substr(0, kept));
        text.remove_prefix(found.length + kept);
    }
    return result;
}

void restore_white_space(std::wstring& text) noexcept {
    for (wchar_t& character : text)
        if (is_white_space(static_cast<char32_t>(character) - first_stand_in))
            character = static_cast<wchar_t>(character - first_stand_in);
}

}  // namespace cli
