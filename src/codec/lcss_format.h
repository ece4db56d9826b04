// The LCSS compressed text, and the fields that its writer and reader share.
//
//   token count    4 characters, count field
//   flag length    4 characters, count field
//   packed flags   one flag per token, eight to a character, lowest bit first
//   head           the first 4 characters of the text, unchanged
//   tokens         a literal: 1 character, unchanged
//                  a back reference: distance field of 2 characters, length as a byte character
//
// Fields hold byte values, written as the characters that the code page has for them, most
// significant byte first. A text shorter than the head is stored as it is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "codec/ansi_code_page.h"

namespace tessera::lcss {

inline constexpr std::size_t count_characters = 4;
inline constexpr std::size_t head_characters = 4;
inline constexpr std::size_t distance_characters = 2;
inline constexpr std::size_t reference_characters = distance_characters + 1;
inline constexpr std::size_t flags_per_character = 8;
inline constexpr std::size_t header_characters = 2 * count_characters;

// How far back a reference reaches, and how long it can be.
inline constexpr std::size_t window = 65535;
inline constexpr std::size_t max_match = 255;
// Candidates grow by this many characters at a time; no shorter match is ever looked for.
inline constexpr std::size_t match_step = 3;

static_assert(window <= std::numeric_limits<std::uint16_t>::max(), "distances are 16 bits wide");
static_assert(max_match <= std::numeric_limits<std::uint8_t>::max(), "lengths are one byte wide");
static_assert(match_step >= reference_characters, "a reference never outgrows what it replaces");

// Zero when the field is cut short.
inline std::size_t CharsToDistance(std::u16string_view field, const AnsiCodePage& page) {
    if (field.size() < distance_characters) return 0;
    return static_cast<std::size_t>(page.to_byte(field[0])) << 8 | page.to_byte(field[1]);
}

// `distance` is 0 to 65535.
inline std::u16string DistanceToChars(std::size_t distance, const AnsiCodePage& page) {
    return {page.to_char(static_cast<std::uint8_t>(distance >> 8)),
            page.to_char(static_cast<std::uint8_t>(distance & 0xFF))};
}

// Zero when the field is cut short or its value does not fit into 32 bits with sign.
inline std::int32_t CharsToCount(std::u16string_view field, const AnsiCodePage& page) {
    if (field.size() < count_characters) return 0;
    std::int64_t count = 0;
    for (std::size_t i = 0; i < count_characters; ++i)
        count = count * 256 + page.to_byte(field[i]);
    return count <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(count) : 0;
}

// The masks reach beyond their bytes and always have, so a count of more than 16 bits cannot be
// written: the field becomes the empty string, and readers of stored texts rely on that.
inline std::u16string CountToChars(std::int32_t count, const AnsiCodePage& page) {
    struct Part {
        std::uint32_t mask;
        std::int32_t divisor;
    };
    static constexpr Part parts[count_characters] = {
        {0x8F000000, 0x1000000}, {0x000F0000, 0x10000}, {0xFFFFFF00, 0x100}, {0x000000FF, 1}};
    std::u16string field;
    for (const Part& part : parts) {
        const auto masked =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(count) & part.mask);
        const std::int32_t value = masked / part.divisor;  // leaves no remainder under any mask
        if (value < 0 || value > 0xFF) return {};
        field += page.to_char(static_cast<std::uint8_t>(value));
    }
    return field;
}

// Pads by as many flags as stand in the last, incomplete character, not by as many as it lacks:
// the packed text can end in one more zero byte than needed.
inline std::u16string PackFlags(std::vector<bool> flags, const AnsiCodePage& page) {
    flags.resize(flags.size() + flags.size() % flags_per_character, false);
    std::u16string packed;
    packed.reserve(flags.size() / flags_per_character + 1);
    for (std::size_t first = 0; first < flags.size(); first += flags_per_character) {
        unsigned byte = 0;
        for (std::size_t i = 0; i < flags_per_character && first + i < flags.size(); ++i)
            byte |= static_cast<unsigned>(flags[first + i]) << i;
        packed += page.to_char(static_cast<std::uint8_t>(byte));
    }
    return packed;
}

// One of the flags that the packed text has.
inline bool unpacked_flag(std::u16string_view packed, std::size_t index, const AnsiCodePage& page) {
    const unsigned byte = page.to_byte(packed[index / flags_per_character]);
    return (byte >> index % flags_per_character & 1) != 0;
}

}  // namespace tessera::lcss
