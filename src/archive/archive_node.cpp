#include "archive/archive_node.h"

#include <algorithm>

namespace tessera {

const dom::Document& ArchiveNode::document() {
    if (!document_ && node_) document_ = dom::owner_document(node_);
    return document_;
}

bool ArchiveNode::is_document() {
    return !created_here_ && node_ && node_.try_as<IXMLDOMDocument>();
}

dom::Node ArchiveNode::child(std::wstring_view name) const {
    if (created_here_ && std::ranges::find(children_, name) == children_.end()) return {};
    return dom::child_named(node_, name);
}

ArchiveNode ArchiveNode::append_new(std::wstring_view name) {
    const dom::Element element = dom::create_element(document(), name);
    if (created_here_) {
        dom::append_unchecked(node_, element);
        children_.push_back(name);
    } else {
        dom::append(node_, element);
    }
    ArchiveNode result(element.as<IXMLDOMNode>());
    result.document_ = document_;
    result.created_here_ = true;
    return result;
}

}  // namespace tessera
