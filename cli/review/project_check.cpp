#include "cli/review/project_check.h"

#include <algorithm>

namespace cli {

using automation::Bstr;
using automation::ComPtr;
using automation::get;

namespace {

// The attribute whose value the record is: the object itself, or the one that the last part of the
// parameter names.
ComPtr<IKelosAttribute> attribute_of(const ComPtr<IKelosObject>& object,
                                     const PropertyRecord& property) {
    if (auto attribute = object.try_as<IKelosAttribute>()) return attribute;
    const std::u16string_view parameter = property.parameter.text;
    const std::u16string_view name = parameter.substr(parameter.rfind(u';') + 1);
    if (name.empty()) return {};
    return get(object, &IKelosObject::AttributeByFullName, Bstr(name).get());
}

std::u16string unit_text(const ComPtr<IKelosUnit>& unit) {
    return std::u16string(get(unit, &IKelosUnit::get_UnitText).u16());
}

// All units that values of the attribute can be told in; empty for an attribute without unit.
std::vector<std::u16string> units_of(const ComPtr<IKelosAttribute>& attribute) {
    const auto unit = get(attribute, &IKelosAttribute::get_Unit);
    if (!unit) return {};
    std::vector<std::u16string> texts{unit_text(unit)};
    const auto group = get(unit, &IKelosUnit::get_Group);
    const long count = group ? get(group, &IKelosUnitGroup::get_Count) : 0;
    for (long i = 1; i <= count; ++i)
        texts.push_back(unit_text(get(group, &IKelosUnitGroup::get_Item, i)));
    return texts;
}

}  // namespace

ProjectCheck::ProjectCheck(const std::vector<ContentRecord>& contents,
                           const ComPtr<IKelosWorkset>& workset)
    : contents_(contents),
      workset_(workset),
      project_(get(workset, &IKelosWorkset::get_CurrentProject)) {}

void ProjectCheck::check(std::size_t record, std::vector<Finding>& findings) {
    const ObjectRecord& wanted = contents_[record].object;
    if (wanted.uid.empty() && wanted.path.empty()) return;
    const ObjectPointer object = object_of(wanted);
    if (!object) {
        findings.push_back({Rule::no_object, record, wanted.uid});
        return;
    }
    check_path(object, record, findings);
    check_unit(object, record, findings);
}

ProjectCheck::ObjectPointer ProjectCheck::object_of(const ObjectRecord& object) {
    const auto [place, is_new] = loaded_.emplace(std::pair(object.uid, object.path), nullptr);
    if (is_new) place->second = load(object);
    return place->second;
}

// As the component resolves what it reads: by identifier, else by path.
ProjectCheck::ObjectPointer ProjectCheck::load(const ObjectRecord& object) const {
    if (!object.uid.empty())
        if (auto found = get(workset_, &IKelosWorkset::LoadObject, object.system_type,
                             Bstr(object.uid).get()))
            return found;
    if (!project_) return {};
    return get(project_, &IKelosProject::FindByPathFullName, Bstr(object.path).get());
}

void ProjectCheck::check_path(const ObjectPointer& object, std::size_t record,
                              std::vector<Finding>& findings) const {
    const auto project = get(object, &IKelosObject::get_Project);
    const Bstr path = get(object, &IKelosObject::get_PathFullName, project.get());
    if (path.u16() != contents_[record].object.path)
        findings.push_back({Rule::object_moved, record, std::u16string(path.u16())});
}

void ProjectCheck::check_unit(const ObjectPointer& object, std::size_t record,
                              std::vector<Finding>& findings) const {
    const PropertyRecord& property = contents_[record].property;
    if (property.unit.empty()) return;
    const auto attribute = attribute_of(object, property);
    if (!attribute) return;
    const std::vector<std::u16string> units = units_of(attribute);
    if (std::ranges::find(units, property.unit) == units.end())
        findings.push_back({Rule::wrong_unit, record, property.unit});
}

}  // namespace cli
