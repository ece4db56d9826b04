#include "cli/text.h"

#include <algorithm>
#include <iterator>

namespace cli {
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

void append_utf8(std::string& bytes, char32_t value) {
    const auto add = [&](char32_t byte) { bytes += static_cast<char>(byte); };
    if (value < 0x80) return add(value);
    if (value < 0x800) {
        add(0xC0 | value >> 6);
    } else {
        if (value < 0x10000) {
            add(0xE0 | value >> 12);
        } else {
            add(0xF0 | value >> 18);
            add(0x80 | (value >> 12 & 0x3F));
        }
        add(0x80 | (value >> 6 & 0x3F));
    }
    add(0x80 | (value & 0x3F));
}

// How many bytes a sequence that begins with this byte has, and the bits that the byte adds.
struct Lead {
    std::size_t length;
    char32_t bits;
    char32_t smallest;
};
constexpr Lead lead_of(unsigned char byte) noexcept {
    if (byte < 0x80) return {1, byte, 0};
    if (byte >= 0xC2 && byte < 0xE0) return {2, byte & 0x1Fu, 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {3, byte & 0x0Fu, 0x800};
    if (byte >= 0xF0 && byte < 0xF5) return {4, byte & 0x07u, 0x10000};
    return {0, 0, 0};
}

// Takes the first code point off the bytes; nothing when they are not UTF-8.
std::optional<char32_t> take_utf8(std::string_view& bytes) {
    const Lead lead = lead_of(static_cast<unsigned char>(bytes.front()));
    if (lead.length == 0 || lead.length > bytes.size()) return {};
    char32_t value = lead.bits;
    for (std::size_t i = 1; i < lead.length; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if ((byte & 0xC0) != 0x80) return {};
        value = value << 6 | (byte & 0x3Fu);
    }
    const bool is_surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < lead.smallest || value > 0x10FFFF || is_surrogate) return {};
    bytes.remove_prefix(lead.length);
    return value;
}

}  // namespace

CodePoint first_code_point(std::u16string_view text) noexcept {
    const char32_t first = text.front();
    const bool is_pair = first >= 0xD800 && first <= 0xDBFF && text.size() > 1 &&
                         text[1] >= 0xDC00 && text[1] <= 0xDFFF;
    if (!is_pair) return {first, 1};
    return {0x10000 + ((first - 0xD800) << 10) + (text[1] - 0xDC00u), 2};
}

void append(std::u16string& text, char32_t code_point) {
    if (code_point < 0x10000) {
        text += static_cast<char16_t>(code_point);
        return;
    }
    text += static_cast<char16_t>(0xD800 + ((code_point - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + (code_point & 0x3FF));
}

std::string to_utf8(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const CodePoint point = first_code_point(text);
        append_utf8(bytes, point.is_lone_surrogate() ? replacement_character : point.value);
        text.remove_prefix(point.units);
    }
    return bytes;
}

std::optional<std::u16string> from_utf8(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const auto value = take_utf8(bytes);
        if (!value) return {};
        append(text, *value);
    }
    return text;
}

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
