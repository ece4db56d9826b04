// Through the DLL: a parser that fails, and nodes that are not what they should be.
#include "automation/dom.h"
#include "automation/plain_object.h"
#include "faults/scenarios.h"

#include <msxml2.h>

using namespace test;

namespace {

// Stands for the parser's class as long as it lives, and makes nothing.
class NoParser {
  public:
    NoParser() {
        CLSID id;
        REQUIRE(CLSIDFromProgID(L"MSXML2.DOMDocument.3.0", &id) == S_OK);
        REQUIRE(CoRegisterClassObject(id, factory_.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                      &registration_) == S_OK);
    }
    ~NoParser() { CoRevokeClassObject(registration_); }
    NoParser(const NoParser&) = delete;
    NoParser& operator=(const NoParser&) = delete;

  private:
    struct Factory : automation::PlainObject<IClassFactory> {
        STDMETHODIMP CreateInstance(IUnknown*, REFIID, void**) override { return E_OUTOFMEMORY; }
        STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    };

    const ComPtr<Factory> factory_ = automation::make_plain<Factory>();
    DWORD registration_ = 0;
};

}  // namespace

TEST_CASE_FIXTURE(ScenarioFixture, "without a parser everything is reported and nothing written") {
    for (const Scenario& scenario : scenarios()) {
        CAPTURE(std::wstring(scenario.name));
        repeat(scenario);
        const std::wstring expected = repeat(scenario);
        take_errors();
        {
            const NoParser none;
            const std::wstring outcome = repeat(scenario);
            const bool needs_parser = outcome != expected;
            CHECK(take_errors().empty() != needs_parser);
        }
        CHECK(repeat(scenario) == expected);
        take_errors();
    }
}

TEST_CASE_FIXTURE(ScenarioFixture, "an owner that takes no elements is reported") {
    const auto document = dom::create_document();
    const Bstr name(L"text");
    const auto element = get(document, &IXMLDOMDocument::createElement, name.get());
    const auto other_version = create<IXMLDOMDocument>(L"MSXML2.DOMDocument.6.0");
    const auto root = get(other_version, &IXMLDOMDocument::createElement, name.get());
    get(other_version, &IXMLDOMDocument::appendChild, root.get());
    const auto written_below = [&](const dom::Node& owner) {
        const auto content = create<ITessera>(L"Tessera.Tessera");
        return static_cast<bool>(get(content, &ITessera::get_XMLNode, owner.get()));
    };
    CHECK(written_below(element.as<IXMLDOMNode>()));
    CHECK(written_below(root.as<IXMLDOMNode>()));
    CHECK(take_errors() == L"");
    const dom::Node unusable[] = {
        get(document, &IXMLDOMDocument::createTextNode, name.get()).as<IXMLDOMNode>(),
        get(document, &IXMLDOMDocument::createComment, name.get()).as<IXMLDOMNode>(),
        get(document, &IXMLDOMDocument::createCDATASection, name.get()).as<IXMLDOMNode>(),
        get(document, &IXMLDOMDocument::createAttribute, name.get()).as<IXMLDOMNode>(),
    };
    for (const dom::Node& node : unusable) {
        CAPTURE(dom::type(node));
        written_below(node);
        CHECK(take_errors().starts_with(L"Tessera.XMLPublics|Public Function 'XML_WriteTitle'\n"));
    }
}
