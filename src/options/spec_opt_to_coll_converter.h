// Reads the options of a mapping table's host object.
#pragma once

#include <vector>

#include "kelos.h"
#include "options/option_mapping_table.h"

namespace tessera {

using OptionCollection = std::vector<automation::ComPtr<OptionMappingTable>>;

// Creatable by name, but every member is internal.
class SpecOptToCollConverter
    : public automation::Object<SpecOptToCollConverter, ITesseraSpecOptToCollConverter> {
  public:
    static constexpr CLSID class_id = __uuidof(::SpecOptToCollConverter);

    // The options of the object; empty when it is nothing or has none.
    OptionCollection Convert(IKelosObject* host_object) noexcept;
};

}  // namespace tessera
