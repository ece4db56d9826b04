// Content documents as short texts that a test can compare.
#pragma once

#include <string>
#include <vector>

#include "automation/dom.h"
#include "support/com_fixture.h"

namespace test {

// The data of an item below a record of a "Content" element, as "Type:Data"; empty when missing.
inline std::wstring item(const dom::Node& content, const wchar_t* record, const wchar_t* name) {
    using namespace automation::literals;
    const dom::Node title = dom::child_named(content, record);
    const dom::Node node = title ? dom::child_named(title, name) : dom::Node();
    const Variant type = dom::attribute(node, L"Type"_bstr);
    if (!type.is_string()) return {};
    return std::wstring(type.text()) + L":" +
           std::wstring(dom::attribute(node, L"Data"_bstr).text());
}

// The data alone.
inline std::wstring data(const dom::Node& content, const wchar_t* record, const wchar_t* name) {
    const std::wstring text = item(content, record, name);
    return text.substr(std::min(text.find(L':') + 1, text.size()));
}

inline std::vector<dom::Node> contents_of(const dom::Document& document) {
    using namespace automation::literals;
    std::vector<dom::Node> result;
    const auto root = get(document, &IXMLDOMDocument::get_documentElement).as<IXMLDOMNode>();
    for (dom::Node node = dom::child_named(root, L"Content"); node;
         node = dom::sibling_named(node, L"Content"))
        result.push_back(node);
    return result;
}

// The values of an element's items as "LCID value=display", parted by "; ".
inline std::wstring values(const dom::Node& content) {
    using namespace automation::literals;
    std::wstring result;
    const dom::Node list = dom::child_named(content, L"ValueItems");
    for (dom::Node node = dom::child_named(list, L"ValueItem"); node;
         node = dom::sibling_named(node, L"ValueItem")) {
        const auto text = [&](const wchar_t* name) {
            return std::wstring(dom::attribute(dom::child_named(node, name), L"Data"_bstr).text());
        };
        if (!result.empty()) result += L"; ";
        result += text(L"LCID") + L" " + text(L"Value") + L"=" + text(L"DisplayValue");
    }
    return result;
}

}  // namespace test
