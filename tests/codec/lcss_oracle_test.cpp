// The compressor against the literal one, and the decompressor against both.
#include <string>
#include <vector>

#include "bench/reference_lcss.h"
#include "bench/sample_texts.h"
#include "codec/lcss_compress.h"
#include "codec/lcss_decompress.h"
#include "codec/odd_code_pages.h"
#include "doctest/doctest.h"

using namespace tessera;

namespace {

void check_against_oracle(const std::u16string& text, const AnsiCodePage& page) {
    // Nothing lies behind the text, not even a terminator.
    const std::vector<char16_t> exact(text.begin(), text.end());
    const std::u16string compressed = LCSSCompress({exact.data(), exact.size()}, page);
    const auto character_of_byte = [&page](std::size_t byte) {
        return page.to_char(static_cast<std::uint8_t>(byte));
    };
    CHECK(compressed == reference::compress(text, character_of_byte));
    const LcssText decompressed = LCSSDecompress(compressed, page);
    CHECK(decompressed.complete);
    CHECK(decompressed.text == text);
}

}  // namespace

TEST_CASE("texts of every length compress as the rules say and come back") {
    samples::RandomTexts random(5);
    const AnsiCodePage shifted = shifted_page();
    for (std::size_t length = 0; length <= 400; ++length) {
        CAPTURE(length);
        const std::u16string source = random.from(u"abcdefghijklmnopqrstuvwxyzЖ€\uFFFF", 90);
        check_against_oracle(random.from(u"ab", length), AnsiCodePage::windows_1252());
        check_against_oracle(random.from(u"abcd", length), shifted);
        check_against_oracle(random.pieces_of(source, 25, length), AnsiCodePage::windows_1252());
        check_against_oracle(random.query_rows(length), shifted);
        check_against_oracle(std::u16string(length, u'a'), shifted);
        check_against_oracle(samples::periodic(1 + length % 13, length), shifted);
    }
}

TEST_CASE("long texts compress as the rules say and come back, beyond the window as well") {
    const AnsiCodePage& page = AnsiCodePage::windows_1252();
    samples::RandomTexts random(6);
    check_against_oracle(samples::without_repeats(3'000), page);
    check_against_oracle(random.from(samples::periodic(256, 256), 6'000), page);
    check_against_oracle(random.query_rows(20'000), page);
    // Pieces longer than the longest match, all of them beginnings of many others.
    const std::u16string source = random.from(u"abcdefghijklmnopqrstuvwxyz", 700);
    for (const std::size_t length : {65'534, 65'535, 65'536, 65'537, 140'000}) {
        CAPTURE(length);
        check_against_oracle(std::u16string(length, u'a'), page);
        check_against_oracle(samples::periodic(259, length), page);
        check_against_oracle(random.pieces_of(source, 700, length), page);
    }
}
