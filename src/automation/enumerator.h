// The walk of "For Each" over a collection.
#pragma once

#include <vector>

#include "automation/com_ptr.h"
#include "automation/variant.h"

namespace automation {

inline Variant walked(Bstr text) {
    return Variant(std::move(text));
}
template <class Interface>
Variant walked(const ComPtr<Interface>& object) {
    return Variant(static_cast<IDispatch*>(object.get()));
}

// An IEnumVARIANT over the items as they are given: what becomes of their collection meanwhile does
// not touch the walk, nor those that are cloned from it.
ComPtr<IUnknown> make_enumerator(std::vector<Variant> items);

// The walk over what `present` makes of every entry of a list.
template <class Entries, class Present>
ComPtr<IUnknown> make_enumerator(Entries&& entries, Present&& present) {
    std::vector<Variant> items;
    items.reserve(entries.size());
    for (auto& entry : entries)
        items.push_back(walked(present(entry)));
    return make_enumerator(std::move(items));
}

}  // namespace automation
