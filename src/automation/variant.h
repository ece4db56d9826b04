// An owning automation variant.
#pragma once

#include <cstdint>

#include "automation/bstr.h"
#include "automation/com_ptr.h"

namespace automation {

// A VARIANT that clears itself. Copies are deep where the platform's are: strings and arrays are
// duplicated, objects are shared. Values given by reference are never kept: `value_of` resolves.
class Variant : public VARIANT {
  public:
    Variant() noexcept : VARIANT{} {}
    explicit Variant(bool value) noexcept : Variant() {
        vt = VT_BOOL;
        boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    explicit Variant(std::int16_t value) noexcept : Variant() {
        vt = VT_I2;
        iVal = value;
    }
    explicit Variant(long value) noexcept : Variant() {
        vt = VT_I4;
        lVal = value;
    }
    explicit Variant(double value) noexcept : Variant() {
        vt = VT_R8;
        dblVal = value;
    }
    explicit Variant(Bstr text) noexcept : Variant() {
        vt = VT_BSTR;
        bstrVal = text.detach();
    }
    explicit Variant(std::wstring_view text) : Variant(Bstr(text)) {}
    explicit Variant(const wchar_t* text) : Variant(Bstr(text)) {}
    explicit Variant(IDispatch* object) noexcept : Variant() {
        vt = VT_DISPATCH;
        pdispVal = object;
        if (object) object->AddRef();
    }
    Variant(const Variant& other) : Variant() { assign(other); }
    Variant(Variant&& other) noexcept : VARIANT(other) { other.vt = VT_EMPTY; }
    ~Variant() {
        if (is_owner()) VariantClear(this);
    }
    Variant& operator=(Variant other) noexcept {
        std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
        return *this;
    }

    // A copy of the value itself, also when `source` only refers to it (VT_BYREF). Throws.
    static Variant value_of(const VARIANT& source);
    // What automation passes for an optional argument that was left out.
    static Variant missing() noexcept {
        Variant result;
        result.vt = VT_ERROR;
        result.scode = DISP_E_PARAMNOTFOUND;
        return result;
    }

    VARIANT* put() noexcept {
        VariantClear(this);
        return this;
    }
    [[nodiscard]] VARIANT detach() noexcept {
        const VARIANT result = *this;
        vt = VT_EMPTY;
        return result;
    }

    bool is_string() const noexcept { return vt == VT_BSTR; }
    bool is_object() const noexcept { return vt == VT_DISPATCH || vt == VT_UNKNOWN; }
    // The text of a string variant; empty for every other type.
    std::wstring_view text() const noexcept {
        return is_string() ? view_of(bstrVal) : std::wstring_view();
    }
    // The object of an object variant; nothing for every other type.
    ComPtr<IUnknown> object() const noexcept {
        return is_object() ? ComPtr<IUnknown>(punkVal) : ComPtr<IUnknown>();
    }

  private:
    // Of something that is to be given back; numbers and dates are not.
    bool is_owner() const noexcept {
        return vt == VT_BSTR || vt == VT_DISPATCH || vt == VT_UNKNOWN || vt > VT_UINT;
    }
    void assign(const VARIANT& source);
};

}  // namespace automation
