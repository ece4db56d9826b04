// The numbers of the UU line format: lines follow each other without any separator, each a
// length character and groups of four characters that carry three bytes.
#pragma once

#include <cstddef>

namespace tessera::uu {

inline constexpr std::size_t kGroupBytes = 3;
inline constexpr std::size_t kGroupCharacters = 4;

/// A full line: what goes in, and what comes out. The decoder cuts its input at the latter.
inline constexpr std::size_t kLineBytes = 45;
inline constexpr std::size_t kLengthCharacters = 1;
inline constexpr std::size_t kLineCharacters =
    kLengthCharacters + kLineBytes / kGroupBytes * kGroupCharacters;

/// A six-bit value is written as the byte `kBase` + value, but zero as the grave accent: a
/// space at the end of a text does not survive every field that the text travels in.
inline constexpr int kBase = 32;
inline constexpr int kSixBitMask = 63;
inline constexpr int kZeroByte = 96;

static_assert(kLineBytes % kGroupBytes == 0, "a full line needs no padding");
static_assert(kLineCharacters == 61);
static_assert(kZeroByte - kBase == kSixBitMask + 1, "the grave accent follows the alphabet");

}  // namespace tessera::uu
