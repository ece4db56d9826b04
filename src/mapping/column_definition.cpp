#include "mapping/column_definition.h"

#include "automation/conversion.h"
#include "automation/dispatch.h"
#include "host/kept_class.h"
#include "host/program_names.h"

namespace tessera {

using automation::Bstr;
using automation::BstrView;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;

void ColumnDefinition::create() {
    if (definition_) return;
    auto created = automation::create_object<IKelosQColumnDef>(program_names::column_definition);
    call(created, &IKelosQColumnDef::InitNew, 0L);
    call(created, &IKelosQColumnDef::InitEvaluator, 0L);
    definition_ = std::move(created);
}

void ColumnDefinition::set_property(long constant) const {
    call(definition_, &IKelosQColumnDef::put_PropertyConstant, constant);
}

void ColumnDefinition::set_parameter(BstrView text) const {
    call(definition_, &IKelosQColumnDef::put_ParameterText, text.get());
}

void ColumnDefinition::set_unit(BstrView unit_text) const {
    call(definition_, &IKelosQColumnDef::put_UnitText, unit_text.get());
}

void ColumnDefinition::set_lcid(std::int16_t lcid) const {
    call(definition_, &IKelosQColumnDef::put_LCID, static_cast<long>(lcid));
}

Bstr ColumnDefinition::unit() const {
    return get(definition_, &IKelosQColumnDef::get_UnitText);
}

std::int16_t ColumnDefinition::lcid() const {
    return automation::to_short(Variant(get(definition_, &IKelosQColumnDef::get_LCID)));
}

KelosQueryProperty ColumnDefinition::kind() const {
    return get(definition_, &IKelosQColumnDef::get_Kind);
}

ComPtr<IKelosValueList> ColumnDefinition::values_of(IKelosObject* object) const {
    const auto evaluator = get(definition_, &IKelosQColumnDef::get_Evaluator);
    const Variant holder(object);
    return get(evaluator, &IKelosValueEvaluator::Evaluate, static_cast<VARIANT>(holder));
}

ResolvedConstant resolve_property_constant(long constant) {
    const auto resolver =
        KeptClass<program_names::property_constant>::create<IKelosPropertyConstant>();
    call(resolver, &IKelosPropertyConstant::put_Constant, constant);
    return {get(resolver, &IKelosPropertyConstant::get_Name),
            get(resolver, &IKelosPropertyConstant::get_PropertyNumber)};
}

}  // namespace tessera
