// Reading the platform XML parser's documents: the few operations that the program needs.
#pragma once

#include <string>

#include "automation/call.h"
#include "kelos.h"

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
#endif

namespace cli::dom {

using Node = automation::ComPtr<IXMLDOMNode>;
using Document = automation::ComPtr<IXMLDOMDocument>;

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
inline std::wstring name(const Node& node) {
    return automation::get(node, &IXMLDOMNode::get_nodeName).str();
}
// The text of an attribute, of a text node; empty for an element.
inline std::wstring value(const Node& node) {
    return std::wstring(automation::get(node, &IXMLDOMNode::get_nodeValue).text());
}

// Calls `use` with every child of the node that is an element.
template <class Use>
void for_each_element(const Node& parent, Use&& use) {
    for (Node child = first_child(parent); child; child = next_sibling(child))
        if (type(child) == NODE_ELEMENT) use(child);
}

}  // namespace cli::dom
