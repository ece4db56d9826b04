// UU decoder: the text of encoded lines. A line that cannot be decoded is reported and left
// out; it never spoils the others.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "codec/ansi_code_page.h"

namespace tessera {

// What is wrong with a malformed line.
enum class UuFault {
    negative_length,   // the length character has a code below 32
    incomplete_group,  // the data is not made of whole groups of four characters
    byte_overflow,     // a data character below code 32, or a decoded value above 255
};

struct UuMalformedLine {
    std::size_t position;  // where the line begins in the encoded text, in characters
    UuFault fault;
};

// Told of each malformed line, in order, while the decoding goes on. May be empty. What it
// throws ends the decoding and reaches the caller.
using UuMalformedLineSink = std::function<void(const UuMalformedLine&)>;

// How many characters need room while an encoded text of so many is decoded.
std::size_t uu_decoded_room(std::size_t characters);

// Writes the decoded text of `text` at `decoded`, which has the room that it needs, and answers its
// length. `text` is cut every 61 characters, whatever its lines say about their length. A length
// character that promises more than the line holds yields what is there; one that promises less
// drops the rest. Never longer than 3/4 of `text`.
std::size_t UUDecode(std::u16string_view text, const AnsiCodePage& page,
                     const UuMalformedLineSink& on_malformed_line, char16_t* decoded);
std::u16string UUDecode(std::u16string_view text, const AnsiCodePage& page,
                        const UuMalformedLineSink& on_malformed_line);

}  // namespace tessera
