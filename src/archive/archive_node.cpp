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

ArchiveNode ArchiveNode::child(BstrView name) const {
    if (draft_) return drafted(draft_->find_element(draft_->elements()[place_].first_child, name));
    if (children_known_ && !knows_name(name.view())) return {};
    return dom::child_named(node_, name.view());
}

ArchiveNode ArchiveNode::drafted(Draft::Index element) const noexcept {
    return element == Draft::none ? ArchiveNode() : ArchiveNode(*draft_, element);
}

void ArchiveNode::set_attribute(BstrView name, BstrView text) {
    if (draft_)
        draft_->set(place_, name, text.view());
    else
        dom::set_attribute(element(), name, text);
}

void ArchiveNode::check_takes_element() {
    if (type() == NODE_ELEMENT || type() == NODE_DOCUMENT_FRAGMENT) return;
    if (type() != NODE_DOCUMENT)
        automation::fail(E_FAIL, L"A node of this type cannot have elements below it");
    dom::Element root;
    automation::check(document()->get_documentElement(root.put()), document());
    if (root) automation::fail(E_FAIL, L"Only one top level element is allowed in an XML document");
}

ArchiveNode ArchiveNode::append(BstrView name) {
    if (draft_) return drafted(draft_->append(place_, name));
    dom::Element element = dom::create_element(document(), name);
    check_takes_element();
    dom::append(node_, element);
    remember_name(name);
    ArchiveNode result(std::move(element));
    result.document_ = document_;
    result.children_known_ = true;
    return result;
}

}  // namespace tessera
