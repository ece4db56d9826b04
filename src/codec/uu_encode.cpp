#include "codec/uu_encode.h"

#include <algorithm>
#include <array>

#include "codec/uu_lanes.h"

namespace tessera {
namespace {

// Encodes 1 to 45 bytes at `out` and moves `out` behind the line. Missing bytes of the last group
// are zero; the length character tells how many are real.
uu::LaneBytes UUEncodePrv(const char16_t* bytes, std::size_t count, char16_t*& out) {
    const std::size_t groups = (count + uu::group_bytes - 1) / uu::group_bytes;
    out[0] = static_cast<char16_t>(uu::base_byte + count);
    const uu::LaneBytes kind = uu::encode_groups(bytes, groups, out + uu::length_characters);
    out += uu::length_characters + groups * uu::group_characters;
    return kind;
}

// Takes the characters of whole lines for bytes as long as they have the same values. False, with
// nothing appended, when they have not.
bool append_unchanged_block(std::u16string& encoded, std::u16string_view text,
                            const AnsiCodePage& page) {
    uu::BlockCharacters characters;
    char16_t* end = characters.data();
    for (std::size_t at = 0; at < text.size(); at += uu::line_bytes) {
        const std::u16string_view line = text.substr(at, uu::line_bytes);
        if (UUEncodePrv(line.data(), line.size(), end) != uu::LaneBytes::ascii &&
            !page.leaves_unchanged(line))
            return false;
    }
    encoded.append(characters.data(), end);
    return true;
}

void append_block(std::u16string& encoded, std::u16string_view text, const AnsiCodePage& page) {
    std::array<char16_t, uu::block_lines * uu::line_bytes + uu::group_bytes> bytes;
    page.to_bytes(text, bytes.data());
    std::fill_n(bytes.data() + text.size(), uu::group_bytes, u'\0');
    uu::BlockCharacters characters;
    char16_t* end = characters.data();
    for (std::size_t at = 0; at < text.size(); at += uu::line_bytes)
        UUEncodePrv(bytes.data() + at, std::min(uu::line_bytes, text.size() - at), end);
    if (!page.ascii_is_identity()) page.to_chars({characters.data(), end});
    encoded.append(characters.data(), end);
}

std::size_t encoded_length(std::size_t characters) {
    const std::size_t lines = (characters + uu::line_bytes - 1) / uu::line_bytes;
    const std::size_t groups = (characters + uu::group_bytes - 1) / uu::group_bytes;
    return lines * uu::length_characters + groups * uu::group_characters;
}

}  // namespace

std::u16string UUEncode(std::u16string_view text, const AnsiCodePage& page) {
    constexpr std::size_t block_length = uu::block_lines * uu::line_bytes;
    std::u16string encoded;
    encoded.reserve(encoded_length(text.size()));
    for (std::size_t at = 0; at < text.size(); at += block_length) {
        const std::u16string_view block = text.substr(at, block_length);
        // The last block has no lane behind it.
        const bool try_unchanged = page.ascii_is_identity() && at + block_length < text.size();
        if (!try_unchanged || !append_unchanged_block(encoded, block, page))
            append_block(encoded, block, page);
    }
    return encoded;
}

}  // namespace tessera
