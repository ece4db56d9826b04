// Finding the mapping table among the objects that a host document shows.
#pragma once

#include "automation/call.h"
#include "kelos.h"

namespace tessera {

struct FoundMappingTable {
    automation::ComPtr<IKelosObject> object;  // the document's object that carries the table
    automation::ComPtr<IKelosMappingTable> table;
};

inline constexpr wchar_t set_mapping_table_label[] = L"Private sub 'SetMappingTable'";

// The first object whose extension has the role of a mapping table; nothing when there is none.
// Objects that fail are passed over; other failures are reported under the caller's source.
FoundMappingTable find_mapping_table(IKelosDocument* document, const wchar_t* source) noexcept;

}  // namespace tessera
