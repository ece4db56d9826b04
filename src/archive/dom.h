// The few operations on the platform XML parser's document object model that the archive is made
// of.
#pragma once

#include "automation/call.h"
#include "automation/dom_interfaces.h"
#include "kelos.h"

namespace tessera::dom {

using automation::Bstr;
using automation::ComPtr;
using automation::Variant;

using Node = ComPtr<IXMLDOMNode>;
using Element = ComPtr<IXMLDOMElement>;
using Document = ComPtr<IXMLDOMDocument>;

// A new, empty document of the version-independent class.
Document create_document();

// A new document that begins with the declaration <?xml encoding="ISO-10646-UCS-2"?>.
Document create_declared_document();
// Appends that declaration to a document that has no nodes yet.
void append_declaration(const Document& document);

// The document that creates nodes for a node: the node itself when it is one.
Document owner_document(const Node& node);

// Appends the child as the last one. Throws when the parent is no node that takes elements, or a
// document that has its root element already: not every parser refuses these.
void append(const Node& parent, const Element& child);
// The same for a parent that is known to be an element.
void append_unchecked(const Node& parent, const Element& child);

// The first child element of this name, or nothing.
Node child_named(const Node& parent, std::wstring_view name);
// The next sibling element of this name, or nothing.
Node sibling_named(const Node& node, std::wstring_view name);

Element create_element(const Document& document, std::wstring_view name);
void set_attribute(const Element& element, const wchar_t* name, std::wstring_view value);

// The text of the attribute; Empty when the node is nothing, no element, or has no such attribute.
Variant attribute(const Node& node, const wchar_t* name);

}  // namespace tessera::dom
