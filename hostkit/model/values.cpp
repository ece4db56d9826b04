#include "hostkit/model/values.h"

#include <charconv>
#include <cwchar>
#include <limits>

#include "automation/error.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::check;
using automation::Variant;

struct TypeName {
    const wchar_t* name;
    ValueType type;
};
constexpr TypeName type_names[] = {
    {L"string", ValueType::text},  {L"double", ValueType::number},
    {L"long", ValueType::integer}, {L"boolean", ValueType::boolean},
    {L"date", ValueType::date},    {L"currency", ValueType::currency},
};

// The locale of the project file's own spelling.
constexpr LCID file_locale = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

std::optional<Variant> read_boolean(std::wstring_view text) {
    if (text == L"true" || text == L"yes") return Variant(true);
    if (text == L"false" || text == L"no") return Variant(false);
    return {};
}

std::optional<Variant> read_date(std::wstring_view text) {
    SYSTEMTIME time{};
    int length = 0;
    const std::wstring copy(text);
    const auto read_all = [&](int fields, int wanted) {
        return fields == wanted && static_cast<std::size_t>(length) == copy.size();
    };
    const bool whole = read_all(
        swscanf(copy.c_str(), L"%4hu-%2hu-%2huT%2hu:%2hu:%2hu%n", &time.wYear, &time.wMonth,
                &time.wDay, &time.wHour, &time.wMinute, &time.wSecond, &length),
        6);
    if (!whole && !read_all(swscanf(copy.c_str(), L"%4hu-%2hu-%2hu%n", &time.wYear, &time.wMonth,
                                    &time.wDay, &length),
                            3))
        return {};
    Variant result;
    result.vt = VT_DATE;
    SYSTEMTIME back{};
    const bool exists = SystemTimeToVariantTime(&time, &result.date) &&
                        VariantTimeToSystemTime(result.date, &back) && back.wDay == time.wDay &&
                        back.wHour == time.wHour;
    // A day or an hour that does not exist is counted on by the platform.
    if (!exists) return {};
    return result;
}

std::optional<Variant> read_currency(std::wstring_view text) {
    double number = 0;
    if (!read_number(text, number)) return {};
    Variant result;
    result.vt = VT_CY;
    std::wstring copy(text);
    if (FAILED(VarCyFromStr(copy.data(), file_locale, LOCALE_NOUSEROVERRIDE, &result.cyVal)))
        return {};
    return result;
}

template <class Number>
std::optional<Variant> read_as_number(std::wstring_view text) {
    Number number{};
    if (!read_number(text, number)) return {};
    return Variant(number);
}

std::wstring locale_text(LCID locale, LCTYPE kind) {
    wchar_t text[16]{};
    GetLocaleInfoW(locale, kind | LOCALE_NOUSEROVERRIDE, text, 16);
    return text;
}

Bstr fixed_text(double value, LCID locale, int decimals) {
    constexpr int before_point = std::numeric_limits<double>::max_exponent10 + 1;
    char digits[before_point + sizeof "-." + most_decimals];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
    std::wstring text;
    for (const char* digit = digits; digit != end.ptr; ++digit) {
        if (*digit == '.')
            text += locale_text(locale, LOCALE_SDECIMAL);
        else
            text += static_cast<wchar_t>(*digit);
    }
    return Bstr(text);
}

// Written with the locale's own patterns: the platform's conversion of dates differs from version
// to version.
Bstr date_text(DATE date, LCID locale) {
    SYSTEMTIME time{};
    if (!VariantTimeToSystemTime(date, &time)) automation::fail(E_INVALIDARG);
    wchar_t day[80]{};
    GetDateFormatW(locale, LOCALE_NOUSEROVERRIDE | DATE_SHORTDATE, &time, nullptr, day, 80);
    if (time.wHour == 0 && time.wMinute == 0 && time.wSecond == 0) return Bstr(day);
    wchar_t clock[80]{};
    GetTimeFormatW(locale, LOCALE_NOUSEROVERRIDE, &time, nullptr, clock, 80);
    return Bstr(std::wstring(day) + L" " + clock);
}

std::wstring written_date(DATE date) {
    SYSTEMTIME time{};
    if (!VariantTimeToSystemTime(date, &time)) automation::fail(E_INVALIDARG);
    wchar_t text[32]{};
    const int length =
        swprintf(text, std::size(text), L"%04u-%02u-%02u", time.wYear, time.wMonth, time.wDay);
    if (time.wHour == 0 && time.wMinute == 0 && time.wSecond == 0) return text;
    swprintf(text + length, std::size(text) - static_cast<std::size_t>(length), L"T%02u:%02u:%02u",
             time.wHour, time.wMinute, time.wSecond);
    return text;
}

Bstr plain_text(const VARIANT& value, LCID locale) {
    Variant text;
    check(VariantChangeTypeEx(&text, const_cast<VARIANT*>(&value), locale,
                              VARIANT_NOUSEROVERRIDE | VARIANT_LOCALBOOL, VT_BSTR));
    return Bstr::attach(text.detach().bstrVal);
}

}  // namespace

std::optional<ValueType> value_type_of(std::wstring_view name) noexcept {
    for (const TypeName& known : type_names)
        if (name == known.name) return known.type;
    return {};
}

std::optional<Variant> read_value(ValueType type, std::wstring_view text) {
    switch (type) {
        case ValueType::text:
            return Variant(text);
        case ValueType::number:
            return read_as_number<double>(text);
        case ValueType::integer:
            return read_as_number<long>(text);
        case ValueType::boolean:
            return read_boolean(text);
        case ValueType::date:
            return read_date(text);
        case ValueType::currency:
            return read_currency(text);
    }
    return {};
}

std::wstring written_value(const VARIANT& value) {
    switch (value.vt) {
        case VT_BOOL:
            return value.boolVal != VARIANT_FALSE ? L"true" : L"false";
        case VT_DATE:
            return written_date(value.date);
        case VT_R8: {
            char digits[40];
            const auto end = std::to_chars(digits, digits + sizeof digits, value.dblVal).ptr;
            return std::wstring(digits, end);
        }
        default: {
            Variant text;
            check(VariantChangeTypeEx(&text, const_cast<VARIANT*>(&value), file_locale,
                                      VARIANT_NOUSEROVERRIDE, VT_BSTR));
            return std::wstring(text.text());
        }
    }
}

Bstr display_text(const VARIANT& value, LCID locale, int decimals) {
    switch (value.vt) {
        case VT_EMPTY:
            return {};
        case VT_BSTR:
            return Bstr(automation::view_of(value.bstrVal));
        case VT_DATE:
            return date_text(value.date, locale);
        case VT_R8:
            if (decimals >= 0) return fixed_text(value.dblVal, locale, decimals);
            break;
        case VT_CY:
            if (decimals >= 0)
                return fixed_text(static_cast<double>(value.cyVal.int64) / 10000, locale, decimals);
            break;
        default:
            break;
    }
    return plain_text(value, locale);
}

const ListItem* ValueList::find(const VARIANT& value) const {
    for (const ListItem& item : items)
        if (VarCmp(const_cast<Variant*>(&item.value), const_cast<VARIANT*>(&value),
                   LOCALE_INVARIANT, 0) == static_cast<HRESULT>(VARCMP_EQ))
            return &item;
    return nullptr;
}

}  // namespace hostkit
