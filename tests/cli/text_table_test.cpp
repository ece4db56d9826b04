#include "cli/text_table.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "cli/text.h"

using namespace cli;

namespace {

std::size_t widest_line(const std::u16string& text) {
    std::size_t widest = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = text.find(u'\n', begin);
        widest = std::max(widest, display_width(text.substr(begin, end - begin)));
        begin = end + 1;
    }
    return widest;
}

}  // namespace

TEST_CASE("columns are as wide as what stands in them, lines end without blanks") {
    const TextTable table{{u"Cell", u"Value"},
                          {{u"A1", u"Förderhöhe"}, {u"AB100", u""}, {u"\u65E5\u672C\u8A9E", u"x"}}};
    CHECK((format_table(table, 80) == u"Cell    Value\n"
                                      u"------  ----------\n"
                                      u"A1      Förderhöhe\n"
                                      u"AB100\n"
                                      u"\u65E5\u672C\u8A9E  x\n"));
}

TEST_CASE("the widest columns give way first, headings stay") {
    const std::u16string longest(100, u'v');
    const TextTable table{{u"Sheet", u"Object", u"Value"},
                          {{u"Pumps", u"A10|U12|P101A", longest}, {u"S", u"x", u"short"}}};
    const std::u16string text = format_table(table, 40);
    CHECK(widest_line(text) == 40);
    CHECK(text.find(u"A10|U12|P101A") != text.npos);
    CHECK(text.find(u"vvvv\u2026\n") != text.npos);

    const std::u16string narrow = format_table(table, 1);
    CHECK(narrow.starts_with(u"Sheet  Object  Value\n"));
    CHECK(narrow.find(u"A10|U\u2026") != narrow.npos);
}

TEST_CASE("line breaks in a cell do not break its line") {
    const TextTable table{{u"Value"}, {{u"a\r\nb"}, {u"tab\there"}}};
    CHECK((format_table(table, 80) == u"Value\n"
                                      u"--------\n"
                                      u"a\u240D\u240Ab\n"
                                      u"tab\u2409here\n"));
}

TEST_CASE("a table without rows has its headings, one without columns is nothing") {
    CHECK((format_table({{u"Sheet", u"Cell"}, {}}, 80) == u"Sheet  Cell\n-----  ----\n"));
    CHECK((format_table({}, 80) == u""));
}
