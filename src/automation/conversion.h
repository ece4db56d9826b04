// The platform's variant conversions in the user's locale, and its tests and names of types.
//
// Every conversion throws: "invalid use of Null" for Null, "type mismatch", "overflow".
#pragma once

#include "automation/bstr_view.h"
#include "automation/variant.h"

namespace automation {

// Text form; a Boolean is "True" or "False".
Bstr to_text(const VARIANT& value);
// The same, lent by the value when it is a string; it must outlive the text then.
BstrOrView text_of(const VARIANT& value);
// Rounds fractions half to even.
long to_long(const VARIANT& value);
std::int16_t to_short(const VARIANT& value);
bool to_bool(const VARIANT& value);
// The value as another type of the platform's table.
Variant to_type(const VARIANT& value, VARTYPE type, USHORT flags = 0);

// The platform's numeric test: numbers, Booleans and Empty pass, strings that read as a number in
// the user's locale do; dates, objects and Null do not.
bool is_numeric(const VARIANT& value);
bool is_numeric(BstrView text);
bool is_numeric(std::wstring_view text);

// The platform's name of a value's type: "Long", "String", "Variant()", the class name of an
// object, "Nothing".
BstrOrView type_name(const VARIANT& value);

}  // namespace automation
