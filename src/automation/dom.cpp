#include "automation/dom.h"

#include "automation/thread_kept.h"

namespace dom {

using automation::call;
using automation::check;
using automation::get;

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

constexpr wchar_t declaration_target[] = L"xml";
constexpr wchar_t declaration_attribute[] = L"encoding";
constexpr wchar_t declaration_encoding[] = L"ISO-10646-UCS-2";

// False where the parser has no attribute map for processing instructions.
bool add_to_attribute_map(const Document& document, const Node& instruction) {
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    if (FAILED(instruction->get_attributes(attributes.put())) || !attributes) return false;
    const Bstr name(declaration_attribute);
    const auto encoding = get(document, &IXMLDOMDocument::createAttribute, name.get());
    check(encoding->put_value(Variant(declaration_encoding)));
    Node added;
    return SUCCEEDED(attributes->setNamedItem(encoding.get(), added.put()));
}

Node matching(Node node, std::wstring_view name) {
    while (node && (type(node) != NODE_ELEMENT || dom::name(node).view() != name))
        node = next_sibling(node);
    return node;
}

// The data of this instruction cannot be changed once it is made.
Node declaration_with_data(const Document& document, const Bstr& target) {
    const Bstr data(std::wstring(declaration_attribute) + L"=\"" + declaration_encoding + L"\"");
    const auto instruction =
        get(document, &IXMLDOMDocument::createProcessingInstruction, target.get(), data.get());
    return instruction.as<IXMLDOMNode>();
}

bool takes_elements(const Node& node) {
    const DOMNodeType kind = type(node);
    return kind == NODE_ELEMENT || kind == NODE_DOCUMENT || kind == NODE_DOCUMENT_FRAGMENT;
}

}  // namespace

Document create_document() {
    const auto& factory = automation::ThreadKept<DocumentFactory>::get().factory;
    ComPtr<IXMLDOMDocument> document;
    check(factory->CreateInstance(nullptr, __uuidof(IXMLDOMDocument),
                                  reinterpret_cast<void**>(document.put())));
    return document;
}

void append_declaration(const Document& document) {
    const Bstr target(declaration_target);
    const Variant type(static_cast<long>(NODE_PROCESSING_INSTRUCTION));
    Node instruction = get(document, &IXMLDOMDocument::createNode, static_cast<VARIANT>(type),
                           target.get(), static_cast<BSTR>(nullptr));
    if (!add_to_attribute_map(document, instruction))
        instruction = declaration_with_data(document, target);
    get(document, &IXMLDOMDocument::appendChild, instruction.get());
}

Document create_declared_document() {
    Document document = create_document();
    append_declaration(document);
    return document;
}

Document owner_document(const Node& node) {
    if (auto document = node.try_as<IXMLDOMDocument>()) return document;
    return get(node, &IXMLDOMNode::get_ownerDocument);
}

void append(const Node& parent, const Element& child) {
    if (!takes_elements(parent))
        automation::fail(E_FAIL, L"A node of this type cannot have elements below it");
    if (const auto document = parent.try_as<IXMLDOMDocument>()) {
        Element root;
        check(document->get_documentElement(root.put()), document);
        if (root)
            automation::fail(E_FAIL, L"Only one top level element is allowed in an XML document");
    }
    append_unchecked(parent, child);
}

void append_unchecked(const Node& parent, const Element& child) {
    get(parent, &IXMLDOMNode::appendChild, static_cast<IXMLDOMNode*>(child.get()));
}

Node child_named(const Node& parent, std::wstring_view name) {
    return matching(first_child(parent), name);
}

Node sibling_named(const Node& node, std::wstring_view name) {
    return matching(next_sibling(node), name);
}

Element create_element(const Document& document, std::wstring_view name) {
    const Bstr element_name(name);
    return get(document, &IXMLDOMDocument::createElement, element_name.get());
}

void set_attribute(const Element& element, const wchar_t* name, std::wstring_view value) {
    const Bstr attribute_name(name);
    Variant text{value};
    // A null string would be refused by some parsers where an empty one is meant.
    if (!text.bstrVal) text.bstrVal = SysAllocString(L"");
    call(element, &IXMLDOMElement::setAttribute, attribute_name.get(), static_cast<VARIANT>(text));
}

Variant attribute(const Node& node, const wchar_t* name) {
    const auto element = node.try_as<IXMLDOMElement>();
    Variant value;
    if (!element) return value;
    const Bstr attribute_name(name);
    check(element->getAttribute(attribute_name.get(), &value), element);
    if (value.vt == VT_NULL) value = Variant();
    return value;
}

}  // namespace dom
