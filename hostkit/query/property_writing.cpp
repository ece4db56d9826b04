#include "hostkit/query/property_writing.h"

#include <cmath>

#include "automation/conversion.h"
#include "automation/error.h"
#include "hostkit/model/model_functions.h"
#include "hostkit/query/property_target.h"
#include "kelos.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::Variant;

[[noreturn]] void fail(const std::wstring& problem) {
    automation::fail(E_INVALIDARG, problem);
}

std::wstring quoted(std::wstring_view text) {
    return std::wstring(L"\"").append(text).append(L"\"");
}

// ---- Texts of objects ------------------------------------------------------------------------

LocalText* text_behind(Element& element, int constant) {
    switch (constant) {
        case kqpDescription:
        case kqpGetInternationalDescription:
            return &element.descriptions[0];
        case kqpDescription2:
        case kqpGetInternationalDescription2:
            return &element.descriptions[1];
        case kqpDescription3:
        case kqpGetInternationalDescription3:
            return &element.descriptions[2];
        case kqpLabel:
            return &element.label;
        default:
            return nullptr;
    }
}

// What is asked for in one language stays as it is in all others.
void write_local(LocalText& text, const PropertyTarget& target, std::wstring value) {
    target.property.takes_language ? text.translate(target.language, std::move(value))
                                   : text.replace(target.language, std::move(value));
}

void write_text(Element& element, const PropertyTarget& target, const Variant& value) {
    std::wstring text = automation::to_text(value).str();
    if (LocalText* const local = text_behind(element, target.property.number))
        write_local(*local, target, std::move(text));
    else if (target.property.number == kqpFileName)
        element.file = std::move(text);
    else
        fail(L"A name is not changed, because paths lead through it");
}

// ---- Values of attributes --------------------------------------------------------------------

struct TypeWords {
    ValueType type;
    const wchar_t* text;
};
constexpr TypeWords type_words[] = {
    {ValueType::number, L"number"},     {ValueType::integer, L"whole number"},
    {ValueType::boolean, L"yes or no"}, {ValueType::date, L"date"},
    {ValueType::currency, L"amount"},   {ValueType::text, L"text"},
};

[[noreturn]] void fail_type(std::wstring_view value, ValueType type) {
    for (const TypeWords& words : type_words)
        if (words.type == type) fail(quoted(value) + L" is no " + words.text);
    automation::fail(automation::error_type_mismatch);
}

// In the form of a locale a point and a comma each stand for one thing only.
std::optional<double> number_in(std::wstring_view text, LCID locale) {
    wchar_t separator[8]{};
    GetLocaleInfoW(locale, LOCALE_SDECIMAL | LOCALE_NOUSEROVERRIDE, separator, 8);
    std::wstring with_point(text);
    for (wchar_t& character : with_point) {
        if (character == separator[0])
            character = L'.';
        else if (character == L'.')
            return {};
    }
    double number = 0;
    if (!read_number(with_point, number)) return {};
    return number;
}

// What a user reads, as a value.
Variant read_as(ValueType type, std::wstring text, LCID locale) {
    Variant result;
    HRESULT code = S_OK;
    if (type == ValueType::text) return Variant(text);
    if (type == ValueType::date) {
        result.vt = VT_DATE;
        code = VarDateFromStr(text.data(), locale, LOCALE_NOUSEROVERRIDE, &result.date);
    } else if (type == ValueType::boolean) {
        result.vt = VT_BOOL;
        code = VarBoolFromStr(text.data(), locale, VAR_LOCALBOOL, &result.boolVal);
    } else if (const auto number = number_in(text, locale)) {
        return Variant(*number);
    } else {
        code = DISP_E_TYPEMISMATCH;
    }
    if (FAILED(code)) fail_type(text, type);
    return result;
}

const ListItem* item_read_as(const ValueList& list, std::wstring_view text, std::size_t language) {
    for (const ListItem& item : list.items)
        if (item.text.in(language) == text) return &item;
    return nullptr;
}

bool is_number(const VARIANT& value) noexcept {
    switch (value.vt) {
        case VT_UI1:
        case VT_I2:
        case VT_I4:
        case VT_R4:
        case VT_R8:
        case VT_CY:
            return true;
        default:
            return false;
    }
}

Variant in_own_unit(const Attribute& attribute, Variant value, const ColumnSettings& settings) {
    const Unit* const unit = wanted_unit(attribute, settings.unit);
    if (!is_number(value) || unit == attribute.type.unit) return value;
    return Variant(convert(automation::to_type(value, VT_R8).dblVal, *unit, *attribute.type.unit));
}

// A text that happens to read as a number in somebody's locale is none, nor is a date.
void check_type(const Variant& value, ValueType type) {
    const bool is_numeric =
        type == ValueType::number || type == ValueType::integer || type == ValueType::currency;
    const bool suits = type == ValueType::text || (is_numeric && is_number(value)) ||
                       (type == ValueType::boolean && value.vt == VT_BOOL) ||
                       (type == ValueType::date && value.vt == VT_DATE);
    if (!suits) fail_type(automation::to_text(value).view(), type);
}

void check_whole(const Variant& value, ValueType type) {
    if (type != ValueType::integer) return;
    const double number = automation::to_type(value, VT_R8).dblVal;
    if (std::trunc(number) != number) fail_type(automation::to_text(value).view(), type);
}

Variant value_read_as(const Attribute& attribute, const std::wstring& text, std::size_t language) {
    if (attribute.type.list)
        if (const ListItem* const item = item_read_as(*attribute.type.list, text, language))
            return item->value;
    const auto locale = static_cast<LCID>(attribute.model.languages[language].lcid);
    return read_as(attribute.type.type, text, locale);
}

// A text keeps what it is in other languages.
bool write_text_value(Attribute& attribute, const PropertyTarget& target, const Variant& value) {
    const auto position = static_cast<std::size_t>(target.index) - 1;
    if (attribute.type.type != ValueType::text || position >= attribute.values.size()) return false;
    AttributeValue& there = attribute.values[position];
    if (there.text.empty()) there.text = LocalText(automation::to_text(there.value).str());
    write_local(there.text, target, automation::to_text(value).str());
    there.value = Variant(there.text.base());
    return true;
}

void write_value(const PropertyTarget& target, const ColumnSettings& settings, Variant value) {
    Attribute& attribute = *target.attribute;
    const bool is_display =
        target.property.number == kqpDisplayValue || target.property.number == kqpGetDisplayXValue;
    if (is_display && value.is_string())
        value = value_read_as(attribute, std::wstring(value.text()), target.language);
    if (value.vt == VT_EMPTY) fail(L"There is no value to write");
    check_type(value, attribute.type.type);
    value = in_own_unit(attribute, std::move(value), settings);
    check_whole(value, attribute.type.type);
    if (!write_text_value(attribute, target, value)) set_value(attribute, target.index, value);
}

}  // namespace

void write_property(Element& element, const ColumnSettings& settings, const VARIANT& value) {
    const auto target = property_target(element, settings);
    if (!target) fail(quoted(path_of(element)) + L" has no such property");
    if (target->property.set_name.empty())
        fail(L"The property " + quoted(automation::as_wide(target->property.name)) +
             L" cannot be written");
    require_write(element);
    if (target->attribute)
        write_value(*target, settings, Variant::value_of(value));
    else
        write_text(element, *target, Variant::value_of(value));
}

}  // namespace hostkit
