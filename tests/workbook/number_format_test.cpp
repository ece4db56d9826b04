// Number formats: decimals and units.

#include "cli/workbook/number_format.h"

#include <doctest/doctest.h>

using namespace cli;

TEST_CASE("a number is shown with the decimals that the host shows, in either locale") {
    const struct {
        double number;
        std::u16string_view display;
        std::u16string_view format;
    } cases[] = {
        {12.5, u"12,5", u"General"},
        {208.333333333, u"208,333333333", u"General"},
        {14, u"14,0", u"0.0"},
        {18450.5, u"18450.50", u"0.00"},
        {109.908136483, u"109,9", u"0.0"},
        {109.908136483, u"110", u"0"},
        {-3, u"-3", u"General"},
        {1, u"in operation", u"General"},
        {1, u"", u"General"},
        {1e20, u"1E+20", u"General"},
    };
    for (const auto& [number, display, format] : cases)
        CHECK(number_format(number, display, {}) == format);
}

TEST_CASE("the unit stands behind the number as a text of its own") {
    CHECK(number_format(1, u"1,00", u"m³/h") == u"0.00\" m³/h\"");
    CHECK(number_format(50, u"50", u"%") == u"General\" %\"");
    CHECK(number_format(6, u"6", u"5\"x\n") == u"General\" 5\"\\\"\"x \"");
    CHECK(number_format(6, u"6", std::u16string(250, u'm')) == u"General");
}
