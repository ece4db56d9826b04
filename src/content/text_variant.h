// How the records keep variants: strings in office form, everything else as it came.
#pragma once

#include "automation/variant.h"
#include "tessera.h"

namespace tessera {

// What to keep of a value that is given in the form `type` under the locale.
automation::Variant stored_form(const VARIANT& value, uceDataType type, long lcid);

// What to give for a kept value when it is wanted in the form `type`.
automation::Variant given_form(const automation::Variant& stored, uceDataType type, long lcid);

// Re-reads a kept string under another locale; every other value stays.
void change_locale(automation::Variant& stored, long from_lcid, long to_lcid);

}  // namespace tessera
