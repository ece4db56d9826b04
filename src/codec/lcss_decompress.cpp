#include "codec/lcss_decompress.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

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

// A compressed text, taken apart.
struct Parts {
    std::size_t token_count;
    std::u16string_view packed_flags;
    std::u16string_view head;
    Input tokens;
};

Parts take_apart(std::u16string_view compressed, const AnsiCodePage& page) {
    Input input(compressed);
    const std::int32_t count = lcss::CharsToCount(input.take(lcss::count_characters), page);
    const std::int32_t flag_length = lcss::CharsToCount(input.take(lcss::count_characters), page);
    check_flag_length(flag_length);
    const std::u16string_view flags = input.take(static_cast<std::size_t>(flag_length));
    const std::u16string_view head = input.take(lcss::head_characters);
    return {static_cast<std::size_t>(count), flags, head, input};
}

// Counts the characters of the text.
class LengthCounter {
  public:
    std::size_t length() const { return length_; }
    void append(std::u16string_view piece) { length_ += piece.size(); }
    void repeat(std::size_t, std::size_t length) { length_ += length; }

  private:
    std::size_t length_ = 0;
};

// Writes them to where there is room for them.
class TextWriter {
  public:
    explicit TextWriter(char16_t* text) : begin_(text), end_(text) {}

    std::size_t length() const { return static_cast<std::size_t>(end_ - begin_); }
    void append(std::u16string_view piece) { copy(piece.data(), piece.size()); }
    // What is repeated lies `distance` characters back and ends before the end.
    void repeat(std::size_t distance, std::size_t length) { copy(end_ - distance, length); }

  private:
    // Pieces are short: a call of the library's can take longer than they do. The last eight
    // characters may overlap those before.
    void copy(const char16_t* from, std::size_t length) {
        constexpr std::size_t at_a_time = 8;
        char16_t* const to = std::exchange(end_, end_ + length);
        if (length < at_a_time) {
            for (std::size_t at = 0; at < length; ++at)
                to[at] = from[at];
            return;
        }
        const std::size_t last = length - at_a_time;
        for (std::size_t at = 0; at < last; at += at_a_time)
            std::memcpy(to + at, from + at, at_a_time * sizeof *to);
        std::memcpy(to + last, from + last, at_a_time * sizeof *to);
    }

    char16_t* begin_;
    char16_t* end_;
};

// False when the reference begins before the text or lacks its length. It never reads what it
// writes: what lies behind the text does not exist.
template <class Output>
bool append_reference(Output& text, std::u16string_view field, const AnsiCodePage& page) {
    const std::size_t distance = lcss::CharsToDistance(field, page);
    if (field.size() < lcss::reference_characters || distance > text.length()) return false;
    text.repeat(distance, std::min<std::size_t>(distance, page.to_byte(field.back())));
    return true;
}

// False when it ends at a reference that cannot be followed.
template <class Output>
bool decode_tokens(const Parts& parts, const AnsiCodePage& page, Output& text) {
    text.append(parts.head);
    Input tokens = parts.tokens;
    const std::size_t flags = parts.packed_flags.size() * lcss::flags_per_character;
    // Behind the data, literals are nothing, but references still lack their length.
    for (std::size_t i = 0; i < parts.token_count && (i < flags || !tokens.empty()); ++i) {
        const bool is_reference = i < flags && lcss::unpacked_flag(parts.packed_flags, i, page);
        if (!is_reference)
            text.append(tokens.take(1));
        else if (!append_reference(text, tokens.take(lcss::reference_characters), page))
            return false;
    }
    return true;
}

template <class Output>
bool decode(std::u16string_view compressed, const AnsiCodePage& page, Output& text) {
    if (compressed.size() >= lcss::head_characters)
        return decode_tokens(take_apart(compressed, page), page, text);
    text.append(compressed);
    return true;
}

}  // namespace

LcssExtent lcss_extent(std::u16string_view compressed, const AnsiCodePage& page) {
    LengthCounter text;
    const bool complete = decode(compressed, page, text);
    return {text.length(), complete};
}

void LCSSDecompress(std::u16string_view compressed, const AnsiCodePage& page, char16_t* text) {
    TextWriter writer(text);
    decode(compressed, page, writer);
}

LcssText LCSSDecompress(std::u16string_view compressed, const AnsiCodePage& page) {
    const LcssExtent extent = lcss_extent(compressed, page);
    LcssText result{std::u16string(extent.length, u'\0'), extent.complete};
    LCSSDecompress(compressed, page, result.text.data());
    return result;
}

}  // namespace tessera
