#include "codec/match_index.h"

#include <algorithm>
#include <string>
#include <vector>

#include "bench/sample_texts.h"
#include "doctest/doctest.h"

using namespace tessera;

namespace {

// Tries every length.
Match longest_by_trying(std::u16string_view window, std::u16string_view ahead) {
    for (std::size_t length = ahead.size(); length >= MatchIndex::least_length; --length) {
        const std::size_t place = window.find(ahead.substr(0, length));
        if (place != std::u16string_view::npos) return {place, length};
    }
    return {};
}

}  // namespace

TEST_CASE("the longest match is found at its leftmost place, up to both edges of the window") {
    samples::RandomTexts random(4);
    for (const std::size_t window : {3, 4, 7, 8, 31, 300}) {
        for (int round = 0; round < 100; ++round) {
            CAPTURE(window);
            CAPTURE(round);
            const std::u16string text = random.from(round % 2 == 0 ? u"ab" : u"aš愀\u6161", 150);
            // Nothing lies behind the text, not even a terminator.
            const std::vector<char16_t> exact(text.begin(), text.end());
            const std::u16string_view whole(exact.data(), exact.size());
            MatchIndex index(whole, window);
            for (std::size_t at = 0; at <= text.size(); at += random.number(20)) {
                const std::size_t start = at - std::min(at, window);
                const std::u16string_view ahead = whole.substr(at, random.number(12));
                index.advance_to(at);
                const Match expected = longest_by_trying(whole.substr(start, at - start), ahead);
                const Match found = index.longest(ahead);
                CHECK(found.length == expected.length);
                CHECK(found.position == (expected.length ? start + expected.position : 0));
            }
        }
    }
}
