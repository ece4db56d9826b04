#include "query/row_xml.h"

#include "archive/xml_publics.h"
#include "automation/conversion.h"
#include "automation/dispatch.h"
#include "text/string_forms.h"

namespace tessera {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;

namespace {

constexpr wchar_t translate_object[] = L"TranslateObject";
constexpr wchar_t format_version[] = L"1";

dom::Element append_element(const dom::Document& document, const dom::Element& parent,
                            std::wstring_view name) {
    dom::Element element = dom::create_element(document, name);
    dom::append(parent, element);
    return element;
}

dom::Element write_title(const dom::Document& document, std::wstring_view name) {
    ArchiveNode owner(document);
    return automation::require(XML_WriteTitle(owner, name, format_version).node())
        .as<IXMLDOMElement>();
}

// Reads the member of the translate object into an attribute of the same name.
void copy_member(const ComPtr<IDispatch>& translation, const wchar_t* name,
                 const dom::Element& element) {
    const Bstr text = automation::to_text(automation::get_property(translation.get(), name));
    dom::set_attribute(element, name, text.view());
}

void write_reference(const dom::Element& element, const CellReference& reference) {
    const ComPtr<IKelosObject>& object = reference.object();
    const Bstr uid = get(object, &IKelosObject::get_SystemUID);
    dom::set_attribute(element, L"SystemUID", uid.view());
    const long type = get(object, &IKelosObject::get_SystemType);
    dom::set_attribute(element, L"SystemType", std::to_wstring(type));
    const auto project = get(object, &IKelosObject::get_Project);
    const Bstr path = get(object, &IKelosObject::get_PathFullName, project.get());
    dom::set_attribute(element, L"PathFullName", path.view());
    if (!reference.translation()) return;
    copy_member(reference.translation(), L"Property", element);
    copy_member(reference.translation(), L"SubObjectType", element);
    copy_member(reference.translation(), L"SubObjectKey", element);
}

void write_cell(const dom::Document& document, const dom::Element& row,
                const ComPtr<IKelosCell>& cell, const ComPtr<IKelosQColumnDef>& definition) {
    const dom::Element element = append_element(document, row, L"Cell");
    const CellReference reference(cell);
    if (reference.object())
        write_reference(append_element(document, element, L"KelosObject"), reference);

    const dom::Element value = append_element(document, element, L"Value");
    const Bstr text = get(cell, &IKelosCell::get_Text);
    dom::set_attribute(value, L"Data", automation::as_wide(office_string(text.u16())));

    const dom::Element column = append_element(document, element, L"Column");
    const Bstr name = get(definition, &IKelosQColumnDef::get_Name);
    dom::set_attribute(column, L"Name", name.view());
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
    const dom::Element columns = write_title(document, L"Columns");
    const dom::Element relation = dom::create_element(document, L"ColumnsRelation");
    const int count = cursor.column_count();
    for (int i = 1; i <= count; ++i) {
        const auto column = static_cast<std::int16_t>(i);
        const auto definition = cursor.column(column);
        if (!cursor.is_relevant(column)) continue;
        call(definition, &IKelosQColumnDef::WriteXML, static_cast<IXMLDOMNode*>(columns.get()));
        const Bstr name = get(definition, &IKelosQColumnDef::get_Name);
        dom::set_attribute(relation, (L"F" + std::to_wstring(i)).c_str(), name.view());
    }
    dom::append(columns, relation);
}

dom::Document row_document(HQuery& cursor) {
    dom::Document document;
    dom::Element row;
    const int count = cursor.column_count();
    for (int i = 1; i <= count; ++i) {
        const auto column = static_cast<std::int16_t>(i);
        if (!cursor.is_relevant(column)) continue;
        const auto cell = cursor.cell(column);
        if (!cell) continue;
        if (!document) {
            document = dom::create_document();
            row = write_title(document, L"Row");
        }
        write_cell(document, row, cell, cursor.column(column));
    }
    return document;
}

}  // namespace tessera
