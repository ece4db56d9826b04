#include "codec/lcss_decompress.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
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

    bool has(std::size_t length) const { return rest_.size() >= length; }

    std::u16string_view take(std::size_t length) {
        const auto piece = rest_.substr(0, length);
        rest_.remove_prefix(piece.size());
        return piece;
    }

  private:
    std::u16string_view rest_;
};

struct Token {
    bool is_reference;
    char16_t literal;
    std::size_t distance;
    std::size_t length;  // 1 for a literal
};

// Reads tokens as long as the data holds whole ones.
class TokenReader {
  public:
    TokenReader(Input data, std::int32_t count, const std::vector<bool>& references,
                const AnsiCodePage& page)
        : data_(data),
          count_(static_cast<std::size_t>(count)),
          references_(references),
          page_(page) {}

    bool next(Token& token) {
        if (read_ == count_) return false;
        const bool is_reference = read_ < references_.size() && references_[read_];
        const std::size_t width = is_reference ? lcss::reference_characters : 1;
        if (!data_.has(width)) return false;
        ++read_;
        const std::u16string_view field = data_.take(width);
        if (is_reference)
            token = {true, u'\0', lcss::CharsToDistance(field, page_), page_.to_byte(field.back())};
        else
            token = {false, field.front(), 0, 1};
        return true;
    }

  private:
    Input data_;
    std::size_t count_;
    std::size_t read_ = 0;
    const std::vector<bool>& references_;
    const AnsiCodePage& page_;
};

// How many characters a token adds to a text of `size` characters. Of a reference, what lies
// outside the text on either side does not exist; in particular it never reads what it writes.
std::size_t added_length(const Token& token, std::size_t size) {
    if (!token.is_reference) return 1;
    const std::size_t available = std::min(token.distance, size);
    const std::size_t missing = token.distance - available;
    return token.length > missing ? std::min(token.length - missing, available) : 0;
}

std::size_t total_length(std::size_t head, TokenReader tokens) {
    std::size_t size = head;
    for (Token token{}; tokens.next(token);)
        size += added_length(token, size);
    return size;
}

// Filling a string character by character takes longer than all the decoding.
std::u16string text_of_length(std::size_t length) {
    static constexpr std::array<char16_t, 2048> zeros{};
    std::u16string text;
    text.reserve(length);
    while (text.size() < length)
        text.append(zeros.data(), std::min(zeros.size(), length - text.size()));
    return text;
}

// The text as it grows to a length that is known beforehand: references, most of which are
// short, are copied in steps that write past their end.
class Output {
  public:
    Output(std::u16string_view head, std::size_t length)
        : text_(text_of_length(length + step_length)), size_(head.size()) {
        head.copy(text_.data(), head.size());
    }

    void append(const Token& token) {
        const std::size_t length = added_length(token, size_);
        char16_t* const end = text_.data() + size_;
        if (token.is_reference)
            copy_in_steps(end - std::min(token.distance, size_), length, end);
        else
            *end = token.literal;
        size_ += length;
    }

    std::u16string take() && {
        text_.resize(size_);
        return std::move(text_);
    }

  private:
    static constexpr std::size_t step_length = 8;

    static void copy_in_steps(const char16_t* from, std::size_t length, char16_t* to) {
        for (std::size_t done = 0; done < length; done += step_length) {
            std::array<char16_t, step_length> step;
            std::memcpy(step.data(), from + done, sizeof step);
            std::memcpy(to + done, step.data(), sizeof step);
        }
    }

    std::u16string text_;
    std::size_t size_;
};

}  // namespace

std::u16string LCSSDecompress(std::u16string_view compressed, const AnsiCodePage& page) {
    if (compressed.size() < lcss::head_characters) return std::u16string(compressed);
    Input input(compressed);
    const std::int32_t count = lcss::CharsToCount(input.take(lcss::count_characters), page);
    const std::int32_t flag_length = lcss::CharsToCount(input.take(lcss::count_characters), page);
    check_flag_length(flag_length);
    const auto references =
        lcss::UnpackFlags(input.take(static_cast<std::size_t>(flag_length)), page);
    const std::u16string_view head = input.take(lcss::head_characters);
    TokenReader tokens(input, count, references, page);
    Output output(head, total_length(head.size(), tokens));
    for (Token token{}; tokens.next(token);)
        output.append(token);
    return std::move(output).take();
}

}  // namespace tessera
