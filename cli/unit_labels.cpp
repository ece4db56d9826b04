#include "cli/unit_labels.h"

#include "automation/bstr.h"
#include "automation/call.h"
#include "automation/error.h"

namespace cli {

using automation::Bstr;
using automation::ComPtr;
using automation::get;

std::u16string UnitLabels::label(const ContentRecord& record) {
    if (record.property.unit.empty()) return {};
    const auto [known, is_new] = known_.try_emplace(record.property.unit);
    if (is_new) known->second = ask(record);
    return known->second;
}

// An object that has gone, or has no units, is no reason not to go on.
std::u16string UnitLabels::ask(const ContentRecord& record) const try {
    const ComPtr<IKelosObject> object =
        get(workset_, &IKelosWorkset::LoadObject, record.object.system_type,
            Bstr(record.object.uid).get());
    const auto attribute = object ? object.try_as<IKelosAttribute>() : nullptr;
    const auto unit = attribute ? get(attribute, &IKelosAttribute::get_Unit) : nullptr;
    const auto group = unit ? get(unit, &IKelosUnit::get_Group) : nullptr;
    const long count = group ? get(group, &IKelosUnitGroup::get_Count) : 0;
    for (long i = 1; i <= count; ++i) {
        const auto candidate = get(group, &IKelosUnitGroup::get_Item, i);
        if (get(candidate, &IKelosUnit::get_UnitText).u16() == record.property.unit)
            return std::u16string(get(candidate, &IKelosUnit::get_Label).u16());
    }
    return unit_name(record);
} catch (const automation::Error&) {
    return unit_name(record);
}

std::u16string unit_name(const ContentRecord& record) {
    const std::u16string& unit = record.property.unit;
    return unit.substr(unit.rfind(u'.') + 1);
}

}  // namespace cli
