// Tests of internals: what the platform's parser holds, written as a document of its own.

#include "cli/content_file.h"
#include "support/com_fixture.h"

using automation::Bstr;
using automation::call;
using automation::get;
using automation::Variant;
using namespace automation::literals;

namespace {

class TextCollector : public cli::TextSink {
  public:
    void write(std::u16string_view part) override { text.append(part); }
    std::u16string text;
};

struct Written {
    std::u16string text;
    std::size_t replaced;
};

Written write(const dom::Document& document) {
    TextCollector sink;
    const std::size_t replaced = cli::write_document(sink, dom::root(document), u"UTF-16");
    return {sink.text, replaced};
}

dom::Document loaded(const wchar_t* xml) {
    const dom::Document document = dom::create_document();
    call(document, &IXMLDOMDocument::put_preserveWhiteSpace, VARIANT_TRUE);
    VARIANT_BOOL is_loaded = VARIANT_FALSE;
    document->loadXML(Bstr(xml).get(), &is_loaded);
    REQUIRE(is_loaded == VARIANT_TRUE);
    return document;
}

}  // namespace

TEST_CASE_FIXTURE(test::ComFixture, "elements get lines of their own, mixed text stays as it is") {
    const Written written = write(loaded(
        L"<Contents Version=\"1\"><!-- not --><Content a=\"&lt;&#228;\x00F6&quot;&#10;&#13;&#9;\">"
        L"<Empty/>  <Note>one <b>two<i> </i></b> \x20AC &amp; <![CDATA[<3>]]><?p q?></Note>\n"
        L"</Content><Plain>text\nin lines</Plain></Contents>"));
    CHECK((written.text == u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n"
                           u"<Contents Version=\"1\">\r\n"
                           u"\t<Content a=\"&lt;\u00E4\u00F6&quot;&#10;&#13;&#9;\">\r\n"
                           u"\t\t<Empty/>\r\n"
                           u"\t\t<Note>one <b>two<i/></b> \u20AC &amp; &lt;3&gt;</Note>\r\n"
                           u"\t</Content>\r\n"
                           u"\t<Plain>text\nin lines</Plain>\r\n"
                           u"</Contents>\r\n"));
    CHECK(written.replaced == 0);
    CHECK((write(loaded(L"<Rows>a<b/> c</Rows>")).text.find(u"\r\n<Rows>a<b/> c</Rows>\r\n") !=
           std::u16string::npos));
}

TEST_CASE_FIXTURE(test::ComFixture, "every character of a value is written as the parser has it") {
    const dom::Document document = loaded(L"<Contents><Content><Item/></Content></Contents>");
    const dom::Node item = dom::first_child(dom::first_child(dom::root(document)));
    std::wstring value;
    for (unsigned unit = 1; unit < 0xD800; ++unit)
        value += static_cast<wchar_t>(unit);
    value += L"\xD83D\xDE00\xE000\xFFFD";
    std::erase(value, L'\x00EF');
    std::size_t replaced = 28;  // all below the blank but tab, line feed and carriage return
    SUBCASE("such as can be read from the parser's text") {}
    SUBCASE("and such as cannot") {
        value += L"\xFFFE\x00EF\x00BF\x00BF\xFFFF";
        replaced += 2;
    }
    dom::set_attribute(item.as<IXMLDOMElement>(), L"Data"_bstr, Bstr(value));

    const Written written = write(document);
    CHECK(written.replaced == replaced);
    const std::u16string_view body =
        std::u16string_view(written.text).substr(written.text.find(u"?>") + 2);
    const dom::Document read = loaded(std::wstring(automation::as_wide(body)).c_str());
    for (wchar_t& unit : value)
        if ((unit < L' ' && unit != L'\t' && unit != L'\n' && unit != L'\r') || unit > L'\xFFFD')
            unit = L'\xFFFD';
    const auto contents = dom::child_named(dom::root(read), L"Content");
    CHECK(dom::attribute(dom::child_named(contents, L"Item"), L"Data"_bstr).text() == value);
}
