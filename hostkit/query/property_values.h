// Reads a property of an object as a column definition describes it.
#pragma once

#include <optional>
#include <vector>

#include "hostkit/model/query_data.h"

namespace hostkit {

struct PropertyValue {
    automation::Variant value;
    automation::Variant display;
};

struct PropertyValues {
    std::vector<PropertyValue> entries;
    long presentation = 0;
    long lcid = 0;               // of the language that was used
    const Unit* unit = nullptr;  // that the values are in, or none
};

// Nothing for a property that is unknown or that the object does not have. An attribute with a
// value list delivers the whole list, the current value first; any other property one entry, or
// none when there is no value. Throws when the wanted unit does not suit the attribute.
std::optional<PropertyValues> read_property(Element& element, const ColumnSettings& settings);

}  // namespace hostkit
