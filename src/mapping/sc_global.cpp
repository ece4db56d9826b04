#include "mapping/sc_global.h"

#include "automation/conversion.h"
#include "automation/dispatch.h"
#include "automation/text.h"
#include "content/tessera_content.h"
#include "host/error_boundary.h"
#include "host/host_helpers.h"
#include "host/service.h"
#include "mapping/document_pointer.h"
#include "mapping/language.h"
#include "mapping/number_system.h"
#include "mapping/prop_by_name.h"
#include "text/trim.h"

namespace tessera {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;
using automation::view_of;
using kelos::KnownProperty;

namespace {

constexpr wchar_t source[] = L"Tessera.SCGlobal";

constexpr MemberName member(const wchar_t* label) {
    return {source, label};
}

constexpr wchar_t mode_both_ways[] = L"IO";
constexpr wchar_t mode_output[] = L"O";
constexpr wchar_t report_object_entry[] = L"@ReportObject";
constexpr wchar_t query_document_type[] = L"J";
constexpr wchar_t query_document_subtype[] = L"1";
constexpr wchar_t key_unknown_property[] = L"~02ad8 Unbekannte Property oder Property-Konstante";
constexpr wchar_t key_information[] = L"~008a0 Information";

// The document behind the object when it is one that holds queries.
ComPtr<IKelosDocument> query_document(IKelosObject* object) {
    if (get(object, &IKelosObject::get_SystemType) != kstDocument) return {};
    const auto document = ComPtr<IKelosObject>(object).as<IKelosDocument>();
    const bool holds_queries =
        get(document, &IKelosDocument::get_TypeText).view() == query_document_type &&
        get(document, &IKelosDocument::get_SubTypeText).view() == query_document_subtype;
    return holds_queries ? document : ComPtr<IKelosDocument>();
}

const KnownProperty* find_known_property(std::wstring_view name) {
    return kelos::find_property_if([&](std::u16string_view known) {
        return automation::equal_ignoring_case(automation::as_wide(known), name);
    });
}

void put_set_name(Property& property, std::wstring_view name) {
    const Bstr text(name);
    property.put_SetName(text.get());
}

void select_known(const KnownProperty& known, std::wstring_view given_name, Property& record,
                  const ColumnDefinition& column) {
    // A property that is written under its own name is so under the name that was given.
    if (known.set_name == known.name)
        put_set_name(record, given_name);
    else if (!known.set_name.empty())
        put_set_name(record, automation::as_wide(known.set_name));
    column.set_property(known.number);
}

// Sets how the property is written back, and what to read. False for an expression.
bool select_property(std::wstring_view name, const KnownProperty* known, Property& record,
                     const ColumnDefinition& column) {
    if (!known && automation::is_numeric(name)) {
        const ResolvedConstant resolved =
            resolve_property_constant(automation::to_long(Variant(name)));
        put_set_name(record, resolved.name.view());
        column.set_property(resolved.property_number);
        return true;
    }
    if (!known) known = find_known_property(name);
    if (known) select_known(*known, name, record, column);
    return known != nullptr;
}

ComPtr<ValueItem> value_item(const ComPtr<IKelosValueEntry>& entry, std::int16_t lcid) {
    auto item = automation::make<ValueItem>();
    item->put_LCID(lcid);
    const Variant display_value = get(entry, &IKelosValueEntry::get_DisplayValue);
    item->put_DisplayValue(uccVBString, display_value);
    const Variant value = get(entry, &IKelosValueEntry::get_Value);
    item->put_Value(uccVBString, value);
    return item;
}

void add_values(const ComPtr<IKelosValueList>& values, std::int16_t lcid, ValueItems& items) {
    if (!values) return;
    const long entries = get(values, &IKelosValueList::get_Count);
    if (entries < 1) return;
    const std::int16_t count = automation::to_short(Variant(entries));
    for (long i = 1; i <= count; ++i)
        items.append(value_item(get(values, &IKelosValueList::get_Item, i), lcid));
    items.put_Presentation(get(values, &IKelosValueList::get_Presentation));
}

std::wstring expression_text(std::wstring_view property_name, std::wstring_view parameter) {
    std::wstring expression(property_name);
    if (!parameter.empty()) expression.append(L"(").append(parameter).append(L")");
    return expression;
}

}  // namespace

STDMETHODIMP SCGlobal::ContentFix(BSTR DocPointer, VARIANT vNewValue, VARIANT_BOOL AllValuesNumeric,
                                  VARIANT_BOOL EmptyNumericValueStayEmpty) {
    return trapped(member(L"Public Sub 'ContentFix'"), [&] {
        const Variant value = Variant::value_of(vNewValue);
        if (view_of(DocPointer).empty() || value.is_object()) return;
        contents_root();
        const auto content = automation::make<Tessera>();
        content->document().put_Pointer(DocPointer);
        const auto project = get(document_, &IKelosDocument::get_Project);
        const auto language = get(project, &IKelosProject::get_CurrentLanguage);
        Value& record = content->value();
        record.put_LCID(automation::to_short(Variant(get(language, &IKelosLanguage::get_LCID))));
        record.put_KelosValue(uccVBString, value);
        record.put_AllValuesNumeric(AllValuesNumeric);
        record.put_EmptyNumericValueStayEmpty(EmptyNumericValueStayEmpty);
        const Bstr mode(mode_output);
        record.put_IOMode(mode.get());
        build(*content);
    });
}

STDMETHODIMP SCGlobal::get_WorkSet(IKelosWorkset** Result) {
    return trapped(Result, member(L"Property Get 'WorkSet'"),
                   [&](auto& result) { result = workset_; });
}

STDMETHODIMP SCGlobal::get_Document(IKelosDocument** Result) {
    return trapped(Result, member(L"Property Get 'Document'"),
                   [&](auto& result) { result = document_; });
}

STDMETHODIMP SCGlobal::get_Project(IKelosProject** Result) {
    return trapped(Result, member(L"Property Get 'Project'"), [&](auto& result) {
        if (workset_) result = get(workset_, &IKelosWorkset::get_CurrentProject);
    });
}

STDMETHODIMP SCGlobal::get_ReportObject(IKelosObject** Result) {
    return trapped(Result, member(L"Property Get 'ReportObject'"), [&](auto& result) {
        if (!document_) return;
        const Bstr name(report_object_entry);
        const auto entries = get(document_, &IKelosDocument::get_NamedEntries);
        if (const auto entry = get(entries, &IKelosNamedEntries::get_Item, name.get()))
            result = get(entry, &IKelosNamedEntry::get_Object);
        if (!result) result = get(document_, &IKelosDocument::get_Owner);
    });
}

STDMETHODIMP SCGlobal::get_MappingTableExcel(IKelosMappingTable** Result) {
    return trapped(Result, member(L"Property Get 'MappingTableExcel'"),
                   [&](auto& result) { result = mapping_table_.table; });
}

// Reports under the routine that it shares its work with.
STDMETHODIMP SCGlobal::ExcelABC(long Index, BSTR* Result) {
    return trapped(Result, member(L"Private Function 'NumericSystem'"),
                   [&](Bstr& result) { result = Bstr(NumericSystem(column_letters, {}, Index)); });
}

STDMETHODIMP SCGlobal::Content(BSTR DocPointer, IKelosObject* KelosObject, BSTR PropName,
                               VARIANT PropParameter, BSTR PhysUnitLabel, BSTR IOMode,
                               VARIANT_BOOL AllValuesNumeric,
                               VARIANT_BOOL EmptyNumericValueStayEmpty) {
    return trapped(member(L"Public Sub 'Content'"), [&] {
        transfer_or_expand({view_of(DocPointer), KelosObject, view_of(PropName),
                            Variant::value_of(PropParameter), view_of(PhysUnitLabel),
                            view_of(IOMode), AllValuesNumeric, EmptyNumericValueStayEmpty});
    });
}

void SCGlobal::transfer_or_expand(const Row& row) noexcept {
    guarded(member(L"Public Sub 'Content'"), [&] {
        if (const auto document = query_document(row.object.get()))
            QContent(row, document);
        else
            transfer(row);
    });
}

void SCGlobal::set_document(ComPtr<IKelosDocument> document) noexcept {
    guarded(member(L"Property Set 'Document'"), [&] {
        document_ = std::move(document);
        mapping_table_ = {};
        trace(L"Set mDocument = vNewValue");
        if (document_) mapping_table_ = find_mapping_table(document_.get(), source);
    });
}

dom::Node SCGlobal::contents_root() noexcept {
    guarded(member(L"Friend Property Get 'ContentsRoot'"), [&] {
        if (!contents_root_)
            automation::make<Tessera>()->CreateContentsRoot(nullptr, contents_root_.put());
    });
    return contents_root_;
}

void SCGlobal::AddOptionsToXml() noexcept {
    guarded(member(L"Friend Sub 'AddOptionsToXml'"), [&] {
        const OptionCollection options =
            automation::make<SpecOptToCollConverter>()->Convert(mapping_table_.object.get());
        const dom::Node root = contents_root();
        automation::make<XMLOptions>()->get_XMLNode(root, &options);
        const Bstr xml = get(root, &IXMLDOMNode::get_xml);
        trace(std::wstring(source) + L"->AddOptionsToXml: updated root " + xml.str());
    });
}

// The order of the steps is fixed: the workset is taken from the first object only after its
// content object was made, so that this one has none.
void SCGlobal::transfer(const Row& row) {
    const auto content = automation::make<Tessera>();
    content->put_WorkSet(workset_.get());
    column_.create();
    if (row.pointer.empty()) return;
    if (!workset_) workset_ = get(row.object, &IKelosObject::get_WorkSet);
    contents_root();

    const Bstr pointer(row.pointer);
    const Bstr property_name(row.property_name);
    content->kelos_object().put_Object(row.object.get());
    content->document().put_Pointer(pointer.get());
    Property& property = content->property();
    property.put_GetName(property_name.get());
    property.put_GetParameter(row.parameter);
    const Bstr parameter = automation::to_text(row.parameter);
    const std::int16_t lcid = GetLCID(row.object.get(), row.property_name, parameter.view());
    content->value().put_LCID(lcid);

    if (select_property(row.property_name, row.known, property, column_))
        read_column(row, parameter.view(), *content, lcid);
    else
        read_expression(row, parameter.view(), *content);
    build(*content);
}

// Rows of expressions have neither unit nor mode nor value items.
void SCGlobal::read_expression(const Row& row, std::wstring_view parameter, Tessera& content) {
    const auto evaluator = automation::make<PropByName>();
    evaluator->putref_CurrentObject(row.object.get());
    const Bstr expression(expression_text(row.property_name, parameter));
    Variant value;
    evaluator->EvalExpression(expression.get(), value.put());
    content.value().put_KelosValue(uccVBString, value);
}

void SCGlobal::read_column(const Row& row, std::wstring_view parameter, Tessera& content,
                           std::int16_t lcid) {
    column_.set_parameter(parameter);
    column_.set_unit({});
    column_.set_lcid(lcid);
    choose_unit(row);

    Property& property = content.property();
    property.put_PhysUnit(Variant(column_.unit()));
    Value& value = content.value();
    const std::int16_t column_lcid = column_.lcid();
    value.put_LCID(column_lcid);
    const bool mode_given = !trim_blanks(row.io_mode).empty();
    const Bstr mode(mode_given ? row.io_mode : std::wstring_view(mode_both_ways));
    value.put_IOMode(mode.get());
    value.put_AllValuesNumeric(row.all_values_numeric);
    value.put_EmptyNumericValueStayEmpty(row.empty_numeric_value_stay_empty);
    property.put_QDefProperty(column_.kind());
    add_values(column_.values_of(row.object.get()), column_lcid, content.value_items());
}

void SCGlobal::choose_unit(const Row& row) {
    if (unit_given_by_host_)
        column_.set_unit(row.unit_label);
    else if (!row.unit_label.empty())
        column_.set_unit(GetKelosPhysUnit(row.object.get(), row.unit_label).view());
}

void SCGlobal::build(Tessera& content) {
    dom::Node written;
    content.get_XMLNode(contents_root_.get(), written.put());
}

// Expands a query document: one row of its own for every cell of the columns that are shown. The
// caller's mode is not passed on.
void SCGlobal::QContent(const Row& row, const ComPtr<IKelosDocument>& document) noexcept {
    guarded(member(L"Sub 'QContent'"), [&] {
        const auto container = get(document, &IKelosDocument::get_QueryContainer);
        if (!container) return;
        const auto query = automation::object_as<IKelosQuery>(
            automation::get_property(container.get(), L"TopQuery"));
        if (!query) return;
        const auto table = get(query, &IKelosQuery::get_ResultTable);
        if (!table) return;
        const auto columns = get(table, &IKelosResultTable::get_Columns);
        if (!columns) return;
        call(query, &IKelosQuery::Run);

        std::wstring sheet;
        long start_column = 0;
        long start_row = 0;
        if (!SplitExDocP(row.pointer, sheet, start_column, start_row)) return;
        const long count = get(table, &IKelosResultTable::get_ColumnCount);
        for (long i = 1; i <= count; ++i) {
            unit_given_by_host_ = false;
            const auto definition = get(columns, &IKelosQColumnDefs::get_Item, i);
            if (get(definition, &IKelosQColumnDef::get_Shown))
                query_column(row, table, definition, i, sheet, start_column + i - 1, start_row);
        }
    });
}

void SCGlobal::query_column(const Row& row, const ComPtr<IKelosResultTable>& table,
                            const ComPtr<IKelosQColumnDef>& definition, long column,
                            const std::wstring& sheet, long target_column, long start_row) {
    const KnownProperty* const known =
        GetProp(get(definition, &IKelosQColumnDef::get_PropertyConstant));
    if (!known) return;
    const Variant parameter(get(definition, &IKelosQColumnDef::get_ParameterText));
    const Bstr unit_text = get(definition, &IKelosQColumnDef::get_UnitText);
    const Bstr unit(trim_blanks(unit_text.view()));

    const long rows = get(table, &IKelosResultTable::get_RowCount);
    for (long j = 1; j <= rows; ++j) {
        const auto cell = get(table, &IKelosResultTable::get_Cell, j, column);
        if (!cell) continue;  // a row may have no cell here: there is nothing to transfer
        const auto object = get(cell, &IKelosCell::get_Object);
        const auto target =
            cell_pointer(automation::as_u16(sheet), target_column, start_row + j - 1);
        if (!unit.empty()) unit_given_by_host_ = true;
        transfer_or_expand({automation::as_wide(target), object, automation::as_wide(known->name),
                            parameter, unit.view(), mode_both_ways, row.all_values_numeric,
                            row.empty_numeric_value_stay_empty, known});
    }
}

const KnownProperty* SCGlobal::GetProp(long number) noexcept {
    const KnownProperty* const found = kelos::find_property(number);
    guarded(member(L"Private Function 'GetProp'"), [&] {
        if (found || !unknown_properties_.insert(number).second) return;
        const std::wstring message =
            translate(key_unknown_property).str() + L": " + std::to_wstring(number);
        const Bstr title = translate(key_information);
        show_message(message, style_information, title.view());
        trace(message);
    });
    return found;
}

}  // namespace tessera
