#include "content/value.h"

namespace tessera {

using automation::Bstr;
using automation::BstrView;
using automation::Variant;
using automation::view_of;
using namespace automation::literals;

namespace {

constexpr RecordClass record_class{L"Tessera.Value", L"Value"_bstr, L"1"_bstr};

constexpr MemberName member(const wchar_t* label) {
    return {record_class.source, label};
}

constexpr MemberName let_kelos_value = member(L"Property Let 'KelosValue'");
constexpr MemberName let_document_value = member(L"Property Let 'DocumentValue'");

constexpr BstrView item_lcid = L"LCID"_bstr;
constexpr BstrView item_kelos_value = L"KelosValue"_bstr;
constexpr BstrView item_document_value = L"DocumentValue"_bstr;
constexpr BstrView item_io_mode = L"IOMode"_bstr;
constexpr BstrView item_all_numeric = L"AllValuesNumeric"_bstr;
constexpr BstrView item_stay_empty = L"EmptyNumericValueStayEmpty"_bstr;

}  // namespace

Value::Value() noexcept : Record(record_class) {}

void Value::set_kelos_value(uceDataType type, Variant value) noexcept {
    guarded(let_kelos_value, [&] { kelos_value_ = stored_form(std::move(value), type, lcid_); });
}

void Value::set_document_value(uceDataType type, Variant value) noexcept {
    guarded(let_document_value,
            [&] { document_value_ = stored_form(std::move(value), type, lcid_); });
}

void Value::set_lcid(std::int16_t lcid) noexcept {
    guarded(member(L"Property Let 'LCID'"), [&] {
        const std::int16_t old = std::exchange(lcid_, lcid);
        change_locale(kelos_value_, old, lcid_);
        change_locale(document_value_, old, lcid_);
    });
}

void Value::set_io_mode(std::wstring_view mode) noexcept {
    guarded(member(L"Property Let 'IOMode'"), [&] { io_mode_ = Bstr(mode); });
}

STDMETHODIMP Value::get_KelosValue(uceDataType VType, VARIANT* Result) {
    return answer(Result, member(L"Property Get 'KelosValue'"),
                  [&] { return given_form(kelos_value_, VType, lcid_); });
}

STDMETHODIMP Value::put_KelosValue(uceDataType VType, VARIANT NewValue) {
    return trapped(let_kelos_value, [&] { set_kelos_value(VType, Variant::value_of(NewValue)); });
}

STDMETHODIMP Value::get_DocumentValue(uceDataType VType, VARIANT* Result) {
    return answer(Result, member(L"Property Get 'DocumentValue'"),
                  [&] { return given_form(document_value_, VType, lcid_); });
}

STDMETHODIMP Value::put_DocumentValue(uceDataType VType, VARIANT NewValue) {
    return trapped(let_document_value,
                   [&] { set_document_value(VType, Variant::value_of(NewValue)); });
}

STDMETHODIMP Value::get_LCID(short* Result) {
    return give(Result, lcid_, member(L"Property Get 'LCID'"));
}

STDMETHODIMP Value::put_LCID(short NewValue) {
    set_lcid(NewValue);
    return S_OK;
}

STDMETHODIMP Value::get_IOMode(BSTR* Result) {
    return give(Result, io_mode_, member(L"Property Get 'IOMode'"));
}

STDMETHODIMP Value::put_IOMode(BSTR NewValue) {
    set_io_mode(view_of(NewValue));
    return S_OK;
}

STDMETHODIMP Value::get_AllValuesNumeric(VARIANT_BOOL* Result) {
    return give(Result, all_values_numeric_, member(L"Property Get 'AllValuesNumeric'"));
}

STDMETHODIMP Value::put_AllValuesNumeric(VARIANT_BOOL NewValue) {
    return keep(all_values_numeric_, NewValue);
}

STDMETHODIMP Value::get_EmptyNumericValueStayEmpty(VARIANT_BOOL* Result) {
    return give(Result, empty_numeric_value_stay_empty_,
                member(L"Property Get 'EmptyNumericValueStayEmpty'"));
}

STDMETHODIMP Value::put_EmptyNumericValueStayEmpty(VARIANT_BOOL NewValue) {
    return keep(empty_numeric_value_stay_empty_, NewValue);
}

void Value::write_items(ArchiveNode& title, ArchiveNode&) {
    write_short(title, item_lcid, lcid_);
    XML_WriteItem(title, item_kelos_value, kelos_value_);
    XML_WriteItem(title, item_document_value, document_value_);
    write_text(title, item_io_mode, io_mode_);
    write_bool(title, item_all_numeric, all_values_numeric_);
    write_bool(title, item_stay_empty, empty_numeric_value_stay_empty_);
}

void Value::read_items(const ArchiveReader& title, std::int16_t) {
    lcid_ = read_short(title, item_lcid);
    kelos_value_ = XML_ReadItem(title, item_kelos_value.view());
    document_value_ = XML_ReadItem(title, item_document_value.view());
    io_mode_ = read_text(title, item_io_mode);
    all_values_numeric_ = read_bool(title, item_all_numeric);
    empty_numeric_value_stay_empty_ = read_bool(title, item_stay_empty);
}

}  // namespace tessera
