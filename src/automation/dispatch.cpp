#include "automation/dispatch.h"

#include <cguid.h>

#include <array>
#include <stdexcept>

#include "automation/exception_info.h"

namespace automation {
namespace {

// More than any member of the contract takes; a fixed array keeps late-bound calls free of
// allocations.
constexpr std::size_t max_arguments = 8;

[[noreturn]] void raise(ExceptionInfo& exception) {
    exception.fill_in();
    const HRESULT number = static_cast<HRESULT>(0x800A0000L | exception.wCode);
    throw Error(FAILED(exception.scode) ? exception.scode : number,
                Bstr(view_of(exception.bstrDescription)), Bstr(view_of(exception.bstrSource)));
}

}  // namespace

DISPID member_id(IDispatch* object, const wchar_t* name) {
    DISPID id = DISPID_UNKNOWN;
    auto* text = const_cast<wchar_t*>(name);
    check(require(object)->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id));
    return id;
}

Variant invoke(IDispatch* object, DISPID member, WORD kind, Arguments arguments) {
    if (arguments.size() > max_arguments) throw std::length_error("late-bound call");
    // The platform wants them last first; the copies are shallow and are not cleared.
    std::array<VARIANT, max_arguments> reversed;
    std::size_t index = arguments.size();
    for (const VARIANT& argument : arguments)
        reversed[--index] = argument;

    DISPID value_name = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    const bool puts = kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    if (puts) {
        parameters.rgdispidNamedArgs = &value_name;
        parameters.cNamedArgs = 1;
    }
    Variant result;
    ExceptionInfo exception;
    UINT bad_argument = 0;
    const ComPtr<IDispatch> keep = require(object);
    const HRESULT code = keep->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                      puts ? nullptr : &result, &exception, &bad_argument);
    if (code == DISP_E_EXCEPTION) raise(exception);
    check(code);
    return result;
}

ComPtr<IClassFactory> class_factory(const wchar_t* programmatic_name) {
    CLSID class_id;
    check(CLSIDFromProgID(programmatic_name, &class_id));
    ComPtr<IClassFactory> factory;
    check(CoGetClassObject(class_id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                           reinterpret_cast<void**>(factory.put())));
    return factory;
}

ComPtr<IUnknown> create_unknown(const wchar_t* programmatic_name) {
    CLSID class_id;
    check(CLSIDFromProgID(programmatic_name, &class_id));
    ComPtr<IUnknown> result;
    check(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                           reinterpret_cast<void**>(result.put())));
    return result;
}

}  // namespace automation
