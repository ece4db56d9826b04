#include <stdexcept>
#include <string>

#include "bench/reference_lcss.h"
#include "codec/lcss_compress.h"
#include "codec/lcss_decompress.h"
#include "fuzz_input.h"

using namespace tessera;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Text text(data, size);
    try {
        const std::u16string decompressed = LCSSDecompress(text.view(), fuzz::page()).text;
        fuzz::require(decompressed.size() <= 85 * text.view().size());
    } catch (const std::overflow_error&) {
        // The flag length alone takes the tokens out of the range of positions.
        fuzz::require(text.view().size() >= 8 && text.view()[4] == 0x7F);
    }
    if (text.view().size() < 0x10000) {
        const std::u16string compressed = LCSSCompress(text.view(), fuzz::page());
        fuzz::require(LCSSDecompress(compressed, fuzz::page()).text == text.view());
        // The literal compressor takes its time.
        if (text.view().size() <= 200)
            fuzz::require(compressed == reference::compress(text.view(), [](std::size_t byte) {
                              return fuzz::page().to_char(static_cast<std::uint8_t>(byte));
                          }));
    }
    return 0;
}
