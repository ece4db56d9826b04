#include "codec/prefixed_text.h"

namespace tessera {

PrefixedText split_prefixed_text(std::u16string_view text) {
    if (!text.starts_with(kEncodePrefix)) {
        return {EncodedLayout::none, {}};
    }
    text.remove_prefix(kEncodePrefix.size());
    if (!text.starts_with(kHostEncodedMarker)) {
        return {EncodedLayout::legacy, text};
    }
    text.remove_prefix(kHostEncodedMarker.size());
    return {EncodedLayout::current, text};
}

}  // namespace tessera
