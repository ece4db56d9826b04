#include "content/value_item.h"

#include "content/text_variant.h"

namespace tessera {

using automation::Variant;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera.ValueItem", label};
}

constexpr wchar_t item_lcid[] = L"LCID";
constexpr wchar_t item_value[] = L"Value";
constexpr wchar_t item_display_value[] = L"DisplayValue";

}  // namespace

STDMETHODIMP ValueItem::get_DisplayValue(uceDataType VType, VARIANT* Result) {
    return trapped(Result, member(L"Public Property Get 'DisplayValue'"),
                   [&](Variant& result) { result = given_form(display_value_, VType, lcid_); });
}

STDMETHODIMP ValueItem::put_DisplayValue(uceDataType VType, VARIANT NewValue) {
    return trapped(member(L"Public Property Let 'DisplayValue'"),
                   [&] { SetDisplayValue(VType, NewValue); });
}

STDMETHODIMP ValueItem::putref_DisplayValue(uceDataType VType, VARIANT NewValue) {
    return trapped(member(L"Public Property Set 'DisplayValue'"),
                   [&] { SetDisplayValue(VType, NewValue); });
}

STDMETHODIMP ValueItem::get_Value(uceDataType VType, VARIANT* Result) {
    return trapped(Result, member(L"Public Property Get 'Value'"),
                   [&](Variant& result) { result = given_form(value_, VType, lcid_); });
}

STDMETHODIMP ValueItem::put_Value(uceDataType VType, VARIANT NewValue) {
    return trapped(member(L"Public Property Let 'Value'"), [&] { SetValue(VType, NewValue); });
}

STDMETHODIMP ValueItem::putref_Value(uceDataType VType, VARIANT NewValue) {
    return trapped(member(L"Public Property Set 'Value'"), [&] { SetValue(VType, NewValue); });
}

STDMETHODIMP ValueItem::get_LCID(short* Result) {
    return trapped(Result, member(L"Property Get 'LCID'"), [&](short& result) { result = lcid_; });
}

STDMETHODIMP ValueItem::put_LCID(short NewValue) {
    return trapped(member(L"Property Let 'LCID'"), [&] {
        const std::int16_t old = std::exchange(lcid_, NewValue);
        change_locale(value_, old, lcid_);
        change_locale(display_value_, old, lcid_);
    });
}

void ValueItem::SetDisplayValue(uceDataType type, const VARIANT& value) noexcept {
    guarded(member(L"Private Sub 'SetDisplayValue'"),
            [&] { display_value_ = stored_form(value, type, lcid_); });
}

void ValueItem::SetValue(uceDataType type, const VARIANT& value) noexcept {
    guarded(member(L"Private Sub 'SetValue'"), [&] { value_ = stored_form(value, type, lcid_); });
}

void ValueItem::write_items(ArchiveNode& title, ArchiveNode&) {
    write_short(title, item_lcid, lcid_);
    XML_WriteItem(title, item_value, value_);
    XML_WriteItem(title, item_display_value, display_value_);
}

void ValueItem::read_items(const dom::Node& title, std::int16_t) {
    lcid_ = read_short(title, item_lcid);
    value_ = XML_ReadItem(title, item_value);
    display_value_ = XML_ReadItem(title, item_display_value);
}

}  // namespace tessera
