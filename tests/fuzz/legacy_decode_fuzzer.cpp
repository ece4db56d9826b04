// A prefixed text in the legacy layout, on its whole way.
#include <stdexcept>
#include <string>

#include "codec/lcss_decompress.h"
#include "codec/prefixed_text.h"
#include "codec/uu_decode.h"
#include "fuzz_input.h"

using namespace tessera;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Text text(data, size);
    const PrefixedText split = split_prefixed_text(text.view());
    fuzz::require(split.layout == EncodedLayout::none ? split.payload.empty()
                                                      : text.view().ends_with(split.payload));
    if (split.layout != EncodedLayout::legacy) return 0;
    try {
        const std::u16string compressed = UUDecode(split.payload, fuzz::page(), {});
        fuzz::require(LCSSDecompress(compressed, fuzz::page()).text.size() <=
                      85 * compressed.size());
    } catch (const std::overflow_error&) {
        // Reported by the caller.
    }
    return 0;
}
