#include "text/string_forms.h"

#include "doctest/doctest.h"
#include "support/text_output.h"

using namespace tessera;

TEST_CASE("line breaks are converted pair by pair, those of host text without a look around") {
    const std::u16string_view cases[][3] = {
        // Given, in host form, in office form.
        {u"", u"", u""},
        {u"a\nb", u"a\r\nb", u"a\nb"},
        {u"a\rb", u"a\rb", u"a\rb"},
        {u"a\r\nb", u"a\r\r\nb", u"a\nb"},
        {u"a\n\rb", u"a\r\n\rb", u"a\nb"},
        {u"a\r\n\rb", u"a\r\r\n\rb", u"a\nb"},
        {u"\r\n\n\r", u"\r\r\n\r\n\r", u"\n\n"},
    };
    for (const auto& [given, host, office] : cases) {
        CHECK(vb_string(given) == host);
        CHECK(office_string(given) == office);
    }
}
