#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bench/sample_texts.h"
#include "codec/ansi_code_page.h"
#include "codec/lcss_compress.h"
#include "codec/lcss_decompress.h"
#include "codec/lcss_format.h"
#include "doctest/doctest.h"

using namespace tessera;
using namespace std::string_literals;

namespace {

const AnsiCodePage& page_1252 = AnsiCodePage::windows_1252();

std::u16string compress(std::u16string_view text) {
    return LCSSCompress(text, page_1252);
}

std::u16string decompress(std::u16string_view text) {
    return LCSSDecompress(text, page_1252).text;
}

bool is_complete(std::u16string_view text) {
    return LCSSDecompress(text, page_1252).complete;
}

std::u16string bytes(std::initializer_list<unsigned> values) {
    std::u16string text;
    for (const unsigned value : values)
        text += page_1252.to_char(static_cast<std::uint8_t>(value));
    return text;
}

// A compressed text whose header tells the truth, unless told otherwise.
std::u16string stored(unsigned tokens, std::u16string_view flags, std::u16string_view body) {
    std::u16string text = lcss::CountToChars(static_cast<std::int32_t>(tokens), page_1252);
    text += lcss::CountToChars(static_cast<std::int32_t>(flags.size()), page_1252);
    text += flags;
    text += body;
    return text;
}

}  // namespace

TEST_CASE("texts have the known compressed form and come back from it") {
    const std::pair<std::u16string, std::u16string> cases[] = {
        {u"", u""},
        {u"abc", u"abc"},
        {u"abcd", stored(0, u"", u"abcd")},
        {u"abcdabcdabcd", stored(3, u"\x03", u"abcd\0\x04\x04\0\x08\x03"s + u"d")},
        // The match would have to be as long as the maximum of 4, and only 3 characters occur.
        {u"abcxabcyz", stored(5, bytes({0, 0}), u"abcxabcyz")},
        // Farther from the end, 3 are enough.
        {u"abcxabcyzuvw", stored(6, bytes({1, 0}), u"abcx\0\x04\x03yzuvw"s)},
        // The leftmost of two occurrences.
        {u"abc1abc2abc3xyzuvw",
         stored(10, bytes({5, 0}), u"abc1\0\x04\x03"s + u"2\0\x08\x03"s + u"3xyzuvw")},
        // A run: no match reaches into the text that it is to produce, or to the last character.
        {u"aaaaaaaaaa", stored(3, u"\x02", u"aaaaa\0\x05\x04"s + u"a")},
    };
    for (const auto& [text, compressed] : cases) {
        CAPTURE(text.size());
        CHECK(compress(text) == compressed);
        CHECK(decompress(compressed) == text);
    }
}

TEST_CASE("flags are padded by as many as stand in the last character") {
    for (const auto& [flags, packed] : {std::pair{0, 0},
                                        {1, 1},
                                        {4, 1},
                                        {5, 2},
                                        {7, 2},
                                        {8, 1},
                                        {9, 2},
                                        {12, 2},
                                        {13, 3},
                                        {16, 2}}) {
        CAPTURE(flags);
        const std::vector<bool> ones(static_cast<std::size_t>(flags), true);
        const std::u16string text = lcss::PackFlags(ones, page_1252);
        CHECK(text.size() == static_cast<std::size_t>(packed));
        for (std::size_t flag = 0; flag < 8 * text.size(); ++flag)
            CHECK(lcss::unpacked_flag(text, flag, page_1252) == (flag < ones.size()));
    }
    CHECK(lcss::PackFlags({true, false, false, true}, page_1252) == u"\x09");
}

TEST_CASE("a count field holds 16 bits, and a larger count makes it vanish") {
    for (const int count : {0, 1, 255, 256, 0x80FF, 65535})
        CHECK(lcss::CharsToCount(lcss::CountToChars(count, page_1252), page_1252) == count);
    for (const int count : {65536, 0x10000001, 0x7FFFFFFF, -1})
        CHECK(lcss::CountToChars(count, page_1252).empty());
    CHECK(lcss::CharsToCount(bytes({0x7F, 0xFF, 0xFF, 0xFF}), page_1252) == 0x7FFFFFFF);
    CHECK(lcss::CharsToCount(bytes({0x80, 0, 0, 0}), page_1252) == 0);
    CHECK(lcss::CharsToCount(bytes({1, 1, 1}), page_1252) == 0);
    CHECK(lcss::CharsToDistance(bytes({0xFF, 0x80}), page_1252) == 0xFF80);
    CHECK(lcss::CharsToDistance(bytes({0xFF}), page_1252) == 0);
}

