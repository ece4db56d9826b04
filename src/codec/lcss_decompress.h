// LCSS decompressor: rebuilds the text from literals and back references. Takes any input.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "codec/ansi_code_page.h"

namespace tessera {

// How long the text is that a compressed one stands for.
struct LcssExtent {
    std::size_t length = 0;
    // False when a reference begins before the text or lacks its length: the text ends before it.
    bool complete = true;
};

// The text that `LCSSCompress` made `compressed` from; fewer than 4 characters are returned as
// they are. Malformed input is decoded as far as it goes: counts are limited by the data that is
// there, and a reference yields what lies between its beginning and the end of the output so far.
// The result has at most 85 characters for each character of the input.
//
// All throw std::overflow_error when the flag length puts the tokens beyond position 2^31 - 1,
// where no text can reach.
LcssExtent lcss_extent(std::u16string_view compressed, const AnsiCodePage& page);
// Writes the text at `text`, which has room for its extent.
void LCSSDecompress(std::u16string_view compressed, const AnsiCodePage& page, char16_t* text);

struct LcssText {
    std::u16string text;
    bool complete = true;
};
LcssText LCSSDecompress(std::u16string_view compressed, const AnsiCodePage& page);

}  // namespace tessera
