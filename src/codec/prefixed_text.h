// The markers of encoded texts: what tells an encoded text from a plain one, and which of the
// two layouts it has.
#pragma once

#include <string_view>

namespace tessera {

// Marks every encoded text.
inline constexpr std::u16string_view encode_prefix = u"@@UU@@";
// Follows the prefix when the host's compressor and encoder made the text.
inline constexpr std::u16string_view host_encoded_marker = u"C@@";

enum class EncodedLayout {
    none,     // not an encoded text
    current,  // made by the host's compressor and encoder
    legacy,   // UU text of an LCSS-compressed text; only read, never written
};

struct PrefixedText {
    EncodedLayout layout;
    std::u16string_view payload;  // what follows the markers; empty for `none`
};

// Takes the markers off. The comparison is exact: markers in another case are not markers.
// `payload` points into `text`.
PrefixedText split_prefixed_text(std::u16string_view text);

}  // namespace tessera
