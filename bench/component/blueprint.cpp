#include "bench/component/blueprint.h"

namespace bench {

using automation::Bstr;
using automation::check;
using automation::ComPtr;
using automation::get;
using automation::lend;
using automation::Variant;

Blueprint::Blueprint(const dom::Node& element) : name_(dom::name(element)) {
    const auto attributes = get(element, &IXMLDOMNode::get_attributes);
    const long count = get(attributes, &IXMLDOMNamedNodeMap::get_length);
    for (long i = 0; i < count; ++i) {
        const auto attribute = get(attributes, &IXMLDOMNamedNodeMap::get_item, i);
        attributes_.push_back({dom::name(attribute), Bstr(dom::value(attribute).text())});
    }
    dom::for_each_element(element, [&](const dom::Node& child) { children_.emplace_back(child); });
}

void Blueprint::create(IXMLDOMDocument* document, IXMLDOMNode* parent) const {
    dom::Element element;
    check(document->createElement(name_.get(), element.put()));
    check(parent->appendChild(element.get(), nullptr));
    for (const Attribute& attribute : attributes_)
        check(element->setAttribute(attribute.name.get(), lend(attribute.value)));
    for (const Blueprint& child : children_)
        child.create(document, element.get());
}

std::vector<Bstr> Blueprint::item_paths() const {
    std::vector<Bstr> paths;
    for (const Blueprint& child : children_)
        child.add_paths(child.name_.str(), paths);
    return paths;
}

void Blueprint::add_paths(const std::wstring& path, std::vector<Bstr>& paths) const {
    if (children_.empty()) paths.emplace_back(path);
    for (const Blueprint& child : children_)
        child.add_paths(path + L"/" + child.name_.str(), paths);
}

RootedDocument::RootedDocument(const wchar_t* root_name) : document(dom::create_document()) {
    const Bstr name(root_name);
    const auto element = get(document, &IXMLDOMDocument::createElement, name.get());
    check(document->appendChild(element.get(), root.put()));
}

void read_items(IXMLDOMNode* element, const std::vector<Bstr>& paths) {
    static const Bstr data(L"Data");
    for (const Bstr& path : paths) {
        ComPtr<IXMLDOMNode> item;
        check(element->selectSingleNode(path.get(), item.put()));
        Variant value;
        check(item.as<IXMLDOMElement>()->getAttribute(data.get(), &value));
    }
}

}  // namespace bench
