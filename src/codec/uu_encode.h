// UU encoder: any text to printable characters, exact for the characters of the code page.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "codec/ansi_code_page.h"

namespace tessera {

// How many characters encode a text of so many.
std::size_t uu_encoded_length(std::size_t characters);

// Writes the encoded lines of `text`, one after the other without line breaks, at `encoded`, which
// has room for all of them. A character that `page` does not hold is encoded as its replacement
// byte.
void UUEncode(std::u16string_view text, const AnsiCodePage& page, char16_t* encoded);
std::u16string UUEncode(std::u16string_view text, const AnsiCodePage& page);

}  // namespace tessera
