#include "options/spec_opt_to_coll_converter.h"

#include "host/error_boundary.h"

namespace tessera {

using automation::Bstr;
using automation::get;

namespace {

// The host's attribute that permits the receiving side to create missing sheets.
constexpr wchar_t attribute_allow_sheet_creation[] = L"Y00T00192.Y00A05508";

}  // namespace

OptionCollection SpecOptToCollConverter::Convert(IKelosObject* host_object) noexcept {
    OptionCollection options;
    guarded({L"SpecOptToCollConverter", L"Friend Function 'Convert'"}, [&] {
        if (!host_object) return;
        const Bstr name(attribute_allow_sheet_creation);
        const auto attribute = get(host_object, &IKelosObject::AttributeByFullName, name.get());
        if (!attribute) return;
        const auto option = automation::make<OptionMappingTable>();
        option->Name = Bstr(L"AllowSheetCreation");
        option->Value = get(attribute, &IKelosAttribute::get_ValueText);
        option->ValueType = Bstr(L"Boolean");
        options.push_back(option);
    });
    return options;
}

}  // namespace tessera
