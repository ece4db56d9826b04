#include "cli/text.h"

#include <algorithm>
#include <iterator>

#include "text/utf8.h"

namespace cli {

using tessera::append;
using tessera::CodePoint;
using tessera::first_code_point;
using tessera::replacement_character;

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Characters that take no column of their own: marks that combine with the one before.
constexpr Range zero_width[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD},   {0x0610, 0x061A},
    {0x064B, 0x065F}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},   {0x20D0, 0x20FF},
    {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xE0100, 0xE01EF},
};
// Characters that East Asian terminals show in two columns.
constexpr Range double_width[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xA960, 0xA97F},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
    {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
    {0x20000, 0x3FFFD},
};
// Invisible characters and those that reorder text: never handed to a terminal.
constexpr Range treacherous[] = {
    {0x0080, 0x009F}, {0x00AD, 0x00AD}, {0x061C, 0x061C},   {0x180E, 0x180E},
    {0x200B, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x206F},   {0xFEFF, 0xFEFF},
    {0xFFF9, 0xFFFB}, {0xFFFE, 0xFFFF}, {0xE0000, 0xE007F},
};

template <std::size_t size>
bool is_in(const Range (&ranges)[size], char32_t value) noexcept {
    const auto* const found =
        std::lower_bound(std::begin(ranges), std::end(ranges), value,
                         [](const Range& range, char32_t wanted) { return range.last < wanted; });
    return found != std::end(ranges) && found->first <= value;
}

std::size_t width_of(char32_t value) noexcept {
    if (value < 0x300) return 1;
    if (is_in(zero_width, value)) return 0;
    return is_in(double_width, value) ? 2 : 1;
}

void append_number(std::u16string& text, char32_t value) {
    constexpr char16_t digits[] = u"0123456789ABCDEF";
    text += u"<U+";
    for (int shift = value > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4)
        text += digits[(value >> shift) & 15];
    text += u'>';
}

}  // namespace

std::u16string visible(std::u16string_view text) {
    constexpr char32_t picture_of_null = 0x2400;
    constexpr char32_t picture_of_delete = 0x2421;
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const CodePoint point = first_code_point(text);
        if (point.value < 0x20)
            append(result, picture_of_null + point.value);
        else if (point.value == 0x7F)
            append(result, picture_of_delete);
        else if (point.is_lone_surrogate())
            append(result, replacement_character);
        else if (is_in(treacherous, point.value))
            append_number(result, point.value);
        else
            append(result, point.value);
        text.remove_prefix(point.units);
    }
    return result;
}

std::size_t display_width(std::u16string_view text) noexcept {
    std::size_t width = 0;
    while (!text.empty()) {
        const CodePoint point = first_code_point(text);
        width += width_of(point.value);
        text.remove_prefix(point.units);
    }
    return width;
}

std::u16string cut_to(std::u16string_view text, std::size_t width) {
    if (display_width(text) <= width) return std::u16string(text);
    if (width == 0) return {};
    std::u16string result;
    std::size_t used = 1;  // the ellipsis
    while (!text.empty()) {
        const CodePoint point = first_code_point(text);
        used += width_of(point.value);
        if (used > width) break;
        append(result, point.value);
        text.remove_prefix(point.units);
    }
    return result + u'\u2026';
}

}  // namespace cli
