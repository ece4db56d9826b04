#include "text/utf8.h"

#include "doctest/doctest.h"

using tessera::from_utf8;
using tessera::to_utf8;

TEST_CASE("UTF-8 comes back as it was, up to the edges of each length") {
    const std::u16string texts[] = {u"",
                                    u"Pumpe",
                                    u"Förderhöhe",
                                    u"\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFD\uFFFF",
                                    u"\U00010000\U0001F600\U0010FFFF",
                                    std::u16string(u"a\0b", 3)};
    for (const std::u16string& text : texts) {
        const auto back = from_utf8(to_utf8(text));
        REQUIRE(back.has_value());
        CHECK((*back == text));
    }
    CHECK(to_utf8(u"\u20AC") == "\xE2\x82\xAC");
    CHECK(to_utf8(u"\U0001F600") == "\xF0\x9F\x98\x80");
}

TEST_CASE("halves of surrogate pairs become replacement characters") {
    const char16_t high[] = {0xD83D, u'x'};
    const char16_t low[] = {u'x', 0xDE00};
    const char16_t both_wrong[] = {0xDFFF, 0xD800};
    CHECK(to_utf8({high, 2}) == "\xEF\xBF\xBDx");
    CHECK(to_utf8({low, 2}) == "x\xEF\xBF\xBD");
    CHECK(to_utf8({both_wrong, 2}) == "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST_CASE("bytes that are not UTF-8 are told from bytes that are") {
    for (const char* bytes : {"\x80", "a\xFF", "\xC3", "\xC3(", "\xC0\xAF", "\xE0\x80\xAF",
                              "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF0\x9F\x98", "F\xF6rdern"})
        CHECK_FALSE(from_utf8(bytes).has_value());
}
