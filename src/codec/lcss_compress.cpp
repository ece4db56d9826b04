#include "codec/lcss_compress.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "codec/lcss_format.h"
#include "codec/substring_search.h"

namespace tessera {
namespace {

// Collects the tokens behind the head and their flags.
class TokenWriter {
  public:
    TokenWriter(std::u16string_view head, const AnsiCodePage& page) : page_(page), body_(head) {}

    void put_literal(char16_t character) {
        body_ += character;
        flags_.push_back(false);
    }

    void put_reference(std::size_t distance, std::size_t length) {
        body_ += lcss::DistanceToChars(distance, page_);
        body_ += page_.to_char(static_cast<std::uint8_t>(length));
        flags_.push_back(true);
    }

    std::u16string finish() const {
        const std::u16string packed = lcss::PackFlags(flags_, page_);
        std::u16string result = count_field(flags_.size());
        result += count_field(packed.size());
        result += packed;
        result += body_;
        return result;
    }

  private:
    std::u16string count_field(std::size_t count) const {
        return lcss::CountToChars(static_cast<std::int32_t>(count), page_);
    }

    const AnsiCodePage& page_;
    std::u16string body_;
    std::vector<bool> flags_;
};

// The match for `ahead`, no longer than it, in the window before it; of length 0 if there is
// none. Every search goes on from where the last one ended: a longer candidate cannot occur
// further left than its beginning does.
PrefixMatch find_match(std::u16string_view window, std::u16string_view ahead) {
    PrefixMatch match;
    std::size_t agreeing = 0;  // how far the text at the match goes on like the one ahead
    for (std::size_t length = lcss::kMatchStep; length <= ahead.size();
         length += lcss::kMatchStep) {
        if (agreeing < length) {
            // A candidate that fails is stepped back from, but not to what occurred before.
            const std::size_t least = std::max(match.length + 1, lcss::kMatchStep);
            const auto found =
                find_longest_prefix(window, match.position, ahead.substr(0, length), least);
            if (found.length < length) {
                return found.length != 0 ? found : match;
            }
            match.position = found.position;
            agreeing = common_length(window.substr(found.position), ahead);
        }
        match.length = length;
    }
    // Having come this far without a failure, only the full length will do.
    if (match.length < ahead.size() && match.length != 0) {
        match = find_longest_prefix(window, match.position, ahead, ahead.size());
    }
    return match;
}

}  // namespace

std::u16string LCSSCompress(std::u16string_view text, const AnsiCodePage& page) {
    if (text.size() < lcss::kHeadCharacters) {
        return std::u16string(text);
    }
    TokenWriter writer(text.substr(0, lcss::kHeadCharacters), page);
    std::size_t at = lcss::kHeadCharacters;
    while (at < text.size()) {
        const std::size_t window_length = std::min(at, lcss::kWindow);
        // A match stops short of the last character, which thus is always a literal.
        const std::size_t longest = std::min(lcss::kMaxMatch, text.size() - at - 1);
        const PrefixMatch match =
            find_match(text.substr(at - window_length, window_length), text.substr(at, longest));
        if (match.length == 0) {
            writer.put_literal(text[at++]);
        } else {
            writer.put_reference(window_length - match.position, match.length);
            at += match.length;
        }
    }
    return writer.finish();
}

}  // namespace tessera
