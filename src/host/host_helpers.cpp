#include "host/host_helpers.h"

#include "automation/text.h"
#include "host/error_boundary.h"
#include "host/mapping_table.h"
#include "text/trim.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;
using automation::get;

namespace {

constexpr wchar_t source[] = L"Tessera.GFunctions";

Bstr unit_text_for(const ComPtr<IKelosUnitGroup>& group, std::wstring_view label) {
    Bstr result;
    bool taken = false;
    const long count = get(group, &IKelosUnitGroup::get_Count);
    for (long i = 1; i <= count; ++i) {
        const auto unit = get(group, &IKelosUnitGroup::get_Item, i);
        const Bstr unit_label = get(unit, &IKelosUnit::get_Label);
        if (unit_label.view() == label) return get(unit, &IKelosUnit::get_UnitText);
        if (taken || !automation::equal_ignoring_case(unit_label.view(), label)) continue;
        result = get(unit, &IKelosUnit::get_UnitText);
        taken = !result.empty();
    }
    return result;
}

}  // namespace

Bstr GetKelosPhysUnit(IKelosObject* object, std::wstring_view label) noexcept {
    Bstr result;
    guarded({source, L"Public Function 'GetKelosPhysUnit'"}, [&] {
        if (get(object, &IKelosObject::get_SystemType) != kstAttribute) return;
        const auto attribute = ComPtr<IKelosObject>(object).as<IKelosAttribute>();
        const auto unit = get(attribute, &IKelosAttribute::get_Unit);
        if (!unit) return;
        const std::wstring_view wanted = trim_blanks(label);
        if (wanted.empty())
            result = get(unit, &IKelosUnit::get_UnitText);
        else
            result = unit_text_for(get(unit, &IKelosUnit::get_Group), wanted);
    });
    return result;
}

bool ISMappingTable(IKelosDocument* document) noexcept {
    return static_cast<bool>(find_mapping_table(document, source).table);
}

}  // namespace tessera
