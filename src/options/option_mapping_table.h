// One option that the receiving side of a transfer needs.
#pragma once

#include "archive/archive_node.h"
#include "automation/object.h"
#include "tessera.h"

namespace tessera {

// Creatable by name, but every member is internal.
class OptionMappingTable
    : public automation::Object<OptionMappingTable, ITesseraOptionMappingTable> {
  public:
    static constexpr CLSID class_id = __uuidof(::OptionMappingTable);

    // Becomes the name of the option's element.
    automation::Bstr Name;
    automation::Bstr Value;
    // Type name of the value, for example "Boolean".
    automation::Bstr ValueType;

    // Writes the option's title below the owner (a new document when nothing) and returns it.
    ArchiveNode get_XMLNode(ArchiveNode& owner) noexcept;
};

}  // namespace tessera
