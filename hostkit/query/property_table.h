// The properties that a column can show: numbers, names for reading and writing, what they need.
#pragma once

#include <string_view>

namespace hostkit {

// What the parameter of a property holds, in this order: the number of a language, the index of a
// value, and for objects that are no attributes the attribute's full name; parted by ";".
struct PropertyInfo {
    long constant;
    const wchar_t* name;
    const wchar_t* set_name;  // empty: cannot be written
    bool of_value;            // belongs to attributes
    bool takes_language;
    bool takes_index;
};

// Nothing for an unknown constant or name.
const PropertyInfo* find_property(long constant) noexcept;
const PropertyInfo* find_property(std::wstring_view name) noexcept;

}  // namespace hostkit
