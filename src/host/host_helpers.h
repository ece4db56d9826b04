// What the general functions ask of the host's object model.
#pragma once

#include "host/mapping_table.h"
#include "host/office_text.h"
#include "kelos.h"

namespace tessera {

inline constexpr MemberName get_kelos_phys_unit{gfunctions_source,
                                                L"Public Function 'GetKelosPhysUnit'"};
inline constexpr MemberName is_mapping_table{gfunctions_source, set_mapping_table_label};

// The unit text for a unit's label on a host attribute: of the unit of the attribute's group that
// has exactly this label, else of the first that has it ignoring case, else empty. An empty label
// gives the attribute's own unit text. Empty for objects that are no attributes.
automation::Bstr GetKelosPhysUnit(IKelosObject* object, std::wstring_view label) noexcept;

// Whether one of the document's objects carries a mapping table.
bool ISMappingTable(IKelosDocument* document) noexcept;

}  // namespace tessera
