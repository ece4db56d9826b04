// A node that archive elements are read below.
#pragma once

#include <string_view>
#include <vector>

#include "automation/dom.h"

namespace tessera {

// Looks at every child once, whatever is asked for and how often: as long as this object lives,
// the children must not change.
class ArchiveReader {
  public:
    // Nothing.
    ArchiveReader() = default;
    ArchiveReader(dom::Node node) : node_(std::move(node)) {}

    explicit operator bool() const noexcept { return static_cast<bool>(node_); }
    const dom::Node& node() const noexcept { return node_; }

    // The first child element of this name, or nothing. Throws when the node is nothing.
    dom::Element child(std::wstring_view name) const;
    // The node's own name, without its prefix.
    std::wstring_view base_name() const;

  private:
    struct Child {
        automation::Bstr name;
        dom::Node node;
    };

    // Finds the next child element that was not looked at. Nothing behind the last one.
    const Child* look_further() const;

    dom::Node node_;
    mutable std::vector<Child> children_;
    mutable dom::Node last_;
    mutable bool all_seen_ = false;
    mutable automation::Bstr base_name_;
};

}  // namespace tessera
