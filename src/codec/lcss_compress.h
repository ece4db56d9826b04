// LCSS compressor: replaces repeated runs of characters by references into the text before them.
#pragma once

#include <string>
#include <string_view>

#include "codec/ansi_code_page.h"

namespace tessera {

// The compressed form of `text`, whose fields carry byte values of `page`; a text of fewer than
// 4 characters is returned as it is. `LCSSDecompress` with the same page gives the text back as
// long as it has fewer than 65536 tokens; beyond that the header has no room for their number
// and the result is of no use.
std::u16string LCSSCompress(std::u16string_view text, const AnsiCodePage& page);

}  // namespace tessera
