#include "cli/import/host_values.h"

#include "automation/conversion.h"
#include "automation/dispatch.h"
#include "text/string_forms.h"

namespace cli {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;

namespace {

// As content documents archive values.
ArchivedValue archived(const Variant& value) {
    ArchivedValue result{std::u16string(automation::as_u16(automation::type_name(value).view())),
                         {}};
    if (value.vt == VT_EMPTY || value.vt == VT_NULL) return result;
    if (value.vt == VT_BOOL)
        result.text = value.boolVal == VARIANT_FALSE ? u"0" : u"-1";
    else
        result.text = automation::to_text(value).u16();
    if (result.is_text()) result.text = tessera::office_string(result.text);
    return result;
}

// The host's texts have line ends of their own.
Variant host_form(const Variant& value) {
    if (!value.is_string()) return value;
    return Variant(Bstr(tessera::vb_string(automation::as_u16(value.text()))));
}

}  // namespace

HostValues::HostValues(const Project& project)
    : kit_(project.kit()),
      workset_(project.workset()),
      column_(automation::create_object<IKelosQColumnDef>(L"KelosQuery.QColumnDef")) {
    call(column_, &IKelosQColumnDef::InitNew, 0L);
    call(column_, &IKelosQColumnDef::InitEvaluator, 0L);
}

std::optional<ContentRecord> HostValues::current(const ContentRecord& record) const {
    const auto object = object_of(record);
    if (!object) return {};
    const PropertyRecord& property = record.property;
    call(column_, &IKelosQColumnDef::put_PropertyConstant, property.query_property);
    call(column_, &IKelosQColumnDef::put_ParameterText, Bstr(property.parameter.text).get());
    call(column_, &IKelosQColumnDef::put_UnitText, Bstr(property.unit).get());
    call(column_, &IKelosQColumnDef::put_LCID, record.lcid);
    const auto evaluator = get(column_, &IKelosQColumnDef::get_Evaluator);
    const Variant subject(object.get());
    const auto list =
        get(evaluator, &IKelosValueEvaluator::Evaluate, static_cast<VARIANT>(subject));
    if (!list) return {};

    ContentRecord now = record;
    now.document_value = {};
    now.items.clear();
    const long count = get(list, &IKelosValueList::get_Count);
    for (long i = 1; i <= count; ++i) {
        const auto entry = get(list, &IKelosValueList::get_Item, i);
        now.items.push_back({record.lcid, archived(get(entry, &IKelosValueEntry::get_Value)),
                             archived(get(entry, &IKelosValueEntry::get_DisplayValue))});
    }
    now.presentation = get(list, &IKelosValueList::get_Presentation);
    return now;
}

void HostValues::write(const ContentRecord& record, const Variant& value) const {
    const PropertyRecord& property = record.property;
    call(kit_, &IHostKit::WriteProperty, object_of(record).get(), property.query_property,
         Bstr(property.parameter.text).get(), Bstr(property.unit).get(), record.lcid,
         static_cast<VARIANT>(host_form(value)));
}

// As the component resolves what it reads: by identifier, else by path.
ComPtr<IKelosObject> HostValues::object_of(const ContentRecord& record) const {
    const ObjectRecord& wanted = record.object;
    if (!wanted.uid.empty())
        if (auto found = get(workset_, &IKelosWorkset::LoadObject, wanted.system_type,
                             Bstr(wanted.uid).get()))
            return found;
    const auto project = get(workset_, &IKelosWorkset::get_CurrentProject);
    if (!project) return {};
    return get(project, &IKelosProject::FindByPathFullName, Bstr(wanted.path).get());
}

}  // namespace cli
