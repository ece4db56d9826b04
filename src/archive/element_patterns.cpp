#include "archive/element_patterns.h"

#include <algorithm>

#include "automation/thread_kept.h"

namespace tessera {

using automation::get;
namespace {

// A run over a mapping table has a handful of shapes; the long ones are lists of values.
constexpr std::size_t max_patterns = 8;
constexpr std::size_t max_elements = 1000;

void set_attributes(const Draft& draft, Draft::Index index, ArchiveNode& element) {
    for (Draft::Index i = draft.elements()[index].first_attribute; i != Draft::none;) {
        const Draft::Attribute& attribute = draft.attributes()[i];
        element.set_attribute(attribute.name, draft.text(attribute));
        i = attribute.next;
    }
}

// Below an element that was just made: nothing needs to be looked for.
void make_children(const Draft& draft, Draft::Index index, ArchiveNode& node) {
    for (Draft::Index i = draft.elements()[index].first_child; i != Draft::none;) {
        const Draft::Element& child = draft.elements()[i];
        ArchiveNode made = node.append(child.name);
        set_attributes(draft, i, made);
        make_children(draft, i, made);
        i = child.next_sibling;
    }
}

dom::Element make(const Draft& draft, ArchiveNode& parent) {
    ArchiveNode made = parent.append(draft.elements()[Draft::root].name);
    set_attributes(draft, Draft::root, made);
    make_children(draft, Draft::root, made);
    return made.element();
}

// Puts into the clone of a pattern what the draft says otherwise than the pattern's.
class Differences {
  public:
    Differences(Draft& draft, const Draft& pattern) : draft_(draft), pattern_(pattern) {
        for (Draft::Index i = 0; i < draft.attributes().size(); ++i)
            if (is_different(i)) draft.mark(draft.attributes()[i].element);
    }

    void put_into(const dom::Node& node, Draft::Index index = Draft::root) const {
        const Draft::Element& element = draft_.elements()[index];
        if (!element.marked) return;
        put_attributes(node, element);
        dom::Node child;
        Draft::Index at = Draft::none;
        for (Draft::Index i = marked_from(element.first_child); i != Draft::none;
             i = marked_from(draft_.elements()[i].next_sibling)) {
            while (at != i) {
                child = at == Draft::none ? dom::first_child(node) : dom::next_sibling(child);
                at = at == Draft::none ? element.first_child : draft_.elements()[at].next_sibling;
            }
            put_into(child, i);
        }
    }

  private:
    bool is_different(Draft::Index attribute) const {
        return draft_.text(draft_.attributes()[attribute]).view() !=
               pattern_.text(pattern_.attributes()[attribute]).view();
    }
    // The first one from there on among its siblings, or none.
    Draft::Index marked_from(Draft::Index index) const {
        while (index != Draft::none && !draft_.elements()[index].marked)
            index = draft_.elements()[index].next_sibling;
        return index;
    }
    void put_attributes(const dom::Node& node, const Draft::Element& element) const {
        for (Draft::Index i = element.first_attribute; i != Draft::none;) {
            const Draft::Attribute& attribute = draft_.attributes()[i];
            if (is_different(i))
                dom::set_attribute(node.as<IXMLDOMElement>(), attribute.name,
                                   draft_.text(attribute));
            i = attribute.next;
        }
    }

    const Draft& draft_;
    const Draft& pattern_;
};

}  // namespace

ElementPatterns& ElementPatterns::of_thread() {
    return automation::ThreadKept<ElementPatterns>::get();
}

dom::Element ElementPatterns::write(Draft& draft, ArchiveNode& parent) {
    if (dom::Element element = cloned_below(draft, parent)) return element;
    return make(draft, parent);
}

// Nothing when there is no pattern, or when it cannot be used: what the plain way says counts.
dom::Element ElementPatterns::cloned_below(Draft& draft, const ArchiveNode& parent) noexcept {
    try {
        Pattern* const pattern = find(draft);
        if (!pattern) return {};
        dom::Element element = cloned(draft, *pattern);
        // Not every parser takes nodes of a document of another class.
        parser_refuses_clones_ = FAILED(parent.node()->appendChild(element.get(), nullptr));
        return parser_refuses_clones_ ? dom::Element() : element;
    } catch (...) {
        return {};
    }
}

// The first draft of a shape only leaves its shape behind: many never come again.
ElementPatterns::Pattern* ElementPatterns::find(const Draft& draft) {
    if (parser_refuses_clones_ || draft.elements().size() > max_elements) return nullptr;
    const auto found = std::ranges::find_if(
        patterns_, [&](const Pattern& pattern) { return draft.has_shape_of(pattern.draft); });
    if (found != patterns_.end()) {
        std::rotate(patterns_.begin(), found, found + 1);
        return &patterns_.front();
    }
    if (patterns_.size() == max_patterns) patterns_.pop_back();
    patterns_.insert(patterns_.begin(), Pattern{draft, {}});
    return nullptr;
}

dom::Element ElementPatterns::cloned(Draft& draft, Pattern& pattern) {
    if (!pattern.element) {
        // In a document of its own, which goes with it: parsers keep the nodes of a document until
        // its end.
        ArchiveNode owner(dom::create_document());
        pattern.draft = draft;
        pattern.element = make(draft, owner);
    }
    const auto clone = get(pattern.element, &IXMLDOMNode::cloneNode, VARIANT_TRUE);
    Differences(draft, pattern.draft).put_into(clone);
    return clone.as<IXMLDOMElement>();
}

Draft ElementPatterns::take_draft() noexcept {
    spare_.clear();
    return std::exchange(spare_, {});
}

void ElementPatterns::give_back(Draft draft) noexcept {
    spare_ = std::move(draft);
}

}  // namespace tessera
