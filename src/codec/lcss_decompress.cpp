#include "codec/lcss_decompress.h"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "codec/lcss_format.h"

namespace tessera {
namespace {

// Positions are 32 bits wide with sign and count from 1.
void check_flag_length(std::int32_t flag_length) {
    constexpr std::int64_t first_token = lcss::header_characters + lcss::head_characters + 1;
    if (first_token + flag_length > std::numeric_limits<std::int32_t>::max())
        throw std::overflow_error("LCSS flag length exceeds the range of positions");
}

// Hands out the input piece by piece and never more than there is: the one place where lengths
// from the input meet the input.
class Input {
  public:
    explicit Input(std::u16string_view rest) : rest_(rest) {}

    bool empty() const { return rest_.empty(); }

    std::u16string_view take(std::size_t length) {
        const auto piece = rest_.substr(0, length);
        rest_.remove_prefix(piece.size());
        return piece;
    }

  private:
    std::u16string_view rest_;
};

// False when the reference begins before the text or lacks its length. It never reads what it
// writes: what lies behind the text does not exist.
bool append_reference(std::u16string& text, std::u16string_view field, const AnsiCodePage& page) {
    const std::size_t distance = lcss::CharsToDistance(field, page);
    if (field.size() < lcss::reference_characters || distance > text.size()) return false;
    text.append(text, text.size() - distance, page.to_byte(field.back()));
    return true;
}

LcssText decode_tokens(std::u16string_view head, Input tokens, std::size_t count,
                       const std::vector<bool>& references, const AnsiCodePage& page) {
    LcssText result{std::u16string(head)};
    // Behind the data, literals are nothing, but references still lack their length.
    for (std::size_t i = 0; i < count && (i < references.size() || !tokens.empty()); ++i) {
        const bool is_reference = i < references.size() && references[i];
        if (!is_reference)
            result.text += tokens.take(1);
        else if (!append_reference(result.text, tokens.take(lcss::reference_characters), page))
            return {std::move(result.text), false};
    }
    return result;
}

}  // namespace

LcssText LCSSDecompress(std::u16string_view compressed, const AnsiCodePage& page) {
    if (compressed.size() < lcss::head_characters) return {std::u16string(compressed)};
    Input input(compressed);
    const std::int32_t count = lcss::CharsToCount(input.take(lcss::count_characters), page);
    const std::int32_t flag_length = lcss::CharsToCount(input.take(lcss::count_characters), page);
    check_flag_length(flag_length);
    const auto references =
        lcss::UnpackFlags(input.take(static_cast<std::size_t>(flag_length)), page);
    const std::u16string_view head = input.take(lcss::head_characters);
    return decode_tokens(head, input, static_cast<std::size_t>(count), references, page);
}

}  // namespace tessera
