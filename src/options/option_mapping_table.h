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

    automation::Bstr name;  // becomes the name of the option's element
    automation::Bstr value;
    automation::Bstr value_type;  // type name of the value, for example "Boolean"

    // Writes the option's title below the owner (a new document when nothing) and returns it.
    ArchiveNode write_below(ArchiveNode& owner) noexcept;
};

// Traces who wrote what: source, action, the node's XML text.
void trace_node(const wchar_t* source, const wchar_t* action, const dom::Node& node);

}  // namespace tessera
