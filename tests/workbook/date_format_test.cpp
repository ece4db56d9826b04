#include "cli/workbook/date_format.h"

#include <doctest/doctest.h>

using namespace cli;

TEST_CASE("a number format is one of dates by what is no literal in it") {
    for (const char16_t* code :
         {u"yyyy-mm-dd", u"[$-407]D. MMMM", u"[h]:mm", u"\"a\"\\b_ s;0", u"h:mm AM/PM", u"[Red]mm"})
        CHECK(is_date_format(code));
    for (const char16_t* code :
         {u"General", u"0.00", u"0\" days\"", u"[Red]0", u"#,##0.00 \\d", u"@", u"0;yyyy",
          u"0.0E+00", u"", u"\"", u"\\", u"[", u"[$\u20AC-407]0"})
        CHECK_FALSE(is_date_format(code));
    CHECK(is_date_format(14));
    CHECK(is_date_format(47));
    CHECK_FALSE(is_date_format(0L));
    CHECK_FALSE(is_date_format(49));
}

TEST_CASE("days are counted as workbooks count them") {
    CHECK(automation_date(1, false) == 2);        // 1 January 1900
    CHECK(automation_date(59, false) == 60);      // 28 February 1900
    CHECK_FALSE(automation_date(60.5, false));    // 29 February 1900
    CHECK(automation_date(61, false) == 61);      // 1 March 1900
    CHECK(automation_date(0.25, false) == 0.25);  // a quarter past nothing
    CHECK(automation_date(46112.5, false) == 46112.5);
    CHECK(automation_date(0, true) == 1462);  // 1 January 1904
    CHECK(automation_date(0.25, true) == 0.25);
    CHECK(automation_date(44650, true) == 46112);
    CHECK_FALSE(automation_date(-1, false));
    CHECK_FALSE(automation_date(2958466, false));
}
