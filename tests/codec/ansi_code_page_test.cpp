#include "codec/ansi_code_page.h"

#include <string>

#include "codec/odd_code_pages.h"
#include "doctest/doctest.h"

using namespace tessera;

TEST_CASE("windows-1252 gives every byte back, its unassigned ones as control characters") {
    const AnsiCodePage& page = AnsiCodePage::windows_1252();
    for (unsigned byte = 0; byte < AnsiCodePage::byte_values; ++byte) {
        CAPTURE(byte);
        const char16_t character = page.to_char(static_cast<std::uint8_t>(byte));
        CHECK(page.to_byte(character) == byte);
        CHECK(page.holds(character));
    }
    CHECK(page.to_char(0x80) == u'€');
    CHECK(page.to_char(0x9F) == u'Ÿ');
    CHECK(page.to_char(0xE4) == u'ä');
    for (const unsigned unassigned : {0x81u, 0x8Du, 0x8Fu, 0x90u, 0x9Du})
        CHECK(page.to_char(static_cast<std::uint8_t>(unassigned)) == unassigned);
}

TEST_CASE("a character that the code page does not hold becomes the replacement or its best fit") {
    const AnsiCodePage& page = AnsiCodePage::windows_1252();
    CHECK(page.to_byte(u'Ж') == '?');
    CHECK_FALSE(page.holds(u'Ж'));
    CHECK_FALSE(page.holds(0x0080));

    const AnsiCodePage::BestFit fits[] = {{u'Ā', 'A'}, {u'€', 'E'}};
    const AnsiCodePage fitting = western_page(fits);
    CHECK(fitting.to_byte(u'Ā') == 'A');
    CHECK_FALSE(fitting.holds(u'Ā'));
    CHECK(fitting.to_byte(u'Ж') == '#');
    // An exact entry is better than the best fit.
    CHECK(fitting.to_byte(u'€') == 0x80);
}

TEST_CASE("of two bytes for one character the lower one is written") {
    AnsiCodePage::ToUnicode characters{};
    characters.fill(u'x');
    characters[7] = u'y';
    const AnsiCodePage page(characters);
    CHECK(page.to_byte(u'x') == 0);
    CHECK(page.to_byte(u'y') == 7);
}

TEST_CASE("bytes that a code page does not assign survive, as all above ASCII under UTF-8") {
    AnsiCodePage::ToUnicode characters{};
    for (std::size_t byte = 0; byte < characters.size(); ++byte)
        characters[byte] = static_cast<char16_t>(byte < 0x80 ? byte : 0xFFFD);
    const AnsiCodePage page(characters);
    for (unsigned byte = 0; byte < AnsiCodePage::byte_values; ++byte)
        CHECK(page.to_byte(page.to_char(static_cast<std::uint8_t>(byte))) == byte);
    CHECK(page.to_byte(0xFFFD) == '?');
}

TEST_CASE("texts whose bytes have the values of their characters are recognised") {
    const AnsiCodePage& page = AnsiCodePage::windows_1252();
    CHECK(page.leaves_unchanged(u""));
    // One character among others at every place of a word and behind the last one.
    for (unsigned character = 0; character < 0x10000; character += character < 0x200 ? 1 : 0xFF) {
        CAPTURE(character);
        const auto c = static_cast<char16_t>(character);
        const bool unchanged = page.to_byte(c) == c && (c < 0x80 || c > 0x9F);
        for (std::size_t at = 0; at < 7; ++at) {
            std::u16string text = u"aÄ~ÿ\u00A0 z";
            text[at] = c;
            CHECK(page.leaves_unchanged(text) == unchanged);
        }
    }
    CHECK_FALSE(shifted_page().leaves_unchanged(u"abc"));
    CHECK_FALSE(shifted_page().ascii_is_identity());
    CHECK(swapped_page().leaves_unchanged(u"abcdefg"));
    CHECK_FALSE(swapped_page().leaves_unchanged(u"abcdefö"));
}
