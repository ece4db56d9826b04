#include "host/host_helpers.h"

#include "automation/text.h"
#include "text/trim.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;
using automation::get;

namespace {

// What a unit with exactly this label says counts, even if an earlier one matched ignoring case;
// what was found counts, even if a later unit fails.
void find_unit_text(const ComPtr<IKelosUnitGroup>& group, std::wstring_view label, Bstr& result) {
    bool taken = false;
    const long count = get(group, &IKelosUnitGroup::get_Count);
    for (long i = 1; i <= count; ++i) {
        const auto unit = get(group, &IKelosUnitGroup::get_Item, i);
        const Bstr unit_label = get(unit, &IKelosUnit::get_Label);
        const bool exact = unit_label.view() == label;
        if (!exact && (taken || !automation::equal_ignoring_case(unit_label.view(), label)))
            continue;
        result = get(unit, &IKelosUnit::get_UnitText);
        if (exact) return;
        taken = true;
    }
}

}  // namespace

Bstr GetKelosPhysUnit(IKelosObject* object, std::wstring_view label) noexcept {
    return guarded_result<Bstr>(get_kelos_phys_unit, [&](Bstr& result) {
        if (get(object, &IKelosObject::get_SystemType) != kstAttribute) return;
        const auto attribute = ComPtr<IKelosObject>(object).as<IKelosAttribute>();
        const auto unit = get(attribute, &IKelosAttribute::get_Unit);
        if (!unit) return;
        const std::wstring_view wanted = trim_blanks(label);
        if (wanted.empty())
            result = get(unit, &IKelosUnit::get_UnitText);
        else
            find_unit_text(get(unit, &IKelosUnit::get_Group), wanted, result);
    });
}

bool ISMappingTable(IKelosDocument* document) noexcept {
    return static_cast<bool>(find_mapping_table(document, gfunctions_source).table);
}

}  // namespace tessera
