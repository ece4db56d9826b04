// Tests of internals: the options block and its parts, which no client reaches.

#include "archive/xml_publics.h"
#include "options/xml_options.h"
#include "support/watched_host.h"

using automation::get;
using automation::make;
using test::ComFixture;
using test::WatchedProject;
using namespace tessera;
using namespace automation::literals;

TEST_CASE_FIXTURE(
    ComFixture,
    "without a host object there are no options, and without options no block is returned") {
    CHECK(make<tessera::SpecOptToCollConverter>()->Convert(nullptr).empty());
    const auto writer = make<tessera::XMLOptions>();
    CHECK_FALSE(writer->write_below({}, nullptr));
    const auto root = get(writer->CreateDOMDocument(), &IXMLDOMDocument::get_documentElement);
    CHECK(get(root, &IXMLDOMElement::get_tagName).view() == L"Options");  // written all the same
    const auto document = make<tessera::XMLOptions>()->CreateDOMDocument();
    CHECK(get(document, &IXMLDOMDocument::get_xml).view() ==
          L"<?xml encoding=\"ISO-10646-UCS-2\"?>\r\n");
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(WatchedProject, "an object without the attribute has no options") {
    const auto converter = make<tessera::SpecOptToCollConverter>();
    CHECK(converter->Convert(object(L"Anlage|Pumpe").get()).empty());
    const auto options = converter->Convert(object(L"Anlage|Tabelle").get());
    REQUIRE(options.size() == 1);
    CHECK(options[0]->name.view() == L"AllowSheetCreation");
    CHECK(options[0]->value.view() == L"-1");
    CHECK(options[0]->value_type.view() == L"Boolean");
    CHECK(error_count() == 0);
    fail(L"MappingObject.AttributeByFullName");
    CHECK(converter->Convert(object(L"Anlage|Tabelle").get()).empty());
    CHECK(take_errors() == L"SpecOptToCollConverter|Friend Function 'Convert'\n");
}

TEST_CASE_FIXTURE(ComFixture, "options written twice below one root are two blocks") {
    const auto option = make<tessera::OptionMappingTable>();
    option->name = automation::Bstr(L"Empty");
    const OptionCollection options{option};
    const dom::Document document = dom::create_document();
    ArchiveNode owner(document);
    ArchiveNode root = XML_WriteTitle(owner, L"Contents"_bstr, L"1"_bstr);
    const auto writer = make<tessera::XMLOptions>();
    for (int i = 0; i < 2; ++i) {
        const ArchiveNode block = writer->write_below(root, &options);
        const dom::Node written = dom::child_named(block.node(), L"Empty");
        CHECK(dom::attribute(written, L"Data"_bstr).is_string());
        CHECK(dom::attribute(written, L"Data"_bstr).text().empty());
    }
    CHECK(dom::sibling_named(dom::child_named(root.node(), L"Options"), L"Options"));
    ArchiveNode nothing;
    const ArchiveNode alone = option->write_below(nothing);
    CHECK(get(alone.node(), &IXMLDOMNode::get_parentNode));
    CHECK(error_count() == 0);
}
