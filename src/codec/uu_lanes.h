// The inner loops of the UU codec, on byte values that stand in 16-bit lanes.
#pragma once

#include <cstddef>

#include "codec/uu_format.h"

namespace tessera::uu {

// The vector loops handle a group of bytes as four lanes: the lane behind the last group of
// `bytes` must be there to be read, or overwritten. What it holds does not matter.
inline constexpr std::size_t slack_lanes = 1;

// What is known about byte values, as it can be told in passing.
enum class LaneBytes {
    ascii,    // all are below 128
    latin,    // none is from 128 to 159
    any,      // nothing
    invalid,  // there are none: a code lay outside the alphabet, to which a space belongs
};

// Encodes groups of three bytes as groups of four codes of the alphabet. Tells whether they are
// ASCII; values above 255 are not, and make the codes undefined.
LaneBytes encode_groups(const char16_t* bytes, std::size_t groups, char16_t* codes);

// Decodes groups of four codes into groups of three bytes. Tells whether they are Latin.
LaneBytes decode_groups(const char16_t* codes, std::size_t groups, char16_t* bytes);

// What the two do on machines without vector instructions.
LaneBytes encode_groups_portable(const char16_t* bytes, std::size_t groups, char16_t* codes);
LaneBytes decode_groups_portable(const char16_t* codes, std::size_t groups, char16_t* bytes);

}  // namespace tessera::uu
