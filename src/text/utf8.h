// Code points of UTF-16 texts, and UTF-8.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tessera {

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

}  // namespace tessera
