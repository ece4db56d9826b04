// Through the DLL: content documents that nobody wrote in good faith.
#include "automation/dom.h"
#include "support/content_text.h"

using namespace test;

namespace {

std::wstring repeated(std::wstring_view text, int times) {
    std::wstring result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

std::wstring element(const wchar_t* name, const std::wstring& inside) {
    return std::wstring(L"<") + name + L" Version='1'>" + inside + L"</" + name + L">";
}

// A "Content" whose value has this item.
std::wstring with_value(const wchar_t* item) {
    return element(L"Content", element(L"Value", item));
}

class HostileFixture : public ProjectFixture {
  public:
    // Reads the text and writes what was read; the content that is written.
    dom::Node reread(const std::wstring& text) const {
        const auto document = dom::create_document();
        REQUIRE(get(document, &IXMLDOMDocument::loadXML, Bstr(text).get()));
        return reread(get(document, &IXMLDOMDocument::get_documentElement).as<IXMLDOMNode>());
    }
    dom::Node reread(const dom::Node& root) const {
        const auto content = create<ITessera>(L"Tessera.Tessera");
        call(content, &ITessera::putref_WorkSet, workset.get());
        call(content, &ITessera::putref_XMLNode, dom::Node().get(), root.get());
        return get(content, &ITessera::get_XMLNode, dom::Node().get());
    }
    long told() const { return error_count() + message_count(); }
};

}  // namespace

TEST_CASE_FIXTURE(HostileFixture, "documents of any size are read") {
    // Deeper than the parser reads a text.
    const auto document = dom::create_document();
    const auto top = document.as<IXMLDOMNode>();
    dom::Node deepest = top;
    for (int i = 0; i < 1000; ++i) {
        const auto next = get(document, &IXMLDOMDocument::createElement, Bstr(L"Content").get());
        deepest = get(deepest, &IXMLDOMNode::appendChild, next.get());
    }
    CHECK(reread(dom::first_child(top)));
    constexpr int items = 100000;
    const auto many = reread(element(
        L"Content", element(L"ValueItems", repeated(L"<ValueItem Version='1'><Value Type='Long' "
                                                    L"Data='7'/></ValueItem>",
                                                    items))));
    CHECK(dom::child_named(many, L"ValueItems"));
    call(service(), &IHostKitService::Clear);
    const std::wstring big(9'000'000, L'x');
    const auto with_big =
        reread(with_value((L"<KelosValue Type='String' Data='" + big + L"'/>").c_str()));
    CHECK(data(with_big, L"Value", L"KelosValue") == big);
}

TEST_CASE_FIXTURE(HostileFixture, "wrong types and data are told and leave the record usable") {
    const wchar_t* const wrong[] = {
        L"<KelosValue Data='1'/>",
        L"<KelosValue Type='Long'/>",
        L"<KelosValue Type='Nonsense' Data='1'/>",
        L"<KelosValue Type='Long' Data='12345678901234567890'/>",
        L"<KelosValue Type='Integer' Data='40000'/>",
        L"<KelosValue Type='Double' Data='1e999'/>",
        L"<KelosValue Type='Currency' Data='x'/>",
        L"<KelosValue Type='Date' Data='31.02.2026 25:61'/>",
        L"<KelosValue Type='Boolean' Data='maybe'/>",
        L"<KelosValue Type='Byte()' Data='1'/>",
        L"<KelosValue Type='KelosObject' Data='3::P1'/>",
        L"<LCID Type='String' Data='no number'/>",
        L"<LCID Type='Long' Data='99999'/>",
        L"<AllValuesNumeric Type='String' Data='?'/>",
    };
    for (const wchar_t* const item : wrong) {
        CAPTURE(item);
        CHECK(data(reread(with_value(item)), L"Value", L"IOMode") == L"");
        CHECK(told() > 0);
        call(service(), &IHostKitService::Clear);
    }
    reread(L"<Content Version='x'/>");
    CHECK(error(1) == L"Tessera.XMLPublics|Public Function 'XML_GetVersion'");
    call(service(), &IHostKitService::Clear);
    // Of titles that stand twice the first counts.
    const auto twice = reread(
        element(L"Content", element(L"Document", L"<Pointer Type='String' Data='S!A1'/>") +
                                element(L"Document", L"<Pointer Type='String' Data='S!B2'/>")));
    CHECK(data(twice, L"Document", L"Pointer") == L"S!A1");
}
