// What a property with its parameter means for an element: whose value it is, which one, and in
// which language.
#pragma once

#include <optional>

#include "host/known_properties.h"
#include "hostkit/model/query_data.h"

namespace hostkit {

struct PropertyTarget {
    const kelos::KnownProperty& property;
    Attribute* attribute = nullptr;  // for properties that only attributes have
    long index = 1;                  // of a value of the attribute
    std::size_t language = 0;
};

// Nothing for a property that is unknown or that the element does not have.
std::optional<PropertyTarget> property_target(Element& element, const ColumnSettings& settings);

// The attribute's own unit when none is asked for, or nothing when it has none. Throws when the
// wanted unit does not suit the attribute.
const Unit* wanted_unit(const Attribute& attribute, const std::wstring& text);

}  // namespace hostkit
