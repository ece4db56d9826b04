#include "automation/conversion.h"

#include <string>

#include "automation/error.h"

namespace automation {
namespace {

bool reads_as_number(const wchar_t* text) {
    // Room for the digits of any number that a double can tell apart; the rest becomes exponent.
    BYTE digits[64];
    NUMPARSE parsed{};
    parsed.cDig = sizeof digits;
    parsed.dwInFlags = NUMPRS_STD;
    auto* input = const_cast<wchar_t*>(text);
    if (FAILED(VarParseNumFromStr(input, LOCALE_USER_DEFAULT, 0, &parsed, digits))) return false;
    Variant number;
    return SUCCEEDED(VarNumFromParseNum(&parsed, digits, VTBIT_R8, &number));
}

BstrView simple_type_name(VARTYPE type) {
    switch (type) {
        case VT_EMPTY:
            return L"Empty"_bstr;
        case VT_NULL:
            return L"Null"_bstr;
        case VT_I2:
            return L"Integer"_bstr;
        case VT_I4:
        case VT_INT:
            return L"Long"_bstr;
        case VT_I8:
            return L"LongLong"_bstr;
        case VT_R4:
            return L"Single"_bstr;
        case VT_R8:
            return L"Double"_bstr;
        case VT_CY:
            return L"Currency"_bstr;
        case VT_DATE:
            return L"Date"_bstr;
        case VT_BSTR:
            return L"String"_bstr;
        case VT_DISPATCH:
            return L"Object"_bstr;
        case VT_ERROR:
            return L"Error"_bstr;
        case VT_BOOL:
            return L"Boolean"_bstr;
        case VT_VARIANT:
            return L"Variant"_bstr;
        case VT_DECIMAL:
            return L"Decimal"_bstr;
        case VT_UI1:
            return L"Byte"_bstr;
        default:
            return L"Unknown"_bstr;
    }
}

Bstr documented_name(ITypeInfo* info) {
    Bstr name;
    if (info) info->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
    return name;
}

// The class when the object knows it, else the interface that it is called through.
Bstr object_type_name(IUnknown* object) {
    if (!object) return Bstr(L"Nothing");
    const ComPtr<IUnknown> holder(object);
    ComPtr<ITypeInfo> info;
    if (const auto provider = holder.try_as<IProvideClassInfo>())
        if (FAILED(provider->GetClassInfo(info.put()))) info.reset();
    if (!info)
        if (const auto dispatch = holder.try_as<IDispatch>())
            if (FAILED(dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put()))) info.reset();
    Bstr name = documented_name(info.get());
    return name.empty() ? Bstr(L"Object") : name;
}

}  // namespace

Variant to_type(const VARIANT& value, VARTYPE type, USHORT flags) {
    if (value.vt & VT_BYREF) return to_type(Variant::value_of(value), type, flags);
    if (value.vt == VT_NULL) fail(error_invalid_use_of_null);
    Variant result;
    check(VariantChangeTypeEx(&result, const_cast<VARIANT*>(&value), LOCALE_USER_DEFAULT, flags,
                              type));
    return result;
}

Bstr to_text(const VARIANT& value) {
    VARIANT text = to_type(value, VT_BSTR, VARIANT_ALPHABOOL).detach();
    return Bstr::attach(text.bstrVal);
}

BstrOrView text_of(const VARIANT& value) {
    if (value.vt == VT_BSTR) return BstrView(value.bstrVal);
    // Whole numbers have the same text in every locale.
    if (value.vt == VT_I2) return NumberText(value.iVal);
    if (value.vt == VT_I4) return NumberText(value.lVal);
    return to_text(value);
}

long to_long(const VARIANT& value) {
    return to_type(value, VT_I4).lVal;
}

std::int16_t to_short(const VARIANT& value) {
    return to_type(value, VT_I2).iVal;
}

bool to_bool(const VARIANT& value) {
    return to_type(value, VT_BOOL).boolVal != VARIANT_FALSE;
}

bool is_numeric(BstrView text) {
    // A NUL inside would hide the rest of the text from the platform's parser.
    if (text.view().find(L'\0') != std::wstring_view::npos) return false;
    return reads_as_number(text.get() ? text.get() : L"");
}

bool is_numeric(std::wstring_view text) {
    return is_numeric(Bstr(text));
}

bool is_numeric(const VARIANT& value) {
    if (value.vt & VT_BYREF) return is_numeric(Variant::value_of(value));
    switch (value.vt) {
        case VT_EMPTY:
        case VT_I1:
        case VT_UI1:
        case VT_I2:
        case VT_UI2:
        case VT_I4:
        case VT_UI4:
        case VT_I8:
        case VT_UI8:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DECIMAL:
        case VT_BOOL:
            return true;
        case VT_BSTR:
            return is_numeric(BstrView(value.bstrVal));
        default:
            return false;
    }
}

BstrOrView type_name(const VARIANT& value) {
    if (value.vt & VT_BYREF) return type_name(Variant::value_of(value));
    if (value.vt & VT_ARRAY) {
        const BstrView element = simple_type_name(value.vt & VT_TYPEMASK);
        return Bstr(std::wstring(element.view()) + L"()");
    }
    if (value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) return object_type_name(value.punkVal);
    return simple_type_name(value.vt);
}

}  // namespace automation
