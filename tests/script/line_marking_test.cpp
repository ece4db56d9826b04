#include "script/line_marking.h"

#include <stdexcept>
#include <string>

#include "doctest/doctest.h"

using namespace tessera;

namespace {

std::u16string_view marked(std::u16string_view text, std::int16_t line_feeds) {
    const auto selection = line_selection(text, line_feeds);
    REQUIRE(selection.has_value());
    return text.substr(static_cast<std::size_t>(selection->start),
                       static_cast<std::size_t>(selection->length));
}

}  // namespace

TEST_CASE("a line is marked from its first character to its own line feed") {
    constexpr std::u16string_view text = u"first\r\nsecond\r\n\r\nlast";
    CHECK(marked(text, 0) == u"first\r\n");
    CHECK(marked(text, 1) == u"second\r\n");
    CHECK(marked(text, 2) == u"\r\n");
    CHECK(marked(text, 3) == u"last");
    CHECK(marked(u"", 0) == u"");
    CHECK(marked(u"a\n", 1) == u"");
    CHECK(marked(u"first\nsecond", -1) == u"first\n");
    // There is no such line.
    CHECK_FALSE(line_selection(u"first\r\nsecond", 2).has_value());
    CHECK_FALSE(line_selection(u"", 1).has_value());
}

TEST_CASE("positions have 16 bits") {
    const std::u16string long_line(32767, u'x');
    CHECK(line_selection(long_line, 0)->length == 32767);
    CHECK(line_selection(long_line.substr(1) + u"\n", 0)->length == 32767);
    CHECK_THROWS_AS(line_selection(long_line + u"\n", 0), std::overflow_error);
    CHECK_THROWS_AS(line_selection(long_line + u"x", 0), std::overflow_error);
    CHECK_THROWS_AS(line_selection(long_line + u"\nx", 1), std::overflow_error);
}
