// Trace lines about written XML.
#pragma once

#include <string>

#include "automation/dom.h"
#include "host/service.h"

namespace tessera {

// Traces who wrote what: source, action, the node's XML text.
inline void trace_node(const wchar_t* source, const wchar_t* action, const dom::Node& node) {
    const automation::Bstr xml = automation::get(node, &IXMLDOMNode::get_xml);
    trace(std::wstring(source) + action + xml.str());
}

}  // namespace tessera
