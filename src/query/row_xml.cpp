#include "query/row_xml.h"

#include <optional>

#include "archive/xml_publics.h"
#include "automation/conversion.h"
#include "automation/dispatch.h"
#include "text/string_forms.h"

namespace tessera {

using automation::Bstr;
using automation::BstrView;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;
using namespace automation::literals;

namespace {

constexpr wchar_t translate_object[] = L"TranslateObject";
constexpr BstrView format_version = L"1"_bstr;

// Reads the member of the translate object into an attribute of the same name.
void copy_member(const ComPtr<IDispatch>& translation, BstrView name, ArchiveNode& element) {
    const Variant value = automation::get_property(translation.get(), name.get());
    element.set_attribute(name, automation::text_of(value));
}

void write_reference(ArchiveNode element, const CellReference& reference) {
    const ComPtr<IKelosObject>& object = reference.object();
    const Bstr uid = get(object, &IKelosObject::get_SystemUID);
    element.set_attribute(L"SystemUID"_bstr, uid);
    const long type = get(object, &IKelosObject::get_SystemType);
    element.set_attribute(L"SystemType"_bstr, Bstr(std::to_wstring(type)));
    const auto project = get(object, &IKelosObject::get_Project);
    const Bstr path = get(object, &IKelosObject::get_PathFullName, project.get());
    element.set_attribute(L"PathFullName"_bstr, path);
    if (!reference.translation()) return;
    copy_member(reference.translation(), L"Property"_bstr, element);
    copy_member(reference.translation(), L"SubObjectType"_bstr, element);
    copy_member(reference.translation(), L"SubObjectKey"_bstr, element);
}

void write_cell(ArchiveNode& row, const ComPtr<IKelosCell>& cell,
                const ComPtr<IKelosQColumnDef>& definition) {
    ArchiveNode element = row.append(L"Cell"_bstr);
    const CellReference reference(cell);
    if (reference.object()) write_reference(element.append(L"KelosObject"_bstr), reference);

    ArchiveNode value = element.append(L"Value"_bstr);
    const Bstr text = get(cell, &IKelosCell::get_Text);
    value.set_attribute(L"Data"_bstr, Bstr(office_string(text.u16())));

    ArchiveNode column = element.append(L"Column"_bstr);
    column.set_attribute(L"Name"_bstr, get(definition, &IKelosQColumnDef::get_Name));
}

}  // namespace

CellReference::CellReference(const ComPtr<IKelosCell>& cell)
    : value_(get(cell, &IKelosCell::get_Value)) {
    if (value_.is_object() && automation::type_name(value_).view() == translate_object) {
        translation_ = value_.object().as<IDispatch>();
        object_ = automation::object_as<IKelosObject>(
            automation::get_property(translation_.get(), L"KelosObject"));
    } else {
        object_ = get(cell, &IKelosCell::get_Object);
    }
}

void write_columns(HQuery& cursor, const dom::Document& document) {
    ArchiveNode owner(document);
    const ArchiveNode columns =
        automation::require(XML_WriteTitle(owner, L"Columns"_bstr, format_version));
    const dom::Element relation = dom::create_element(document, L"ColumnsRelation"_bstr);
    const int count = cursor.column_count();
    for (int i = 1; i <= count; ++i) {
        const auto column = static_cast<std::int16_t>(i);
        const auto definition = cursor.column(column);
        if (!cursor.is_relevant(column)) continue;
        call(definition, &IKelosQColumnDef::WriteXML, columns.node().get());
        const Bstr number(L"F" + std::to_wstring(i));
        dom::set_attribute(relation, number, get(definition, &IKelosQColumnDef::get_Name));
    }
    dom::append(columns.node(), relation);
}

dom::Document row_document(HQuery& cursor) {
    dom::Document document;
    std::optional<DraftedTitle> row;
    const int count = cursor.column_count();
    for (int i = 1; i <= count; ++i) {
        const auto column = static_cast<std::int16_t>(i);
        if (!cursor.is_relevant(column)) continue;
        const auto cell = cursor.cell(column);
        if (!cell) continue;
        if (!row) {
            document = dom::create_document();
            row.emplace(document, L"Row"_bstr, format_version);
        }
        automation::require(row->title());
        write_cell(row->title(), cell, cursor.column(column));
    }
    if (row) automation::require(row->write());
    return document;
}

}  // namespace tessera
