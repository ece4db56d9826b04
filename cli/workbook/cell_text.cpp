#include "cli/workbook/cell_text.h"

#include <algorithm>

#include "text/utf8.h"

namespace cli {
namespace {

constexpr std::size_t escape_length = 7;  // "_x000D_"

bool is_hexadecimal(char16_t letter) noexcept {
    return (letter >= u'0' && letter <= u'9') || (letter >= u'A' && letter <= u'F') ||
           (letter >= u'a' && letter <= u'f');
}

bool begins_like_escape(std::u16string_view text) {
    return text.size() >= escape_length && text.starts_with(u"_x") && text[6] == u'_' &&
           std::ranges::all_of(text.substr(2, 4), is_hexadecimal);
}

char16_t escaped_value(std::u16string_view escape) noexcept {
    unsigned value = 0;
    for (const char16_t digit : escape.substr(2, 4))
        value = value * 16 + (digit <= u'9' ? digit - u'0' : (digit & 0xF) + 9U);
    return static_cast<char16_t>(value);
}

bool needs_escape(const tessera::CodePoint& point) noexcept {
    const bool is_control = point.value < u' ' && point.value != u'\n' && point.value != u'\t';
    return is_control || point.value == 0xFFFE || point.value == 0xFFFF ||
           point.is_lone_surrogate();
}

void append_escape(std::u16string& text, char32_t value) {
    constexpr char16_t digits[] = u"0123456789ABCDEF";
    text += u"_x";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += digits[(value >> shift) & 15];
    text += u'_';
}

}  // namespace

std::u16string escaped_cell_text(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const tessera::CodePoint point = tessera::first_code_point(text);
        if (needs_escape(point) || begins_like_escape(text))
            append_escape(result, point.value);
        else
            tessera::append(result, point.value);
        text.remove_prefix(point.units);
    }
    return result;
}

std::u16string unescaped_cell_text(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const bool is_escape = begins_like_escape(text);
        result += is_escape ? escaped_value(text) : text.front();
        text.remove_prefix(is_escape ? escape_length : 1);
    }
    return result;
}

bool would_be_reinterpreted(std::u16string_view text) {
    constexpr std::u16string_view treacherous = u"=+-@'#.,0123456789";
    const std::size_t first = text.find_first_not_of(u" \t\n\r");
    return first != text.npos && treacherous.find(text[first]) != treacherous.npos;
}

}  // namespace cli
