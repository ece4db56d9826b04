#include "options/option_mapping_table.h"

#include "archive/xml_publics.h"
#include "host/error_boundary.h"
#include "options/options_trace.h"

namespace tessera {

using automation::Variant;

namespace {

constexpr wchar_t source[] = L"OptionMappingTable";

}  // namespace

ArchiveNode OptionMappingTable::get_XMLNode(ArchiveNode& owner) noexcept {
    ArchiveNode title;
    guarded({source, L"Friend Function 'XMLNode'"}, [&] {
        if (!owner) owner = ArchiveNode(dom::create_document().as<IXMLDOMNode>());
        title = XML_WriteTitle(owner, Name.view(), L"1");
        XML_WriteAttribute(title, L"Data", Variant(Value));
        XML_WriteAttribute(title, L"Type", Variant(ValueType));
        trace_node(source, L"->XMLNode: returns ", title.node());
    });
    return title;
}

}  // namespace tessera
