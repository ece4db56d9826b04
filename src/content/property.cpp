#include "content/property.h"

#include "automation/conversion.h"
#include "automation/text.h"

namespace tessera {

using automation::Bstr;
using automation::BstrView;
using automation::Variant;
using automation::view_of;
using namespace automation::literals;

namespace {

constexpr RecordClass record_class{L"Tessera.Property", L"Property"_bstr, L"2"_bstr};

constexpr MemberName member(const wchar_t* label) {
    return {record_class.source, label};
}

constexpr MemberName let_get_parameter = member(L"Property Let 'GetParameter'");
constexpr MemberName let_set_parameter = member(L"Property Let 'SetParameter'");

constexpr BstrView item_get_name = L"GetName"_bstr;
constexpr BstrView item_set_name = L"SetName"_bstr;
constexpr BstrView item_get_parameter = L"GetParameter"_bstr;
constexpr BstrView item_set_parameter = L"SetParameter"_bstr;
constexpr BstrView item_unit = L"PhysUnit"_bstr;
constexpr BstrView item_query_property = L"QDefProperty"_bstr;

// Titles before this version have no query property.
constexpr std::int16_t version_with_query_property = 2;

void pair_names(const Bstr& given, Bstr& other) {
    if (!given.empty() && other.empty()) other = given;
}

// Null is neither equal to the empty string nor different from it.
bool equals_empty_text(const Variant& value) {
    return value.vt == VT_EMPTY || (value.is_string() && value.text().empty());
}

bool differs_from_empty_text(const Variant& value) {
    return value.vt != VT_NULL && !equals_empty_text(value);
}

void pair_parameters(const Variant& given, Variant& other) {
    if (equals_empty_text(other) && differs_from_empty_text(given)) other = given;
}

}  // namespace

Property::Property() noexcept : Record(record_class) {}

void Property::set_get_name(std::wstring_view name) noexcept {
    guarded(member(L"Property Let 'GetName'"), [&] {
        get_name_ = Bstr(name);
        pair_names(get_name_, set_name_);
    });
}

void Property::set_set_name(std::wstring_view name) noexcept {
    guarded(member(L"Property Let 'SetName'"), [&] {
        set_name_ = Bstr(name);
        pair_names(set_name_, get_name_);
    });
}

void Property::set_get_parameter(Variant parameter) noexcept {
    guarded(let_get_parameter, [&] {
        get_parameter_ = std::move(parameter);
        pair_parameters(get_parameter_, set_parameter_);
    });
}

void Property::set_set_parameter(Variant parameter) noexcept {
    guarded(let_set_parameter, [&] {
        set_parameter_ = std::move(parameter);
        pair_parameters(set_parameter_, get_parameter_);
    });
}

STDMETHODIMP Property::get_GetName(BSTR* Result) {
    return give(Result, get_name_, member(L"Property Get 'GetName'"));
}

STDMETHODIMP Property::put_GetName(BSTR NewValue) {
    set_get_name(view_of(NewValue));
    return S_OK;
}

STDMETHODIMP Property::get_SetName(BSTR* Result) {
    return give(Result, set_name_, member(L"Property Get 'SetName'"));
}

STDMETHODIMP Property::put_SetName(BSTR NewValue) {
    set_set_name(view_of(NewValue));
    return S_OK;
}

STDMETHODIMP Property::get_GetParameter(VARIANT* Result) {
    return give(Result, get_parameter_, member(L"Property Get 'GetParameter'"));
}

STDMETHODIMP Property::put_GetParameter(VARIANT NewValue) {
    return trapped(let_get_parameter, [&] { set_get_parameter(Variant::value_of(NewValue)); });
}

STDMETHODIMP Property::get_SetParameter(VARIANT* Result) {
    return give(Result, set_parameter_, member(L"Property Get 'SetParameter'"));
}

STDMETHODIMP Property::put_SetParameter(VARIANT NewValue) {
    return trapped(let_set_parameter, [&] { set_set_parameter(Variant::value_of(NewValue)); });
}

STDMETHODIMP Property::get_PhysUnit(VARIANT* Result) {
    return give(Result, phys_unit_, member(L"Property Get 'PhysUnit'"));
}

STDMETHODIMP Property::put_PhysUnit(VARIANT NewValue) {
    return trapped(member(L"Property Let 'PhysUnit'"),
                   [&] { set_phys_unit(automation::to_text(NewValue)); });
}

STDMETHODIMP Property::get_QDefProperty(KelosQueryProperty* Result) {
    return give(Result, query_property_, member(L"Property Get 'QDefProperty'"));
}

STDMETHODIMP Property::put_QDefProperty(KelosQueryProperty NewValue) {
    return keep(query_property_, NewValue);
}

void Property::write_items(ArchiveNode& title, ArchiveNode&) {
    write_text(title, item_get_name, get_name_);
    write_text(title, item_set_name, set_name_);
    XML_WriteItem(title, item_get_parameter, get_parameter_);
    XML_WriteItem(title, item_set_parameter, set_parameter_);
    write_text(title, item_unit, phys_unit_);
    write_long(title, item_query_property, query_property_);
}

void Property::read_items(const ArchiveReader& title, std::int16_t version) {
    get_name_ = read_text(title, item_get_name);
    set_name_ = read_text(title, item_set_name);
    get_parameter_ = XML_ReadItem(title, item_get_parameter.view());
    set_parameter_ = XML_ReadItem(title, item_set_parameter.view());
    phys_unit_ = read_text(title, item_unit);
    if (version >= version_with_query_property)
        query_property_ = static_cast<KelosQueryProperty>(read_long(title, item_query_property));
    else if (automation::equal_ignoring_case(get_name_.view(), L"DisplayValue"))
        query_property_ = kqpDisplayValue;
}

}  // namespace tessera
