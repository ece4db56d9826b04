// What archive elements are written below: a node, or an element of a draft.
#pragma once

#include <array>
#include <string_view>

#include "archive/draft.h"
#include "automation/dom.h"

namespace tessera {

// An XML node together with what is known of it while it is being written, so that nothing is asked
// twice: what it is, its document, and, when the component has just created it, the names of its
// children. Such a node is not searched for what cannot be in it: writing an item costs the same
// whatever was written before.
//
// An element of a draft has no node yet; what is written below it goes into the draft.
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

    // An element of the draft, which must outlive this object.
    ArchiveNode(Draft& draft, Draft::Index element) noexcept : draft_(&draft), place_(element) {}

    explicit operator bool() const noexcept { return node_ || draft_; }
    // Nothing for an element of a draft.
    const dom::Node& node() const noexcept { return node_; }
    bool is_document() { return node_ && type() == NODE_DOCUMENT; }
    // The node as the element that it is. Throws when it is none; nothing for nothing, and for an
    // element of a draft.
    const dom::Element& element();

    // The first child element of this name, or nothing. Costs nothing when it cannot be there.
    ArchiveNode child(automation::BstrView name) const;

    // Creates an element as the last child. The name must outlive this object. Throws when the node
    // takes no elements, or is a document that has its root element already.
    ArchiveNode append(automation::BstrView name);
    // Throws like `append`, before anything is made.
    void check_takes_element();
    // Throws when it is no element.
    void set_attribute(automation::BstrView name, automation::BstrView text);

  private:
    // Different names of children; with more of them, the node is searched like any other.
    static constexpr std::size_t max_known_names = 8;

    DOMNodeType type();
    // The node itself when it is a document, else its owner document.
    const dom::Document& document();
    ArchiveNode drafted(Draft::Index element) const noexcept;
    bool knows_name(std::wstring_view name) const noexcept;
    void remember_name(automation::BstrView name) noexcept;

    dom::Node node_;
    dom::Document document_;
    dom::Element element_;
    DOMNodeType type_ = NODE_INVALID;  // until it is asked for
    bool children_known_ = false;
    std::size_t name_count_ = 0;
    std::array<automation::BstrView, max_known_names> names_;

    Draft* draft_ = nullptr;
    Draft::Index place_ = Draft::none;  // in the draft
};

}  // namespace tessera
