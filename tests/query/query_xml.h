// The query XML writer on queries of the kit, and its documents as texts that do not depend on how
// the parser lays them out.
#pragma once

#include <regex>

#include "automation/dom.h"
#include "query/query_fixture.h"

namespace test {

// Without line breaks and tabs between elements.
inline std::wstring flat(const std::wstring& xml) {
    static const std::wregex layout(L"[\r\n]+\t*");
    return std::regex_replace(xml, layout, L"");
}
inline std::wstring flat(const dom::Document& document) {
    return document ? flat(get(document, &IXMLDOMDocument::get_xml).str()) : L"nothing";
}

// The fixture's cursor is the writer's.
class ContentFixture : public QueryFixture {
  public:
    ContentFixture() { cursor = get(content, &ITesseraQContent::get_HQuery); }

    ComPtr<ITesseraQContent> content = create<ITesseraQContent>(L"Tessera.QContent");

    std::wstring columns_xml() const { return flat(get(content, &ITesseraQContent::XMLColumns)); }
    std::wstring row_xml() const { return flat(get(content, &ITesseraQContent::XMLRow)); }
    // "True: text" or "False: text".
    std::wstring row_string(bool encode = false) const {
        BSTR text = Bstr(L"before").detach();
        VARIANT_BOOL written = 42;
        CHECK(content->XMLRowAsString(&text, encode ? VARIANT_TRUE : VARIANT_FALSE, &written) ==
              S_OK);
        const Bstr owner = Bstr::attach(text);
        return (written == VARIANT_FALSE  ? L"False: "
                : written == VARIANT_TRUE ? L"True: "
                                          : L"? ") +
               owner.str();
    }
};

}  // namespace test
