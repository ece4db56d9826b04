// An automation object whose members are called by name; all values are variants. What cannot be
// called throws _com_error.
#pragma once

#include <windows.h>

#include <comdef.h>

#include <initializer_list>
#include <vector>

class LateObject {
  public:
    explicit LateObject(const _variant_t& value) : value_(value) {
        if (value_.vt != VT_DISPATCH) _com_util::CheckError(DISP_E_TYPEMISMATCH);
    }

    bool is_nothing() const { return value_.pdispVal == nullptr; }
    const _variant_t& value() const { return value_; }

    template <class... Arguments>
    _variant_t get(const wchar_t* member, const Arguments&... arguments) const {
        return invoke(member, DISPATCH_PROPERTYGET, {_variant_t(arguments)...});
    }
    template <class... Arguments>
    _variant_t call(const wchar_t* member, const Arguments&... arguments) const {
        return invoke(member, DISPATCH_METHOD, {_variant_t(arguments)...});
    }
    template <class... Arguments>
    LateObject object(const wchar_t* member, const Arguments&... arguments) const {
        return LateObject(get(member, arguments...));
    }
    // The last argument is the new value.
    template <class... Arguments>
    void set(const wchar_t* member, const Arguments&... arguments) const {
        invoke(member, DISPATCH_PROPERTYPUT, {_variant_t(arguments)...});
    }
    template <class... Arguments>
    void set_object(const wchar_t* member, const Arguments&... arguments) const {
        invoke(member, DISPATCH_PROPERTYPUTREF, {_variant_t(arguments)...});
    }

  private:
    _variant_t invoke(const wchar_t* member, WORD kind,
                      std::initializer_list<_variant_t> arguments) const {
        auto* name = const_cast<wchar_t*>(member);
        DISPID id = DISPID_UNKNOWN;
        if (is_nothing()) _com_util::CheckError(E_POINTER);
        _com_util::CheckError(
            value_.pdispVal->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));

        // The last argument comes first. The variants are borrowed: `arguments` owns what they
        // hold.
        std::vector<VARIANT> reversed(std::rbegin(arguments), std::rend(arguments));
        DISPID new_value = DISPID_PROPERTYPUT;
        DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        if (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
            parameters.rgdispidNamedArgs = &new_value;
            parameters.cNamedArgs = 1;
        }
        _variant_t result;
        _com_util::CheckError(value_.pdispVal->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind,
                                                      &parameters, &result, nullptr, nullptr));
        return result;
    }

    _variant_t value_;
};

inline LateObject create(const wchar_t* program_name) {
    CLSID class_id;
    IDispatch* object = nullptr;
    _com_util::CheckError(CLSIDFromProgID(program_name, &class_id));
    _com_util::CheckError(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                           reinterpret_cast<void**>(&object)));
    return LateObject(_variant_t(object, false));
}

inline _variant_t nothing() {
    return _variant_t(static_cast<IDispatch*>(nullptr));
}
