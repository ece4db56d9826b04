#include "archive/archive_reader.h"

#include <algorithm>

namespace tessera {

using automation::get;

dom::Element ArchiveReader::child(std::wstring_view name) const {
    const auto known = std::ranges::find_if(
        children_, [&](const Child& child) { return child.name.view() == name; });
    if (known != children_.end()) return known->node.as<IXMLDOMElement>();
    while (const Child* const next = look_further())
        if (next->name.view() == name) return next->node.as<IXMLDOMElement>();
    return {};
}

std::wstring_view ArchiveReader::base_name() const {
    if (!base_name_.get()) base_name_ = get(node_, &IXMLDOMNode::get_baseName);
    return base_name_.view();
}

const ArchiveReader::Child* ArchiveReader::look_further() const {
    while (!all_seen_) {
        last_ = last_ ? dom::next_sibling(last_) : dom::first_child(node_);
        all_seen_ = !last_;
        if (last_ && dom::type(last_) == NODE_ELEMENT)
            return &children_.emplace_back(Child{dom::name(last_), last_});
    }
    return nullptr;
}

}  // namespace tessera
