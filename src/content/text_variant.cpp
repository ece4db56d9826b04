#include "content/text_variant.h"

#include "host/office_text.h"

namespace tessera {

using automation::Variant;

Variant stored_form(const VARIANT& value, uceDataType type, long lcid) {
    Variant stored = Variant::value_of(value);
    if (stored.is_string() && type == uccVBString)
        stored = Variant(GetOfficeString(stored.text(), lcid));
    return stored;
}

Variant given_form(const Variant& stored, uceDataType type, long lcid) {
    if (stored.is_string() && type == uccVBString) return Variant(GetVBString(stored.text(), lcid));
    return stored;
}

void change_locale(Variant& stored, long from_lcid, long to_lcid) {
    if (stored.is_string())
        stored = Variant(GetOfficeFromOffice(stored.text(), from_lcid, to_lcid));
}

}  // namespace tessera
