#include "automation/dom.h"

#include "automation/thread_kept.h"

namespace dom {

using automation::call;
using automation::check;
using automation::get;
using namespace automation::literals;

namespace {

// The version-independent DOM document class.
constexpr CLSID document_class = {
    0xf6d90f11, 0x9c73, 0x11d3, {0xb3, 0x2e, 0x00, 0xc0, 0x4f, 0x99, 0x0b, 0xb4}};

// Looking the class up costs a thousand times what creating a document does, and a walk over a
// query creates one for every row.
struct DocumentFactory {
    DocumentFactory() {
        check(CoGetClassObject(document_class, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                               reinterpret_cast<void**>(factory.put())));
    }
    ComPtr<IClassFactory> factory;
};

constexpr BstrView declaration_target = L"xml"_bstr;
constexpr BstrView declaration_attribute = L"encoding"_bstr;
constexpr BstrView declaration_encoding = L"ISO-10646-UCS-2"_bstr;

// False where the parser has no attribute map for processing instructions.
bool add_to_attribute_map(const Document& document, const Node& instruction) {
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    if (FAILED(instruction->get_attributes(attributes.put())) || !attributes) return false;
    const auto encoding =
        get(document, &IXMLDOMDocument::createAttribute, declaration_attribute.get());
    check(encoding->put_value(automation::lend(declaration_encoding)));
    Node added;
    return SUCCEEDED(attributes->setNamedItem(encoding.get(), added.put()));
}

// The data of this instruction cannot be changed once it is made.
Node declaration_with_data(const Document& document) {
    const BstrView data = L"encoding=\"ISO-10646-UCS-2\""_bstr;
    return get(document, &IXMLDOMDocument::createProcessingInstruction, declaration_target.get(),
               data.get());
}

// The node itself or the first of its following siblings that is an element of this name.
Element matching(Node node, std::wstring_view name) {
    while (node) {
        if (type(node) == NODE_ELEMENT && dom::name(node).view() == name)
            return node.as<IXMLDOMElement>();
        node = next_sibling(node);
    }
    return {};
}

}  // namespace

Document create_document() {
    const auto& factory = automation::ThreadKept<DocumentFactory>::get().factory;
    Document document;
    check(factory->CreateInstance(nullptr, __uuidof(IXMLDOMDocument),
                                  reinterpret_cast<void**>(document.put())));
    return document;
}

void append_declaration(const Document& document) {
    const Variant type(static_cast<long>(NODE_PROCESSING_INSTRUCTION));
    Node instruction = get(document, &IXMLDOMDocument::createNode, static_cast<VARIANT>(type),
                           declaration_target.get(), static_cast<BSTR>(nullptr));
    if (!add_to_attribute_map(document, instruction)) instruction = declaration_with_data(document);
    call(document, &IXMLDOMDocument::appendChild, instruction.get(), nullptr);
}

Element create_element(const Document& document, BstrView name) {
    return get(document, &IXMLDOMDocument::createElement, name.get());
}

void append(const Node& parent, const Element& child) {
    call(parent, &IXMLDOMNode::appendChild, child.get(), nullptr);
}

Element child_named(const Node& parent, std::wstring_view name) {
    return matching(first_child(parent), name);
}

Element sibling_named(const Node& node, std::wstring_view name) {
    return matching(next_sibling(node), name);
}

void set_attribute(const Element& element, BstrView name, BstrView value) {
    // A null string would be refused by some parsers where an empty one is meant.
    const BstrView text = value.get() ? value : L""_bstr;
    call(element, &IXMLDOMElement::setAttribute, name.get(), automation::lend(text));
}

Variant attribute(const Element& element, BstrView name) {
    Variant value;
    if (!element) return value;
    check(element->getAttribute(name.get(), &value), element);
    if (value.vt == VT_NULL) value = Variant();
    return value;
}

Variant attribute(const Node& node, BstrView name) {
    return attribute(node.try_as<IXMLDOMElement>(), name);
}

}  // namespace dom
