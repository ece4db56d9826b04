#include "codec/uu_encode.h"

#include <algorithm>
#include <array>

#include "codec/uu_lanes.h"

namespace tessera {
namespace {

// Encodes 1 to 45 bytes at `out` and moves `out` behind the line. Missing bytes of the last group
// are zero; the length character tells how many are real.
uu::LaneBytes UUEncodePrv(const char16_t* bytes, std::size_t count, char16_t*& out) {
    const std::size_t groups = (count + uu::kGroupBytes - 1) / uu::kGroupBytes;
    out[0] = static_cast<char16_t>(uu::kBase + count);
    const uu::LaneBytes kind = uu::encode_groups(bytes, groups, out + uu::kLengthCharacters);
    out += uu::kLengthCharacters + groups * uu::kGroupCharacters;
    return kind;
}

// Takes the characters of whole lines for bytes as long as they have the same values. False, with
// nothing appended, when they have not.
bool append_unchanged_block(std::u16string& encoded, std::u16string_view text,
                            const AnsiCodePage& page) {
    uu::BlockCharacters characters;
    char16_t* end = characters.data();
    for (std::size_t at = 0; at < text.size(); at += uu::kLineBytes) {
        const std::u16string_view line = text.substr(at, uu::kLineBytes);
        if (UUEncodePrv(line.data(), line.size(), end) != uu::LaneBytes::ascii &&
            !page.leaves_unchanged(line)) {
            return false;
        }
    }
    encoded.append(characters.data(), end);
    return true;
}

void append_block(std::u16string& encoded, std::u16string_view text, const AnsiCodePage& page) {
    std::array<char16_t, uu::kBlockLines * uu::kLineBytes + uu::kGroupBytes> bytes;
    page.to_bytes(text, bytes.data());
    std::fill_n(bytes.data() + text.size(), uu::kGroupBytes, u'\0');
    uu::BlockCharacters characters;
    char16_t* end = characters.data();
    for (std::size_t at = 0; at < text.size(); at += uu::kLineBytes) {
        UUEncodePrv(bytes.data() + at, std::min(uu::kLineBytes, text.size() - at), end);
    }
    if (!page.ascii_is_identity()) {
        page.to_chars({characters.data(), end});
    }
    encoded.append(characters.data(), end);
}

std::size_t encoded_length(std::size_t characters) {
    const std::size_t lines = (characters + uu::kLineBytes - 1) / uu::kLineBytes;
    const std::size_t groups = (characters + uu::kGroupBytes - 1) / uu::kGroupBytes;
    return lines * uu::kLengthCharacters + groups * uu::kGroupCharacters;
}

}  // namespace

std::u16string UUEncode(std::u16string_view text, const AnsiCodePage& page) {
    constexpr std::size_t kBlock = uu::kBlockLines * uu::kLineBytes;
    std::u16string encoded;
    encoded.reserve(encoded_length(text.size()));
    for (std::size_t at = 0; at < text.size(); at += kBlock) {
        const std::u16string_view block = text.substr(at, kBlock);
        // The last block has no lane behind it.
        const bool try_unchanged = page.ascii_is_identity() && at + kBlock < text.size();
        if (!try_unchanged || !append_unchanged_block(encoded, block, page)) {
            append_block(encoded, block, page);
        }
    }
    return encoded;
}

}  // namespace tessera
