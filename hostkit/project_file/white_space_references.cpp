#include "hostkit/project_file/white_space_references.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace hostkit::project_file {
namespace {

// Unicode's noncharacters from here on are for internal use: no text that is exchanged has them.
constexpr wchar_t first_stand_in = 0xFDD0;

constexpr bool is_white_space(int character) noexcept {
    return character == L'\t' || character == L'\n' || character == L'\r';
}

std::string stand_in(int character) {
    return {'\xEF', '\xB7', static_cast<char>(0x90 + character)};
}

struct Reference {
    int character = 0;
    std::size_t length = 0;
};

// The reference that the text starts with; of length 0 when it is none of white space.
Reference white_space_reference(std::string_view text) noexcept {
    // No more than anybody writes: a text full of unfinished ones is not searched to its end each
    // time.
    constexpr std::size_t longest = 32;
    if (!text.starts_with("&#")) return {};
    text = text.substr(0, longest);
    const std::size_t end = text.find(';');
    if (end == std::string_view::npos) return {};
    const bool is_hexadecimal = text.substr(2, 1) == "x";
    const char* const digits = text.data() + (is_hexadecimal ? 3 : 2);
    Reference result{0, end + 1};
    const auto read =
        std::from_chars(digits, text.data() + end, result.character, is_hexadecimal ? 16 : 10);
    const bool is_number = read.ec == std::errc() && read.ptr == text.data() + end;
    return is_number && is_white_space(result.character) ? result : Reference{};
}

// How many bytes from the start on are no markup in which references count.
std::size_t literal_length(std::string_view text) noexcept {
    constexpr std::string_view sections[][2] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}};
    for (const auto& [begin, end] : sections)
        if (text.starts_with(begin)) return std::min(text.find(end, begin.size()), text.size());
    return 1;
}

}  // namespace

std::string hide_white_space_references(const std::string& text) {
    std::string result;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t plain = std::min(rest.find_first_of("<&"), rest.size());
        result.append(rest.substr(0, plain));
        rest.remove_prefix(plain);
        if (rest.empty()) break;
        const Reference found = white_space_reference(rest);
        const std::size_t length = found.length > 0 ? found.length : literal_length(rest);
        result.append(found.length > 0 ? stand_in(found.character)
                                       : std::string(rest.substr(0, length)));
        rest.remove_prefix(length);
    }
    return result;
}

std::wstring white_space_restored(std::wstring text) {
    for (wchar_t& character : text)
        if (is_white_space(character - first_stand_in)) character -= first_stand_in;
    return text;
}

}  // namespace hostkit::project_file
