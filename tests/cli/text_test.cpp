#include "cli/text.h"

#include <doctest/doctest.h>

using namespace cli;

TEST_CASE("a terminal gets no character that it would obey") {
    CHECK((visible(u"a\tb\r\nc\x1B[31m\x7F") == u"a\u2409b\u240D\u240Ac\u241B[31m\u2421"));
    CHECK((visible(u"\u009B2J") == u"<U+009B>2J"));
    CHECK((visible(u"\u202Eabc\u2028\uFEFF") == u"<U+202E>abc<U+2028><U+FEFF>"));
    CHECK((visible(u"\U000E0041") == u"<U+0E0041>"));
    CHECK(
        (visible(u"Förderhöhe \u65E5\u672C \U0001F600") == u"Förderhöhe \u65E5\u672C \U0001F600"));
    const char16_t half[] = {0xD83D};
    CHECK((visible({half, 1}) == u"\uFFFD"));
}

TEST_CASE("widths are those of a terminal") {
    CHECK(display_width(u"") == 0);
    CHECK(display_width(u"Größe") == 5);
    CHECK(display_width(u"Gro\u0308\u00DFe") == 5);
    CHECK(display_width(u"\u65E5\u672C") == 4);
    CHECK(display_width(u"\U0001F600") == 2);
}

TEST_CASE("a text that is cut has an ellipsis and the width that was left") {
    CHECK((cut_to(u"Pumpe", 5) == u"Pumpe"));
    CHECK((cut_to(u"Pumpen", 5) == u"Pump\u2026"));
    CHECK((cut_to(u"Pumpen", 1) == u"\u2026"));
    CHECK((cut_to(u"Pumpen", 0) == u""));
    // A wide character that does not fit is left out as a whole.
    CHECK((cut_to(u"a\u65E5\u672C", 4) == u"a\u65E5\u2026"));
    CHECK((cut_to(u"\u65E5\u672C", 3) == u"\u65E5\u2026"));
    CHECK((cut_to(u"\U0001F600\U0001F600", 3) == u"\U0001F600\u2026"));
}
