// How the global mapping object records a row: what is read of the host object, in which order, and
// what becomes of it in the content document.

#include "automation/conversion.h"
#include "automation/text.h"
#include "content/tessera_content.h"
#include "host/error_boundary.h"
#include "host/host_helpers.h"
#include "mapping/language.h"
#include "mapping/prop_by_name.h"
#include "mapping/sc_global.h"
#include "text/trim.h"

namespace tessera {

using automation::Bstr;
using automation::BstrOrView;
using automation::BstrView;
using automation::ComPtr;
using automation::get;
using automation::Variant;
using kelos::KnownProperty;
using namespace automation::literals;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera.SCGlobal", label};
}

constexpr wchar_t mode_both_ways[] = L"IO";
constexpr wchar_t mode_output[] = L"O";
constexpr wchar_t query_document_type[] = L"J";
constexpr wchar_t query_document_subtype[] = L"1";

// The document behind the object when it is one that holds queries.
ComPtr<IKelosDocument> query_document(IKelosObject* object) {
    if (get(object, &IKelosObject::get_SystemType) != kstDocument) return {};
    const auto document = ComPtr<IKelosObject>(object).as<IKelosDocument>();
    const Bstr type = get(document, &IKelosDocument::get_TypeText);
    const Bstr subtype = get(document, &IKelosDocument::get_SubTypeText);
    const bool holds_queries =
        type.view() == query_document_type && subtype.view() == query_document_subtype;
    return holds_queries ? document : ComPtr<IKelosDocument>();
}

const KnownProperty* find_known_property(std::wstring_view name) {
    return kelos::find_property_if([&](std::u16string_view known) {
        return automation::equal_ignoring_case(automation::as_wide(known), name);
    });
}

void select_known(const KnownProperty& known, std::wstring_view given_name, Property& record,
                  const ColumnDefinition& column) {
    // A property that is written under its own name is so under the name that was given.
    if (known.set_name == known.name)
        record.set_set_name(given_name);
    else if (!known.set_name.empty())
        record.set_set_name(automation::as_wide(known.set_name));
    column.set_property(known.number);
}

// Sets how the property is written back, and what to read. False for an expression.
bool select_property(BstrView name, const KnownProperty* known, Property& record,
                     const ColumnDefinition& column) {
    if (!known && automation::is_numeric(name)) {
        const ResolvedConstant resolved =
            resolve_property_constant(automation::to_long(automation::lend(name)));
        record.set_set_name(resolved.name.view());
        column.set_property(resolved.property_number);
        return true;
    }
    if (!known) known = find_known_property(name.view());
    if (known) select_known(*known, name.view(), record, column);
    return known != nullptr;
}

ComPtr<ValueItem> value_item(const ComPtr<IKelosValueEntry>& entry,
                             const ColumnDefinition& column) {
    auto item = automation::make<ValueItem>();
    item->set_lcid(column.lcid());
    item->SetDisplayValue(uccVBString, get(entry, &IKelosValueEntry::get_DisplayValue));
    item->SetValue(uccVBString, get(entry, &IKelosValueEntry::get_Value));
    return item;
}

// The column definition is asked for its language again: the evaluation may have changed it.
void add_values(const ComPtr<IKelosValueList>& values, const ColumnDefinition& column,
                ValueItems& items) {
    if (!values) return;
    const long entries = get(values, &IKelosValueList::get_Count);
    if (entries < 1) return;
    const std::int16_t count = automation::to_short(Variant(entries));
    for (long i = 1; i <= count; ++i)
        items.append(value_item(get(values, &IKelosValueList::get_Item, i), column));
    items.set_presentation(get(values, &IKelosValueList::get_Presentation));
}

std::wstring expression_text(std::wstring_view property_name, std::wstring_view parameter) {
    std::wstring expression(property_name);
    if (!parameter.empty()) expression.append(L"(").append(parameter).append(L")");
    return expression;
}

}  // namespace

void SCGlobal::transfer(const Row& row) noexcept {
    guarded(member(L"Public Sub 'Content'"), [&] {
        if (const auto document = query_document(row.object))
            QContent(row, document.get());
        else
            record(row);
    });
}

// The order of the steps is fixed: the workset is taken from the first object only after its
// content object was made, so that this one has none.
void SCGlobal::record(const Row& row) {
    const auto content = automation::make<Tessera>();
    content->set_workset(workset_);
    column_.create();
    if (row.pointer.empty()) return;
    if (!workset_) workset_ = get(row.object, &IKelosObject::get_WorkSet);
    contents_root();

    content->kelos_object().set_object(row.object);
    content->document().set_pointer(row.pointer);
    Property& property = content->property();
    property.set_get_name(row.property_name.view());
    property.set_get_parameter(Variant::value_of(row.parameter));
    const BstrOrView parameter = automation::text_of(property.get_parameter());
    const std::int16_t lcid = GetLCID(row.object, row.property_name.view(), parameter.view());
    content->value().set_lcid(lcid);

    if (select_property(row.property_name, row.known, property, column_))
        record_column(row, parameter, *content, lcid);
    else
        record_expression(row, parameter.view(), *content);
    content->write_below(contents_root_);
}

// Rows of expressions have neither unit nor mode nor value items.
void SCGlobal::record_expression(const Row& row, std::wstring_view parameter, Tessera& content) {
    const auto evaluator = automation::make<PropByName>();
    evaluator->set_current_object(row.object);
    content.value().set_kelos_value(
        uccVBString, evaluator->evaluate(expression_text(row.property_name.view(), parameter)));
}

void SCGlobal::record_column(const Row& row, BstrView parameter, Tessera& content,
                             std::int16_t lcid) {
    column_.set_parameter(parameter);
    column_.set_unit({});
    column_.set_lcid(lcid);
    choose_unit(row);

    Property& property = content.property();
    property.set_phys_unit(column_.unit());
    Value& value = content.value();
    value.set_lcid(column_.lcid());
    const bool mode_given = !trim_blanks(row.io_mode).empty();
    value.set_io_mode(mode_given ? row.io_mode : mode_both_ways);
    value.set_all_values_numeric(row.all_values_numeric);
    value.set_empty_numeric_value_stay_empty(row.empty_numeric_value_stay_empty);
    property.set_query_property(column_.kind());
    add_values(column_.values_of(row.object), column_, content.value_items());
}

void SCGlobal::choose_unit(const Row& row) {
    if (unit_given_by_host_)
        column_.set_unit(row.unit_label);
    else if (!row.unit_label.empty())
        column_.set_unit(GetKelosPhysUnit(row.object, row.unit_label.view()));
}

void SCGlobal::transfer_fixed(std::wstring_view pointer, const VARIANT& value,
                              bool all_values_numeric,
                              bool empty_numeric_value_stay_empty) noexcept {
    guarded(member(L"Public Sub 'ContentFix'"), [&] {
        Variant fixed = Variant::value_of(value);
        if (pointer.empty() || fixed.is_object()) return;
        contents_root();
        const auto content = automation::make<Tessera>();
        content->document().set_pointer(pointer);
        const auto project = get(document_, &IKelosDocument::get_Project);
        const auto language = get(project, &IKelosProject::get_CurrentLanguage);
        Value& record = content->value();
        record.set_lcid(automation::to_short(Variant(get(language, &IKelosLanguage::get_LCID))));
        record.set_kelos_value(uccVBString, std::move(fixed));
        record.set_all_values_numeric(all_values_numeric);
        record.set_empty_numeric_value_stay_empty(empty_numeric_value_stay_empty);
        record.set_io_mode(mode_output);
        content->write_below(contents_root_);
    });
}

}  // namespace tessera
