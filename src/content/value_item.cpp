#include "content/value_item.h"

namespace tessera {

using automation::BstrView;
using automation::Variant;
using namespace automation::literals;

namespace {

constexpr RecordClass record_class{L"Tessera.ValueItem", L"ValueItem"_bstr, L"1"_bstr};

constexpr MemberName member(const wchar_t* label) {
    return {record_class.source, label};
}

constexpr MemberName set_display_value = member(L"Private Sub 'SetDisplayValue'");
constexpr MemberName set_value = member(L"Private Sub 'SetValue'");

constexpr BstrView item_lcid = L"LCID"_bstr;
constexpr BstrView item_value = L"Value"_bstr;
constexpr BstrView item_display_value = L"DisplayValue"_bstr;

}  // namespace

ValueItem::ValueItem() noexcept : Record(record_class) {}

void ValueItem::SetDisplayValue(uceDataType type, Variant value) noexcept {
    guarded(set_display_value,
            [&] { display_value_ = stored_form(std::move(value), type, lcid_); });
}

void ValueItem::SetValue(uceDataType type, Variant value) noexcept {
    guarded(set_value, [&] { value_ = stored_form(std::move(value), type, lcid_); });
}

void ValueItem::SetDisplayValue(uceDataType type, const VARIANT& value) noexcept {
    guarded(set_display_value, [&] { SetDisplayValue(type, Variant::value_of(value)); });
}

void ValueItem::SetValue(uceDataType type, const VARIANT& value) noexcept {
    guarded(set_value, [&] { SetValue(type, Variant::value_of(value)); });
}

void ValueItem::set_lcid(std::int16_t lcid) noexcept {
    guarded(member(L"Property Let 'LCID'"), [&] {
        const std::int16_t old = std::exchange(lcid_, lcid);
        change_locale(value_, old, lcid_);
        change_locale(display_value_, old, lcid_);
    });
}

STDMETHODIMP ValueItem::get_DisplayValue(uceDataType VType, VARIANT* Result) {
    return answer(Result, member(L"Public Property Get 'DisplayValue'"),
                  [&] { return given_form(display_value_, VType, lcid_); });
}

// Let and set share their work, and the report of its failures.
STDMETHODIMP ValueItem::put_DisplayValue(uceDataType VType, VARIANT NewValue) {
    SetDisplayValue(VType, NewValue);
    return S_OK;
}

STDMETHODIMP ValueItem::putref_DisplayValue(uceDataType VType, VARIANT* NewValue) {
    return NewValue ? put_DisplayValue(VType, *NewValue) : E_POINTER;
}

STDMETHODIMP ValueItem::get_Value(uceDataType VType, VARIANT* Result) {
    return answer(Result, member(L"Public Property Get 'Value'"),
                  [&] { return given_form(value_, VType, lcid_); });
}

STDMETHODIMP ValueItem::put_Value(uceDataType VType, VARIANT NewValue) {
    SetValue(VType, NewValue);
    return S_OK;
}

STDMETHODIMP ValueItem::putref_Value(uceDataType VType, VARIANT* NewValue) {
    return NewValue ? put_Value(VType, *NewValue) : E_POINTER;
}

STDMETHODIMP ValueItem::get_LCID(short* Result) {
    return give(Result, lcid_, member(L"Property Get 'LCID'"));
}

STDMETHODIMP ValueItem::put_LCID(short NewValue) {
    set_lcid(NewValue);
    return S_OK;
}

void ValueItem::write_items(ArchiveNode& title, ArchiveNode&) {
    write_short(title, item_lcid, lcid_);
    XML_WriteItem(title, item_value, value_);
    XML_WriteItem(title, item_display_value, display_value_);
}

void ValueItem::read_items(const ArchiveReader& title, std::int16_t) {
    lcid_ = read_short(title, item_lcid);
    value_ = XML_ReadItem(title, item_value.view());
    display_value_ = XML_ReadItem(title, item_display_value.view());
}

}  // namespace tessera
