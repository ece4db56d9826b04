#include "codec/match_index.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace tessera {
namespace {

// Ends a chain. No place: its beginning would lie behind every text.
constexpr auto nowhere = std::numeric_limits<std::uint32_t>::max();

// Four characters at once.
constexpr std::size_t word_length = sizeof(std::uint64_t) / sizeof(char16_t);

std::uint64_t word_at(std::u16string_view text, std::size_t at) {
    std::uint64_t word;
    std::memcpy(&word, text.data() + at, sizeof word);
    return word;
}

}  // namespace

std::size_t common_length(std::u16string_view a, std::u16string_view b) {
    const std::size_t limit = std::min(a.size(), b.size());
    std::size_t length = 0;
    while (length + word_length <= limit && word_at(a, length) == word_at(b, length))
        length += word_length;
    while (length < limit && a[length] == b[length])
        ++length;
    return length;
}

// The tables are no larger than the text needs: most texts are one row of a query.
MatchIndex::MatchIndex(std::u16string_view text, std::size_t window)
    : text_(text), window_(window) {
    const std::size_t places = std::bit_ceil(std::min(window, text.size()) + 1);
    hash_bits_ = std::max(std::countr_zero(places), 4);
    place_mask_ = places - 1;
    chains_.assign(std::size_t{1} << hash_bits_, {nowhere, nowhere});
    following_.resize(places);
}

std::size_t MatchIndex::bucket(std::u16string_view beginning) const {
    const std::uint64_t characters =
        std::uint64_t{beginning[0]} << 32 | std::uint64_t{beginning[1]} << 16 | beginning[2];
    return static_cast<std::size_t>(characters * 0x9E3779B97F4A7C15U >> (64 - hash_bits_));
}

void MatchIndex::add(std::size_t position) {
    const auto added = static_cast<Position>(position);
    Chain& chain = chains_[bucket(text_.substr(position))];
    (chain.first == nowhere ? chain.first : following(chain.last)) = added;
    chain.last = added;
    following(position) = nowhere;
}

// The leftmost place of the window is the first of its chain.
void MatchIndex::drop_before(std::size_t start) {
    for (; start_ < start; ++start_)
        chains_[bucket(text_.substr(start_))].first = following(start_);
}

void MatchIndex::advance_to(std::size_t end) {
    const auto window_start = [&](std::size_t at) { return at - std::min(at, window_); };
    for (; added_ + least_length <= end; ++added_) {
        drop_before(window_start(added_));
        add(added_);
    }
    drop_before(window_start(end));
    end_ = end;
}

Match MatchIndex::longest(std::u16string_view ahead) const {
    Match best;
    if (ahead.size() < least_length) return best;
    std::size_t least = least_length;
    const std::u16string_view window = text_.substr(0, end_);
    for (Position at = chains_[bucket(ahead)].first; at != nowhere; at = following(at)) {
        // What lies behind has no room for a longer match.
        if (at + least > end_) break;
        if (text_[at + least - 1] != ahead[least - 1]) continue;
        const std::size_t length = common_length(window.substr(at), ahead);
        if (length < least) continue;
        best = {at, length};
        if (length == ahead.size()) break;
        least = length + 1;
    }
    return best;
}

}  // namespace tessera
