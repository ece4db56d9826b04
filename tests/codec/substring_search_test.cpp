#include "codec/substring_search.h"

#include <algorithm>
#include <string>
#include <vector>

#include "codec/sample_texts.h"
#include "doctest/doctest.h"

using namespace tessera;

namespace {

// Tries every place and every length.
PrefixMatch longest_prefix_by_trying(std::u16string_view text, std::size_t from,
                                     std::u16string_view needle, std::size_t least) {
    for (std::size_t length = needle.size(); length >= least; --length) {
        const std::size_t place = text.find(needle.substr(0, length), from);
        if (place != std::u16string_view::npos) {
            return {place, length};
        }
    }
    return {};
}

}  // namespace

TEST_CASE("the search finds what the standard library's finds, wherever it stands") {
    // One occurrence at every place of texts that do and do not fill whole vectors.
    for (const std::size_t size : {5, 31, 36, 64, 100}) {
        for (const std::u16string needle : {u"xy", u"xyz", u"xyxyz"}) {
            for (std::size_t at = 0; at + needle.size() <= size; ++at) {
                std::u16string text(size, u'x');
                text.replace(at, needle.size(), needle);
                const std::vector<char16_t> exact(text.begin(), text.end());
                for (const std::size_t from : {std::size_t{0}, at, at + 1, size}) {
                    for (const SubstringSearch search : substring_searches()) {
                        CHECK(search({exact.data(), size}, needle, from) ==
                              text.find(needle, from));
                    }
                }
            }
        }
    }
    CHECK(find_substring(u"xy", u"xyz", 0) == std::u16string_view::npos);
    CHECK(find_substring(u"", u"xy", 0) == std::u16string_view::npos);
}

TEST_CASE("the longest beginning of a text is found at its leftmost place") {
    samples::RandomTexts random(4);
    // The third alphabet has characters that differ in one half of their bits only.
    for (const std::u16string alphabet : {u"ab", u"abcdefgh", u"aš愀\u6161\u0100"}) {
        for (int round = 0; round < 4'000; ++round) {
            const std::u16string text = random.from(alphabet, random.number(150));
            const std::u16string needle = random.from(alphabet, 2 + random.number(12));
            const std::size_t from = random.number(static_cast<std::uint32_t>(text.size() + 1));
            const std::size_t least =
                2 + random.number(static_cast<std::uint32_t>(needle.size() - 1));
            const PrefixMatch expected = longest_prefix_by_trying(text, from, needle, least);
            const PrefixMatch found = find_longest_prefix(text, from, needle, least);
            CHECK(found.length == expected.length);
            CHECK(found.position == expected.position);
        }
    }
}
