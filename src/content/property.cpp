#include "content/property.h"

#include "automation/conversion.h"
#include "automation/text.h"

namespace tessera {

using automation::Bstr;
using automation::Variant;
using automation::view_of;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera.Property", label};
}

constexpr wchar_t item_get_name[] = L"GetName";
constexpr wchar_t item_set_name[] = L"SetName";
constexpr wchar_t item_get_parameter[] = L"GetParameter";
constexpr wchar_t item_set_parameter[] = L"SetParameter";
constexpr wchar_t item_unit[] = L"PhysUnit";
constexpr wchar_t item_query_property[] = L"QDefProperty";

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

STDMETHODIMP Property::get_GetName(BSTR* Result) {
    return trapped(Result, member(L"Property Get 'GetName'"),
                   [&](Bstr& result) { result = get_name_; });
}

STDMETHODIMP Property::put_GetName(BSTR NewValue) {
    return trapped(member(L"Property Let 'GetName'"), [&] {
        get_name_ = Bstr(view_of(NewValue));
        pair_names(get_name_, set_name_);
    });
}

STDMETHODIMP Property::get_SetName(BSTR* Result) {
    return trapped(Result, member(L"Property Get 'SetName'"),
                   [&](Bstr& result) { result = set_name_; });
}

STDMETHODIMP Property::put_SetName(BSTR NewValue) {
    return trapped(member(L"Property Let 'SetName'"), [&] {
        set_name_ = Bstr(view_of(NewValue));
        pair_names(set_name_, get_name_);
    });
}

STDMETHODIMP Property::get_GetParameter(VARIANT* Result) {
    return trapped(Result, member(L"Property Get 'GetParameter'"),
                   [&](Variant& result) { result = get_parameter_; });
}

STDMETHODIMP Property::put_GetParameter(VARIANT NewValue) {
    return trapped(member(L"Property Let 'GetParameter'"), [&] {
        get_parameter_ = Variant::value_of(NewValue);
        pair_parameters(get_parameter_, set_parameter_);
    });
}

STDMETHODIMP Property::get_SetParameter(VARIANT* Result) {
    return trapped(Result, member(L"Property Get 'SetParameter'"),
                   [&](Variant& result) { result = set_parameter_; });
}

STDMETHODIMP Property::put_SetParameter(VARIANT NewValue) {
    return trapped(member(L"Property Let 'SetParameter'"), [&] {
        set_parameter_ = Variant::value_of(NewValue);
        pair_parameters(set_parameter_, get_parameter_);
    });
}

STDMETHODIMP Property::get_PhysUnit(VARIANT* Result) {
    return trapped(Result, member(L"Property Get 'PhysUnit'"),
                   [&](Variant& result) { result = Variant(phys_unit_); });
}

STDMETHODIMP Property::put_PhysUnit(VARIANT NewValue) {
    return trapped(member(L"Property Let 'PhysUnit'"),
                   [&] { phys_unit_ = automation::to_text(NewValue); });
}

STDMETHODIMP Property::get_QDefProperty(KelosQueryProperty* Result) {
    return trapped(Result, member(L"Property Get 'QDefProperty'"),
                   [&](KelosQueryProperty& result) { result = query_property_; });
}

STDMETHODIMP Property::put_QDefProperty(KelosQueryProperty NewValue) {
    return trapped(member(L"Property Let 'QDefProperty'"), [&] { query_property_ = NewValue; });
}

void Property::write_items(ArchiveNode& title, ArchiveNode&) {
    write_text(title, item_get_name, get_name_);
    write_text(title, item_set_name, set_name_);
    XML_WriteItem(title, item_get_parameter, get_parameter_);
    XML_WriteItem(title, item_set_parameter, set_parameter_);
    write_text(title, item_unit, phys_unit_);
    write_long(title, item_query_property, query_property_);
}

void Property::read_items(const dom::Node& title, std::int16_t version) {
    get_name_ = read_text(title, item_get_name);
    set_name_ = read_text(title, item_set_name);
    get_parameter_ = XML_ReadItem(title, item_get_parameter);
    set_parameter_ = XML_ReadItem(title, item_set_parameter);
    phys_unit_ = read_text(title, item_unit);
    if (version >= version_with_query_property)
        query_property_ = static_cast<KelosQueryProperty>(read_long(title, item_query_property));
    else if (automation::equal_ignoring_case(get_name_.view(), L"DisplayValue"))
        query_property_ = kqpDisplayValue;
}

}  // namespace tessera
