#include "text/utf8.h"

namespace tessera {
namespace {

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

}  // namespace tessera
