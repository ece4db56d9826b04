// The numbers of the UU line format: lines follow each other without any separator, each a
// length character and groups of four characters that carry three bytes.
#pragma once

#include <cstddef>

namespace tessera::uu {

inline constexpr std::size_t group_bytes = 3;
inline constexpr std::size_t group_characters = 4;

// A full line: what goes in, and what comes out. The decoder cuts its input at the latter.
inline constexpr std::size_t line_bytes = 45;
inline constexpr std::size_t length_characters = 1;
inline constexpr std::size_t line_characters =
    length_characters + line_bytes / group_bytes * group_characters;

// The groups that carry so many bytes. Lines are made of whole groups, so that it counts for
// several of them, too.
constexpr std::size_t groups_of(std::size_t bytes) {
    return (bytes + group_bytes - 1) / group_bytes;
}

// A six-bit value is written as the byte `base_byte` + value, but zero as the grave accent: a
// space at the end of a text does not survive every field that the text travels in.
inline constexpr int base_byte = 32;
inline constexpr int six_bit_mask = 63;
inline constexpr int zero_byte = 96;

static_assert(line_bytes % group_bytes == 0, "a full line needs no padding");
static_assert(line_characters == 61);
static_assert(zero_byte - base_byte == six_bit_mask + 1, "the grave accent follows the alphabet");

}  // namespace tessera::uu
