// Writes a property of an object as a column definition describes it: the way back of what
// `read_property` delivers.
#pragma once

#include "hostkit/model/query_data.h"

namespace hostkit {

// The value is in the unit and language of the settings. A property that shows what a user reads
// takes that again: the text of a value list, a number or date in the language's form. The index of
// a value may be one behind the last. Throws with a sentence when the property cannot be written,
// by this user, or not with this value.
void write_property(Element& element, const ColumnSettings& settings, const VARIANT& value);

}  // namespace hostkit
