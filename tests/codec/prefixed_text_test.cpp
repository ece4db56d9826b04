#include "codec/prefixed_text.h"

#include "doctest/doctest.h"

using namespace tessera;

TEST_CASE("an encoded text is told from a plain one, and its layout, by exact markers") {
    struct Case {
        std::u16string_view text;
        EncodedLayout layout;
        std::u16string_view payload;
    };
    const Case cases[] = {
        {u"", EncodedLayout::none, u""},
        {u"abc", EncodedLayout::none, u""},
        {u"@@UU@", EncodedLayout::none, u""},
        {u"@@uu@@C@@x", EncodedLayout::none, u""},
        {u" @@UU@@x", EncodedLayout::none, u""},
        {u"@@UU@@", EncodedLayout::legacy, u""},
        {u"@@UU@@C@", EncodedLayout::legacy, u"C@"},
        {u"@@UU@@c@@x", EncodedLayout::legacy, u"c@@x"},
        {u"@@UU@@#0V%T", EncodedLayout::legacy, u"#0V%T"},
        {u"@@UU@@C@@", EncodedLayout::current, u""},
        {u"@@UU@@C@@C@@eJw", EncodedLayout::current, u"C@@eJw"},
    };
    for (const Case& c : cases) {
        const PrefixedText split = split_prefixed_text(c.text);
        CHECK(split.layout == c.layout);
        CHECK(split.payload == c.payload);
    }
}
