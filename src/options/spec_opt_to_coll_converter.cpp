#include "options/spec_opt_to_coll_converter.h"

#include "host/error_boundary.h"

namespace tessera {

using automation::Bstr;
using automation::get;
using namespace automation::literals;

namespace {

// The host's attribute that permits the receiving side to create missing sheets.
constexpr automation::BstrView attribute_allow_sheet_creation = L"Y00T00192.Y00A05508"_bstr;

}  // namespace

OptionCollection SpecOptToCollConverter::Convert(IKelosObject* host_object) noexcept {
    OptionCollection options;
    guarded({L"SpecOptToCollConverter", L"Friend Function 'Convert'"}, [&] {
        if (!host_object) return;
        const auto attribute = get(host_object, &IKelosObject::AttributeByFullName,
                                   attribute_allow_sheet_creation.get());
        if (!attribute) return;
        const auto option = automation::make<OptionMappingTable>();
        option->name = Bstr(L"AllowSheetCreation");
        option->value = get(attribute, &IKelosAttribute::get_ValueText);
        option->value_type = Bstr(L"Boolean");
        options.push_back(option);
    });
    return options;
}

}  // namespace tessera
