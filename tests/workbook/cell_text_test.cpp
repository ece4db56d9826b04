// Texts as cells hold them.

#include "cli/workbook/cell_text.h"

#include <doctest/doctest.h>

using namespace cli;
using namespace std::string_literals;

TEST_CASE("what XML has no way to write is escaped, and so is what looks like an escape") {
    const struct {
        std::u16string text;
        std::u16string_view escaped;
    } cases[] = {
        {u"line\nand\ttab", u"line\nand\ttab"},
        {u"a\rb\x01", u"a_x000D_b_x0001_"},
        {u"\0"s, u"_x0000_"},
        {u"\xD83D\xDE00 \xD83D", u"\xD83D\xDE00 _xD83D_"},
        {u"\xFFFE\xFFFF", u"_xFFFE__xFFFF_"},
        {u"_x000D_", u"_x005F_x000D_"},
        {u"_x00aF_ _x00G0_ _x0_ _x000D", u"_x005F_x00aF_ _x00G0_ _x0_ _x000D"},
    };
    for (const auto& [text, escaped] : cases) {
        CHECK(escaped_cell_text(text) == escaped);
        CHECK(unescaped_cell_text(escaped) == text);
    }
}

TEST_CASE("texts that a program would take for something else are told from plain ones") {
    for (const char16_t* text :
         {u"=1+1", u"+49", u"-P101A", u"@x", u"'a", u"007", u" =A1", u"#REF!"})
        CHECK(would_be_reinterpreted(text));
    for (const char16_t* text : {u"", u"  ", u"P101", u"a=b", u"Übersicht"})
        CHECK(!would_be_reinterpreted(text));
}
