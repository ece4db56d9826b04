#include "cli/xml_writer.h"

#include <doctest/doctest.h>

using namespace cli;

namespace {

class TextCollector : public TextSink {
  public:
    void write(std::u16string_view part) override {
        text.append(part);
        ++parts;
    }
    std::u16string text;
    std::size_t parts = 0;
};

// An element with one attribute, as text.
std::u16string attribute_text(std::u16string_view value, std::size_t& replaced) {
    TextCollector sink;
    XmlWriter writer(sink);
    writer.start(u"e");
    writer.attribute(u"a", value);
    writer.end();
    writer.finish();
    replaced = writer.replaced();
    const std::size_t begin = sink.text.find(u'"') + 1;
    return sink.text.substr(begin, sink.text.rfind(u'"') - begin);
}

}  // namespace

TEST_CASE("elements stand in lines of their own, text stands with its element") {
    TextCollector sink;
    XmlWriter writer(sink);
    writer.declaration(u"UTF-16");
    writer.start(u"Contents");
    writer.attribute(u"Version", u"1");
    writer.start(u"Empty");
    writer.end();
    writer.start(u"Note", true);
    writer.text(u"one ");
    writer.start(u"b");
    writer.text(u"two");
    writer.end();
    writer.text(u" three");
    writer.end();
    writer.end();
    writer.finish();
    CHECK((sink.text == u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n"
                        u"<Contents Version=\"1\">\r\n"
                        u"\t<Empty/>\r\n"
                        u"\t<Note>one <b>two</b> three</Note>\r\n"
                        u"</Contents>\r\n"));
    CHECK(writer.replaced() == 0);
}

TEST_CASE("what has a meaning in XML is written as a reference") {
    std::size_t replaced = 0;
    CHECK((attribute_text(u"<a & \"b\"> 'c'", replaced) == u"&lt;a &amp; &quot;b&quot;&gt; 'c'"));
    CHECK((attribute_text(u"a\r\nb\tc", replaced) == u"a&#13;&#10;b&#9;c"));
    CHECK(replaced == 0);

    TextCollector sink;
    XmlWriter writer(sink);
    writer.start(u"t", true);
    writer.text(u"]]> \"q\" a\r\nb");
    writer.end();
    writer.finish();
    CHECK((sink.text == u"\r\n<t>]]&gt; \"q\" a&#13;\nb</t>\r\n"));
}

TEST_CASE("characters that XML does not allow are replaced and counted, others are not") {
    std::size_t replaced = 0;
    CHECK((attribute_text(u"a\u0001\u000B\u001Fb\uFFFE\uFFFF", replaced) ==
           u"a\uFFFD\uFFFD\uFFFDb\uFFFD\uFFFD"));
    CHECK(replaced == 5);

    const char16_t halves[] = {0xDC00, u'-', 0xD800};
    CHECK((attribute_text({halves, 3}, replaced) == u"\uFFFD-\uFFFD"));
    CHECK(replaced == 2);

    const std::u16string_view allowed = u"\u007F\u0085\u00E4\u2028\uFFFD\U0001F600\U0010FFFF";
    CHECK((attribute_text(allowed, replaced) == allowed));
    CHECK(replaced == 0);
}

TEST_CASE("a large document reaches its sink in parts that are not cut inside a character") {
    TextCollector sink;
    XmlWriter writer(sink);
    writer.start(u"Rows");
    const std::u16string value(1001, u'x');
    for (int i = 0; i < 200; ++i) {
        writer.start(u"Row");
        writer.attribute(u"v", value + u"\U0001F600");
        writer.end();
    }
    writer.end();
    writer.finish();
    CHECK(sink.parts > 3);
    CHECK(sink.text.ends_with(u"\U0001F600\"/>\r\n</Rows>\r\n"));
}
