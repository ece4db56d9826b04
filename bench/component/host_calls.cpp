#include "bench/component/host_calls.h"

namespace bench {
namespace {

void read_identity(IKelosObject* object) {
    get(object, &IKelosObject::get_SystemUID);
    get(object, &IKelosObject::get_SystemType);
    const auto project = get(object, &IKelosObject::get_Project);
    get(object, &IKelosObject::get_PathFullName, project.get());
}

void read_language_of(IKelosProject* project) {
    get(get(project, &IKelosProject::get_CurrentLanguage), &IKelosLanguage::get_LCID);
}

}  // namespace

KnownRow::KnownRow() : definition_(create<IKelosQColumnDef>(L"KelosQuery.QColumnDef")) {
    call(definition_, &IKelosQColumnDef::InitNew, 0L);
    call(definition_, &IKelosQColumnDef::InitEvaluator, 0L);
}

void KnownRow::read(IKelosObject* object) const {
    get(object, &IKelosObject::get_SystemType);
    read_identity(object);
    const auto workset = get(object, &IKelosObject::get_WorkSet);
    read_language_of(get(workset, &IKelosWorkset::get_CurrentProject).get());
    call(definition_, &IKelosQColumnDef::put_PropertyConstant, static_cast<long>(kqpDescription));
    call(definition_, &IKelosQColumnDef::put_ParameterText, nullptr);
    call(definition_, &IKelosQColumnDef::put_UnitText, nullptr);
    call(definition_, &IKelosQColumnDef::put_LCID, 1031L);
    get(definition_, &IKelosQColumnDef::get_UnitText);
    get(definition_, &IKelosQColumnDef::get_LCID);
    get(definition_, &IKelosQColumnDef::get_Kind);
    const auto evaluator = get(definition_, &IKelosQColumnDef::get_Evaluator);
    const Variant holder(object);
    const auto list = get(evaluator, &IKelosValueEvaluator::Evaluate, static_cast<VARIANT>(holder));
    const long count = get(list, &IKelosValueList::get_Count);
    for (long i = 1; i <= count; ++i) {
        const auto entry = get(list, &IKelosValueList::get_Item, i);
        get(definition_, &IKelosQColumnDef::get_LCID);
        get(entry, &IKelosValueEntry::get_DisplayValue);
        get(entry, &IKelosValueEntry::get_Value);
    }
    get(list, &IKelosValueList::get_Presentation);
}

void read_language(IKelosDocument* document) {
    read_language_of(get(document, &IKelosDocument::get_Project).get());
}

}  // namespace bench