TEST_CASE("a text of 65535 tokens comes back, one more loses its count") {
    const std::u16string longest = samples::without_repeats(4 + 65'535);
    CHECK(decompress(compress(longest)) == longest);
    const std::u16string too_long = samples::without_repeats(4 + 65'536);
    // A flag length without the count before it.
    CHECK(compress(too_long) == bytes({0, 0, 0x20, 0}) + std::u16string(8192, u'\0') + too_long);
}

TEST_CASE("a match reaches back exactly 65535 characters") {
    const auto twice = [](std::size_t distance) {
        return u"WXYZ" + std::u16string(distance - 4, u'a') + u"WXYZ!!!!";
    };
    const std::u16string within = compress(twice(65'535));
    CHECK(within.ends_with(bytes({0xFF, 0xFF, 4}) + u"!!!!"));
    CHECK(decompress(within) == twice(65'535));
    const std::u16string beyond = compress(twice(65'536));
    CHECK(beyond.ends_with(u"WXYZ!!!!"));
    CHECK(decompress(beyond) == twice(65'536));
}

TEST_CASE("references yield what exists of what they point at") {
    const auto reference = [](unsigned distance, unsigned length) {
        return stored(2, u"\x01", u"abcd" + bytes({distance >> 8, distance & 0xFF, length}) + u"!");
    };
    CHECK(decompress(reference(4, 4)) == u"abcdabcd!");
    CHECK(decompress(reference(2, 200)) == u"abcdcd!");
    CHECK(decompress(reference(0, 5)) == u"abcd!");
    CHECK(decompress(reference(4, 0)) == u"abcd!");
    CHECK(is_complete(reference(4, 200)));
    CHECK(is_complete(reference(0, 5)));
}

TEST_CASE("a reference that begins before the text or lacks its length ends the text") {
    const std::pair<std::u16string, std::u16string> cases[] = {
        {stored(3, u"\x02", u"abcd!" + bytes({0, 6, 1}) + u"?"), u"abcd!"},
        {stored(3, u"\x02", u"abcd!" + bytes({0xFF, 0xFF, 0xFF}) + u"?"), u"abcd!"},
        {stored(2, u"\x02", u"abcd!" + bytes({0, 4})), u"abcd!"},
        {stored(2, u"\x02", u"abcd!"), u"abcd!"},
        // Behind the data, even after literals that are not there.
        {stored(4, u"\x08", u"abcd!"), u"abcd!"},
    };
    for (const auto& [compressed, text] : cases) {
        CAPTURE(compressed.size());
        CHECK(decompress(compressed) == text);
        CHECK_FALSE(is_complete(compressed));
    }
    CHECK(is_complete(stored(3, u"\x08", u"abcd!")));
}

TEST_CASE("counts and lengths beyond the data end with the data") {
    const std::u16string huge = bytes({0x7F, 0xFF, 0xFF, 0});
    const std::u16string none = bytes({0, 0, 0, 0});
    CHECK(decompress(huge + none + u"abcdxyz") == u"abcdxyz");
    CHECK(decompress(huge + huge + u"abcdxyz") == u"");
    CHECK(decompress(none + none + u"ab") == u"ab");
    CHECK(decompress(u"abcd") == u"");
    CHECK(decompress(none + u"abc") == u"");
    // More tokens than flags: the rest are literals.
    CHECK(decompress(stored(12, u"\x01", u"abcd" + bytes({0, 4, 1}) + u"0123456789x")) ==
          u"abcda0123456789x");
}

TEST_CASE("a flag length that takes positions out of range is an overflow") {
    const auto with_flag_length = [](unsigned last_byte) {
        return bytes({0, 0, 0, 1, 0x7F, 0xFF, 0xFF, last_byte}) + u"abcdefgh";
    };
    CHECK(decompress(with_flag_length(0xF2)) == u"");
    CHECK_THROWS_AS(decompress(with_flag_length(0xF3)), std::overflow_error);
    CHECK_THROWS_AS(decompress(with_flag_length(0xFF)), std::overflow_error);
}
