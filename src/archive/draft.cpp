#include "archive/draft.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace tessera {

using automation::BstrView;

namespace {

bool is_same(BstrView left, BstrView right) noexcept {
    return left.get() == right.get() || left.view() == right.view();
}

}  // namespace

Draft::Index Draft::append(Index parent, BstrView name) {
    const auto index = static_cast<Index>(elements_.size());
    elements_.push_back({name, parent});
    if (parent == none) return index;
    Element& owner = elements_[parent];
    (owner.first_child == none ? owner.first_child : elements_[owner.last_child].next_sibling) =
        index;
    owner.last_child = index;
    return index;
}

void Draft::set(Index element, BstrView name, std::wstring_view text) {
    const std::size_t place = keep(text);
    if (const Index present = find_attribute(element, name); present != none) {
        attributes_[present].text = place;
        return;
    }
    const auto index = static_cast<Index>(attributes_.size());
    attributes_.push_back({name, element, none, place});
    Element& owner = elements_[element];
    (owner.first_attribute == none ? owner.first_attribute
                                   : attributes_[owner.last_attribute].next) = index;
    owner.last_attribute = index;
}

void Draft::mark(Index element) noexcept {
    for (; element != none && !elements_[element].marked; element = elements_[element].parent)
        elements_[element].marked = true;
}

void Draft::clear() noexcept {
    elements_.clear();
    attributes_.clear();
    texts_.clear();
}

BstrView Draft::text(const Attribute& attribute) const noexcept {
    return BstrView::laid_out(&texts_[attribute.text]);
}

Draft::Index Draft::find_element(Index first, BstrView name) const noexcept {
    Index index = first;
    while (index != none && !is_same(elements_[index].name, name))
        index = elements_[index].next_sibling;
    return index;
}

Draft::Index Draft::find_attribute(Index element, BstrView name) const noexcept {
    Index index = elements_[element].first_attribute;
    while (index != none && !is_same(attributes_[index].name, name))
        index = attributes_[index].next;
    return index;
}

bool Draft::has_shape_of(const Draft& other) const noexcept {
    return std::ranges::equal(elements_, other.elements_,
                              [](const Element& left, const Element& right) {
                                  return left.parent == right.parent &&
                                         is_same(left.name, right.name);
                              }) &&
           std::ranges::equal(
               attributes_, other.attributes_, [](const Attribute& left, const Attribute& right) {
                   return left.element == right.element && is_same(left.name, right.name);
               });
}

std::size_t Draft::keep(std::wstring_view text) {
    using Size = std::uint32_t;
    constexpr std::size_t size_characters = sizeof(Size) / sizeof(wchar_t);
    if (text.size() > (std::numeric_limits<Size>::max)() / sizeof(wchar_t)) throw std::bad_alloc();
    const auto bytes = static_cast<Size>(text.size() * sizeof(wchar_t));
    const std::size_t place = texts_.size() + size_characters;
    texts_.resize((place + text.size() + size_characters) & ~std::size_t{1});
    std::memcpy(&texts_[place - size_characters], &bytes, sizeof bytes);
    std::ranges::copy(text, texts_.begin() + static_cast<std::ptrdiff_t>(place));
    return place;
}

}  // namespace tessera
