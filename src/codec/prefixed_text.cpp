#include "codec/prefixed_text.h"

namespace tessera {

PrefixedText split_prefixed_text(std::u16string_view text) {
    if (!text.starts_with(encode_prefix)) return {EncodedLayout::none, {}};
    text.remove_prefix(encode_prefix.size());
    if (!text.starts_with(host_encoded_marker)) return {EncodedLayout::legacy, text};
    text.remove_prefix(host_encoded_marker.size());
    return {EncodedLayout::current, text};
}

}  // namespace tessera
