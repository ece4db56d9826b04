// A node that archive elements are written below.
#pragma once

#include <array>
#include <string_view>

#include "automation/dom.h"

namespace tessera {

// An XML node together with what is known of it while it is being written, so that nothing is asked
// twice: what it is, its document, and, when the component has just created it, the names of its
// children. Such a node is not searched for what cannot be in it: writing an item costs the same
// whatever was written before.
class ArchiveNode {
  public:
    // Nothing.
    ArchiveNode() = default;
    // A node of unknown content; may be nothing.
    ArchiveNode(IXMLDOMNode* node) : node_(node) {}
    ArchiveNode(dom::Node node) : node_(std::move(node)) {}
    ArchiveNode(dom::Document document) : node_(document), document_(std::move(document)) {
        if (node_) type_ = NODE_DOCUMENT;
    }
    ArchiveNode(dom::Element element) : node_(element), element_(std::move(element)) {
        if (node_) type_ = NODE_ELEMENT;
    }

    explicit operator bool() const noexcept { return static_cast<bool>(node_); }
    const dom::Node& node() const noexcept { return node_; }
    bool is_document() { return node_ && type() == NODE_DOCUMENT; }
    // The node as the element that it is. Throws when it is none; nothing for nothing.
    const dom::Element& element();

    // The first child element of this name, or nothing. Costs nothing when it cannot be there.
    dom::Element child(std::wstring_view name) const;

    // Creates an element as the last child. The name must outlive this object. Throws when the node
    // takes no elements, or is a document that has its root element already.
    dom::Element append_element(automation::BstrView name);
    // The same for an element that is written below in turn.
    ArchiveNode append_new(automation::BstrView name);

  private:
    // Different names of children; with more of them, the node is searched like any other.
    static constexpr std::size_t max_known_names = 8;

    DOMNodeType type();
    // The node itself when it is a document, else its owner document.
    const dom::Document& document();
    void check_takes_element();
    bool knows_name(std::wstring_view name) const noexcept;
    void remember_name(automation::BstrView name) noexcept;

    dom::Node node_;
    dom::Document document_;
    dom::Element element_;
    DOMNodeType type_ = NODE_INVALID;  // until it is asked for
    bool children_known_ = false;
    std::size_t name_count_ = 0;
    std::array<automation::BstrView, max_known_names> names_;
};

}  // namespace tessera
