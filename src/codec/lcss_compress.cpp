#include "codec/lcss_compress.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "codec/lcss_format.h"
#include "codec/match_index.h"

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

// Candidates grow in steps, and one that fails is stepped back from, which comes to the longest
// match. When no step fails, only the full length counts: stored texts are written by this rule.
Match usable(const Match& longest, std::size_t ahead) {
    const bool passed_all_steps = longest.length >= ahead - ahead % lcss::match_step;
    return passed_all_steps && longest.length < ahead ? Match{} : longest;
}

}  // namespace

std::u16string LCSSCompress(std::u16string_view text, const AnsiCodePage& page) {
    if (text.size() < lcss::head_characters) return std::u16string(text);
    TokenWriter writer(text.substr(0, lcss::head_characters), page);
    MatchIndex index(text, lcss::window);
    std::size_t at = lcss::head_characters;
    while (at < text.size()) {
        // A match stops short of the last character, which thus is always a literal.
        const std::size_t longest = std::min(lcss::max_match, text.size() - at - 1);
        index.advance_to(at);
        const Match match = usable(index.longest(text.substr(at, longest)), longest);
        if (match.length == 0) {
            writer.put_literal(text[at++]);
        } else {
            writer.put_reference(at - match.position, match.length);
            at += match.length;
        }
    }
    return writer.finish();
}

}  // namespace tessera
