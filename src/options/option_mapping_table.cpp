#include "options/option_mapping_table.h"

#include <string>

#include "archive/xml_publics.h"
#include "host/error_boundary.h"
#include "host/service.h"

namespace tessera {

using namespace automation::literals;

namespace {

constexpr wchar_t source[] = L"OptionMappingTable";

}  // namespace

ArchiveNode OptionMappingTable::write_below(ArchiveNode& owner) noexcept {
    return guarded_result<ArchiveNode>(
        {source, L"Friend Function 'XMLNode'"}, [&](ArchiveNode& title) {
            // Not the caller's: other options may be written below the same nothing.
            ArchiveNode own;
            if (!owner) own = dom::create_document();
            title = XML_WriteTitle(owner ? owner : own, name, L"1"_bstr);
            XML_WriteAttribute(title, L"Data"_bstr, automation::lend(value));
            XML_WriteAttribute(title, L"Type"_bstr, automation::lend(value_type));
            trace_node(source, L"->XMLNode: returns ", title.node());
        });
}

void trace_node(const wchar_t* source, const wchar_t* action, const dom::Node& node) {
    trace(automation::Bstr::joined({source, action, dom::xml(node).view()}));
}

}  // namespace tessera
