// The few operations on the platform XML parser's document object model that everything here is
// made of, and the parser's interfaces.
#pragma once

#include "automation/windows_headers.h"

#include <msxml.h>

#include <string>

#include "automation/bstr_view.h"
#include "automation/call.h"

#ifdef __CRT_UUID_DECL
// mingw's headers declare these interfaces without their identifiers.
__CRT_UUID_DECL(IXMLDOMNode, 0x2933bf80, 0x7b36, 0x11d2, 0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98, 0x3e,
                0x60)
__CRT_UUID_DECL(IXMLDOMDocument, 0x2933bf81, 0x7b36, 0x11d2, 0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98,
                0x3e, 0x60)
__CRT_UUID_DECL(IXMLDOMNamedNodeMap, 0x2933bf83, 0x7b36, 0x11d2, 0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98,
                0x3e, 0x60)
__CRT_UUID_DECL(IXMLDOMElement, 0x2933bf86, 0x7b36, 0x11d2, 0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98,
                0x3e, 0x60)
__CRT_UUID_DECL(IXMLDOMProcessingInstruction, 0x2933bf89, 0x7b36, 0x11d2, 0xb2, 0x0e, 0x00, 0xc0,
                0x4f, 0x98, 0x3e, 0x60)
#endif

namespace dom {

using automation::Bstr;
using automation::BstrView;
using automation::ComPtr;
using automation::Variant;

using Node = ComPtr<IXMLDOMNode>;
using Element = ComPtr<IXMLDOMElement>;
using Document = ComPtr<IXMLDOMDocument>;

// A new, empty document of the version-independent class.
Document create_document();
// Appends the declaration <?xml encoding="ISO-10646-UCS-2"?> to a document that has no nodes yet.
void append_declaration(const Document& document);

Element create_element(const Document& document, BstrView name);

// Appends the child as the last one. Not every parser refuses a parent that takes no elements, or
// a second root element: those are the caller's to rule out.
void append(const Node& parent, const Element& child);

inline Node root(const Document& document) {
    return automation::get(document, &IXMLDOMDocument::get_documentElement);
}
inline Node first_child(const Node& node) {
    return automation::get(node, &IXMLDOMNode::get_firstChild);
}
inline Node next_sibling(const Node& node) {
    return automation::get(node, &IXMLDOMNode::get_nextSibling);
}
inline DOMNodeType type(const Node& node) {
    return automation::get(node, &IXMLDOMNode::get_nodeType);
}
inline Bstr name(const Node& node) {
    return automation::get(node, &IXMLDOMNode::get_nodeName);
}
// The text of an attribute, of a text node; empty for an element.
inline Variant value(const Node& node) {
    return automation::get(node, &IXMLDOMNode::get_nodeValue);
}
// The node with everything in it, as the parser writes it.
inline Bstr xml(const Node& node) {
    return automation::get(node, &IXMLDOMNode::get_xml);
}

// Calls `use` with every child of the node that is an element.
template <class Use>
void for_each_element(const Node& parent, Use&& use) {
    for (Node child = first_child(parent); child; child = next_sibling(child))
        if (type(child) == NODE_ELEMENT) use(child);
}

// The first child element of this name, or nothing.
Element child_named(const Node& parent, std::wstring_view name);
// The next sibling element of this name, or nothing.
Element sibling_named(const Node& node, std::wstring_view name);

void set_attribute(const Element& element, BstrView name, BstrView value);

// The text of the attribute; Empty when the element is nothing or has no such attribute.
Variant attribute(const Element& element, BstrView name);
// The same for any node: Empty when it is no element.
Variant attribute(const Node& node, BstrView name);

}  // namespace dom
