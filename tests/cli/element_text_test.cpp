#include "cli/element_text.h"

#include <doctest/doctest.h>

using namespace cli;

namespace {

// What was read: "<name", " name=[value]", "[text]", ">" for an end.
class Transcript final : public ElementTextHandler {
  public:
    void start(std::u16string_view name) override { text_.append(u"<").append(name); }
    void attribute(std::u16string_view name, std::u16string_view value) override {
        text_.append(u" ").append(name).append(u"=[").append(value).append(u"]");
    }
    void text(std::u16string_view value) override { text_.append(u"[").append(value).append(u"]"); }
    void end() override { text_ += u'>'; }

    const std::u16string& str() const { return text_; }

  private:
    std::u16string text_;
};

std::u16string read(std::u16string_view xml) {
    Transcript transcript;
    read_element_text(xml, transcript);
    return transcript.str();
}

}  // namespace

TEST_CASE("elements, attributes and texts are read in their order") {
    CHECK((read(u"<a><b c=\"1\" d='\"2\"'/>x<e >y</e >\r\n</a>") ==
           u"<a<b c=[1] d=[\"2\"]>[x]<e[y]>[\n]>"));
    CHECK((read(u"<a\r\n\tb = \"1\"\tc=\"\"\n/>") == u"<a b=[1] c=[]>"));
    CHECK((read(u"<n:a n:b=\"/ > =\"></n:a>") == u"<n:a n:b=[/ > =]>"));
    CHECK((read(u"") == u""));
}

TEST_CASE("what is neither an element nor text is passed over") {
    CHECK((read(u"<?xml version=\"1.0\"?><a><!-- <b/> - > --><?c <d?>e</a>") == u"<a[e]>"));
    CHECK((read(u"<a><![CDATA[<b> &amp; ]] >\r\n]]>c</a>") == u"<a[<b> &amp; ]] >\n][c]>"));
}

TEST_CASE("references and line ends are decoded") {
    CHECK((read(u"<a b=\"&lt;&gt;&amp;&quot;&apos;&amp;lt;\">1 &lt; 2</a>") ==
           u"<a b=[<>&\"'&lt;][1 < 2]>"));
    CHECK((read(u"<a b=\"&#228;&#xE4;&#Xe4;&#x1F600;&#10;&#13;&#x9;\"/>") ==
           u"<a b=[\u00E4\u00E4\uFFFD\U0001F600\n\r\t]>"));
    CHECK((read(u"<a>1\r\n2\r3\n4&#13;\r\n</a>") == u"<a[1\n2\n3\n4\r\n]>"));
    // What a parser lets through although XML does not.
    CHECK((read(u"<a b=\"\u0001\uFFFF&#1;&#x110000;&#99999999999;&#;&other;-\"/>") ==
           u"<a b=[\u0001\uFFFF\u0001\uFFFD\uFFFD\uFFFD-]>"));
}

TEST_CASE("text that breaks off anywhere ends there") {
    CHECK((read(u"<") == u"<"));
    CHECK((read(u"<a b") == u"<a"));
    CHECK((read(u"<a b=") == u"<a"));
    CHECK((read(u"<a b=\"1&am") == u"<a b=[1]"));
    CHECK((read(u"<a b=\"1\"/") == u"<a b=[1]>"));
    CHECK((read(u"<a>b<![CDATA[c]]") == u"<a[b][c]]]"));
    CHECK((read(u"<a><!-- b --") == u"<a"));
    const std::u16string_view xml =
        u"<?p?><a b=\"1&amp;\" c='2'><!--d-->e&#x41;<![CDATA[f]]><g/></a>";
    for (std::size_t length = 0; length < xml.size(); ++length) {
        // A copy of its own: the checked build notices a step beyond it.
        const std::u16string part(xml.substr(0, length));
        CHECK(read(part).size() <= read(xml).size() + 1);
    }
}
