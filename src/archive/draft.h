// Elements that are to be written, put together before the parser makes nodes of them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "automation/bstr_view.h"

namespace tessera {

// A tree of elements with attributes. Texts are copied, because a host may change their owner while
// the draft grows; names are lent and must outlive the draft.
class Draft {
  public:
    using Index = std::uint32_t;
    static constexpr Index none = static_cast<Index>(-1);
    static constexpr Index root = 0;

    struct Element {
        automation::BstrView name;
        Index parent = none;
        Index first_child = none;
        Index last_child = none;
        Index next_sibling = none;
        Index first_attribute = none;
        Index last_attribute = none;
        bool marked = false;
    };
    struct Attribute {
        automation::BstrView name;
        Index element = none;
        Index next = none;  // of the same element
        std::size_t text = 0;
    };

    // Adds an element behind its siblings; the first one is the root and has no parent.
    Index append(Index parent, automation::BstrView name);
    // Gives the element an attribute, or the attribute another text.
    void set(Index element, automation::BstrView name, std::wstring_view text);
    // Forgets everything but the memory.
    void clear() noexcept;

    // Marks the element and those that it is in.
    void mark(Index element) noexcept;

    const std::vector<Element>& elements() const noexcept { return elements_; }
    const std::vector<Attribute>& attributes() const noexcept { return attributes_; }
    // Lent until the draft changes.
    automation::BstrView text(const Attribute& attribute) const noexcept;
    // The first one of the name from there on among its siblings or attributes, or none.
    Index find_element(Index first, automation::BstrView name) const noexcept;
    Index find_attribute(Index element, automation::BstrView name) const noexcept;

    // The same elements and attributes in the same places, whatever their texts.
    bool has_shape_of(const Draft& other) const noexcept;

  private:
    std::size_t keep(std::wstring_view text);

    std::vector<Element> elements_;
    std::vector<Attribute> attributes_;
    // Automation strings one behind the other: the size in bytes, the characters, their terminator.
    // Each begins at an even place, so that its size is aligned.
    std::vector<wchar_t> texts_;
};

}  // namespace tessera
