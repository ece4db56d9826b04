#include "archive/archive_node.h"

#include <algorithm>

namespace tessera {

using automation::BstrView;
using automation::get;

DOMNodeType ArchiveNode::type() {
    if (type_ == NODE_INVALID) type_ = dom::type(node_);
    return type_;
}

const dom::Document& ArchiveNode::document() {
    if (document_) return document_;
    document_ = type() == NODE_DOCUMENT ? node_.as<IXMLDOMDocument>()
                                        : get(node_, &IXMLDOMNode::get_ownerDocument);
    return document_;
}

const dom::Element& ArchiveNode::element() {
    if (!element_) element_ = node_.as<IXMLDOMElement>();
    return element_;
}

bool ArchiveNode::knows_name(std::wstring_view name) const noexcept {
    const auto end = names_.begin() + name_count_;
    return std::any_of(names_.begin(), end, [&](BstrView known) { return known.view() == name; });
}

void ArchiveNode::remember_name(BstrView name) noexcept {
    if (!children_known_ || knows_name(name.view())) return;
    if (name_count_ < max_known_names)
        names_[name_count_++] = name;
    else
        children_known_ = false;
}

dom::Element ArchiveNode::child(std::wstring_view name) const {
    if (children_known_ && !knows_name(name)) return {};
    return dom::child_named(node_, name);
}

void ArchiveNode::check_takes_element() {
    if (type() == NODE_ELEMENT || type() == NODE_DOCUMENT_FRAGMENT) return;
    if (type() != NODE_DOCUMENT)
        automation::fail(E_FAIL, L"A node of this type cannot have elements below it");
    dom::Element root;
    automation::check(document()->get_documentElement(root.put()), document());
    if (root) automation::fail(E_FAIL, L"Only one top level element is allowed in an XML document");
}

dom::Element ArchiveNode::append_element(BstrView name) {
    dom::Element element = dom::create_element(document(), name);
    check_takes_element();
    dom::append(node_, element);
    remember_name(name);
    return element;
}

ArchiveNode ArchiveNode::append_new(BstrView name) {
    ArchiveNode result(append_element(name));
    result.document_ = document_;
    result.children_known_ = true;
    return result;
}

}  // namespace tessera
