// The component's public classes.

#include "content/tessera_content.h"
#include "functions/gfunctions.h"
#include "mapping/sc_global.h"
#include "options/xml_options.h"
#include "progress/progress.h"
#include "query/hquery.h"
#include "query/q_content.h"
#include "script/vex_script.h"
#include "server/class_table.h"

namespace server {
namespace {

template <class Class>
ClassEntry entry(const wchar_t* program_name, const wchar_t* description) {
    return {program_name, description, Class::class_id, create<Class>};
}

}  // namespace

std::span<const ClassEntry> module_classes() noexcept {
    static const ClassEntry classes[] = {
        entry<tessera::Tessera>(L"Tessera.Tessera", L"Tessera content object"),
        entry<tessera::KelosObject>(L"Tessera.KelosObject", L"Tessera host object record"),
        entry<tessera::Property>(L"Tessera.Property", L"Tessera property record"),
        entry<tessera::Value>(L"Tessera.Value", L"Tessera value record"),
        entry<tessera::Document>(L"Tessera.Document", L"Tessera document position record"),
        entry<tessera::ValueItems>(L"Tessera.ValueItems", L"Tessera value item list"),
        entry<tessera::ValueItem>(L"Tessera.ValueItem", L"Tessera value item"),
        entry<tessera::SCGlobal>(L"Tessera.SCGlobal", L"Tessera global mapping object"),
        entry<tessera::VexScript>(L"Tessera.VexScript", L"Tessera mapping script runner"),
        entry<tessera::HQuery>(L"Tessera.HQuery", L"Tessera query cursor"),
        entry<tessera::QContent>(L"Tessera.QContent", L"Tessera query XML writer"),
        entry<tessera::GFunctions>(L"Tessera.GFunctions", L"Tessera general functions"),
        entry<tessera::OptionMappingTable>(L"Tessera.OptionMappingTable", L"Tessera option"),
        entry<tessera::SpecOptToCollConverter>(L"Tessera.SpecOptToCollConverter",
                                               L"Tessera option converter"),
        entry<tessera::XMLOptions>(L"Tessera.XMLOptions", L"Tessera options writer"),
        entry<tessera::Progress>(L"Tessera.Progress", L"Tessera progress display"),
    };
    return classes;
}

}  // namespace server
