// UU encoder: any text to printable characters, exact for the characters of the code page.
#pragma once

#include <string>
#include <string_view>

#include "codec/ansi_code_page.h"

namespace tessera {

// The encoded lines of `text`, one after the other without line breaks; empty for an empty
// text. A character that `page` does not hold is encoded as its replacement byte.
std::u16string UUEncode(std::u16string_view text, const AnsiCodePage& page);

}  // namespace tessera
