// Text as the console program needs it: code points, UTF-8, what a terminal can be given, and how
// wide that is.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cli {

inline constexpr char32_t replacement_character = 0xFFFD;

// A code point, or a half of a surrogate pair that stands alone; `text` must not be empty.
struct CodePoint {
    char32_t value;
    std::size_t units;
    bool is_lone_surrogate() const noexcept { return value >= 0xD800 && value <= 0xDFFF; }
};
CodePoint first_code_point(std::u16string_view text) noexcept;
void append(std::u16string& text, char32_t code_point);

// Lone surrogates become U+FFFD.
std::string to_utf8(std::u16string_view text);
// Nothing when the bytes are not UTF-8.
std::optional<std::u16string> from_utf8(std::string_view bytes);

// The text in one line that a terminal shows and does not obey: control characters become their
// pictures, characters that would turn or hide what stands around them become "<U+202E>".
std::u16string visible(std::u16string_view text);

// Columns that a terminal needs for a visible text.
std::size_t display_width(std::u16string_view text) noexcept;
// The text, or its beginning and an ellipsis, in at most `width` columns.
std::u16string cut_to(std::u16string_view text, std::size_t width);

}  // namespace cli
