#include <string>

#include "codec/uu_decode.h"
#include "codec/uu_encode.h"
#include "fuzz_input.h"

using namespace tessera;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Text text(data, size);
    std::size_t behind_last = 0;
    const std::u16string decoded =
        UUDecode(text.view(), fuzz::page(), [&](const UuMalformedLine& line) {
            fuzz::require(line.position >= behind_last && line.position < text.view().size());
            behind_last = line.position + 1;
        });
    fuzz::require(decoded.size() <= text.view().size() / 4 * 3);
    const std::u16string encoded = UUEncode(decoded, fuzz::page());
    const auto no_line = [](const UuMalformedLine&) { fuzz::require(false); };
    fuzz::require(UUDecode(encoded, fuzz::page(), no_line) == decoded);
    return 0;
}
