#include "content/value.h"

#include "content/text_variant.h"

namespace tessera {

using automation::Bstr;
using automation::Variant;
using automation::view_of;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera.Value", label};
}

constexpr wchar_t item_lcid[] = L"LCID";
constexpr wchar_t item_kelos_value[] = L"KelosValue";
constexpr wchar_t item_document_value[] = L"DocumentValue";
constexpr wchar_t item_io_mode[] = L"IOMode";
constexpr wchar_t item_all_numeric[] = L"AllValuesNumeric";
constexpr wchar_t item_stay_empty[] = L"EmptyNumericValueStayEmpty";

}  // namespace

STDMETHODIMP Value::get_KelosValue(uceDataType VType, VARIANT* Result) {
    return trapped(Result, member(L"Property Get 'KelosValue'"),
                   [&](Variant& result) { result = given_form(kelos_value_, VType, lcid_); });
}

STDMETHODIMP Value::put_KelosValue(uceDataType VType, VARIANT NewValue) {
    return trapped(member(L"Property Let 'KelosValue'"),
                   [&] { kelos_value_ = stored_form(NewValue, VType, lcid_); });
}

STDMETHODIMP Value::get_DocumentValue(uceDataType VType, VARIANT* Result) {
    return trapped(Result, member(L"Property Get 'DocumentValue'"),
                   [&](Variant& result) { result = given_form(document_value_, VType, lcid_); });
}

STDMETHODIMP Value::put_DocumentValue(uceDataType VType, VARIANT NewValue) {
    return trapped(member(L"Property Let 'DocumentValue'"),
                   [&] { document_value_ = stored_form(NewValue, VType, lcid_); });
}

STDMETHODIMP Value::get_LCID(short* Result) {
    return trapped(Result, member(L"Property Get 'LCID'"), [&](short& result) { result = lcid_; });
}

STDMETHODIMP Value::put_LCID(short NewValue) {
    return trapped(member(L"Property Let 'LCID'"), [&] {
        const std::int16_t old = std::exchange(lcid_, NewValue);
        change_locale(kelos_value_, old, lcid_);
        change_locale(document_value_, old, lcid_);
    });
}

STDMETHODIMP Value::get_IOMode(BSTR* Result) {
    return trapped(Result, member(L"Property Get 'IOMode'"),
                   [&](Bstr& result) { result = io_mode_; });
}

STDMETHODIMP Value::put_IOMode(BSTR NewValue) {
    return trapped(member(L"Property Let 'IOMode'"), [&] { io_mode_ = Bstr(view_of(NewValue)); });
}

STDMETHODIMP Value::get_AllValuesNumeric(VARIANT_BOOL* Result) {
    return trapped(Result, member(L"Property Get 'AllValuesNumeric'"),
                   [&](VARIANT_BOOL& result) { result = as_variant_bool(all_values_numeric_); });
}

STDMETHODIMP Value::put_AllValuesNumeric(VARIANT_BOOL NewValue) {
    return trapped(member(L"Property Let 'AllValuesNumeric'"),
                   [&] { all_values_numeric_ = NewValue != VARIANT_FALSE; });
}

STDMETHODIMP Value::get_EmptyNumericValueStayEmpty(VARIANT_BOOL* Result) {
    return trapped(
        Result, member(L"Property Get 'EmptyNumericValueStayEmpty'"),
        [&](VARIANT_BOOL& result) { result = as_variant_bool(empty_numeric_value_stay_empty_); });
}

STDMETHODIMP Value::put_EmptyNumericValueStayEmpty(VARIANT_BOOL NewValue) {
    return trapped(member(L"Property Let 'EmptyNumericValueStayEmpty'"),
                   [&] { empty_numeric_value_stay_empty_ = NewValue != VARIANT_FALSE; });
}

void Value::write_items(ArchiveNode& title, ArchiveNode&) {
    write_short(title, item_lcid, lcid_);
    XML_WriteItem(title, item_kelos_value, kelos_value_);
    XML_WriteItem(title, item_document_value, document_value_);
    write_text(title, item_io_mode, io_mode_);
    write_bool(title, item_all_numeric, all_values_numeric_);
    write_bool(title, item_stay_empty, empty_numeric_value_stay_empty_);
}

void Value::read_items(const dom::Node& title, std::int16_t) {
    lcid_ = read_short(title, item_lcid);
    kelos_value_ = XML_ReadItem(title, item_kelos_value);
    document_value_ = XML_ReadItem(title, item_document_value);
    io_mode_ = read_text(title, item_io_mode);
    all_values_numeric_ = read_bool(title, item_all_numeric);
    empty_numeric_value_stay_empty_ = read_bool(title, item_stay_empty);
}

}  // namespace tessera
