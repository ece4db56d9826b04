// Reading the platform XML parser's documents: the few operations that the program needs.
#pragma once

#include <string>

#include "automation/call.h"
#include "automation/dom_interfaces.h"
#include "kelos.h"

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
