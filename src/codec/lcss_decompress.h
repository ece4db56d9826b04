// LCSS decompressor: rebuilds the text from literals and back references. Takes any input.
#pragma once

#include <string>
#include <string_view>

#include "codec/ansi_code_page.h"

namespace tessera {

// The text that `LCSSCompress` made `compressed` from; fewer than 4 characters are returned as
// they are. Malformed input is decoded as far as it goes: counts are limited by the data that is
// there, a reference yields the part of it that lies within the output so far, and a token cut
// off by the end of the data yields nothing. The result has at most 85 characters for each
// character of the input.
//
// Throws std::overflow_error when the flag length puts the tokens beyond position 2^31 - 1,
// where no text can reach.
std::u16string LCSSDecompress(std::u16string_view compressed, const AnsiCodePage& page);

}  // namespace tessera
