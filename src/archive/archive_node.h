// A node that archive elements are written below.
#pragma once

#include <string_view>
#include <vector>

#include "automation/dom.h"

namespace tessera {

// An XML node together with what is known of it while it is being written: its document, and, when
// the component has just created it, the names of all its children. Such a node is not searched for
// what cannot be in it: writing an item costs the same whatever was written before.
class ArchiveNode {
  public:
    // Nothing.
    ArchiveNode() = default;
    // A node of unknown content; may be nothing.
    ArchiveNode(IXMLDOMNode* node) : node_(node) {}
    ArchiveNode(dom::Node node) : node_(std::move(node)) {}

    explicit operator bool() const noexcept { return static_cast<bool>(node_); }
    const dom::Node& node() const noexcept { return node_; }

    // The node itself when it is a document, else its owner document. Looked up once.
    const dom::Document& document();
    bool is_document();

    // The first child element of this name, or nothing. Costs nothing when it cannot be there.
    dom::Node child(std::wstring_view name) const;

    // Creates an element as the last child. The name must outlive this object.
    ArchiveNode append_new(std::wstring_view name);

  private:
    dom::Node node_;
    dom::Document document_;
    bool created_here_ = false;
    std::vector<std::wstring_view> children_;  // only kept for nodes created here
};

}  // namespace tessera
