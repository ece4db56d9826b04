// The one exception type of the component, how failed calls become one, and how any exception
// becomes the number and description of an error report.
#pragma once

#include <exception>

#include "automation/bstr.h"
#include "automation/com_ptr.h"

namespace automation {

// Run-time errors that automation names by a control error number rather than by an HRESULT.
inline constexpr HRESULT error_invalid_procedure_call = CTL_E_ILLEGALFUNCTIONCALL;
inline constexpr HRESULT error_invalid_use_of_null = CTL_E_INVALIDUSEOFNULL;
inline constexpr HRESULT error_object_variable_not_set = static_cast<HRESULT>(0x800A005BL);
inline constexpr HRESULT error_subscript_out_of_range = DISP_E_BADINDEX;
inline constexpr HRESULT error_type_mismatch = DISP_E_TYPEMISMATCH;
inline constexpr HRESULT error_overflow = DISP_E_OVERFLOW;
inline constexpr HRESULT error_out_of_stack_space = CTL_E_OUTOFSTACKSPACE;

// A failure: its code, what happened in words, and who said so (empty when nobody did).
class Error : public std::exception {
  public:
    explicit Error(HRESULT code, Bstr description = {}, Bstr source = {})
        : code_(code), description_(std::move(description)), source_(std::move(source)) {}
    HRESULT code() const noexcept { return code_; }
    const Bstr& description() const noexcept { return description_; }
    const Bstr& source() const noexcept { return source_; }
    const char* what() const noexcept override { return "automation error"; }

  private:
    HRESULT code_;
    Bstr description_;
    Bstr source_;
};

// What there is to say about an exception. Description is never empty unless memory ran out.
struct ErrorReport {
    HRESULT code = E_FAIL;
    Bstr description;
    Bstr source;
};

[[noreturn]] void fail(HRESULT code);
[[noreturn]] void fail(HRESULT code, std::wstring_view description);

// For functions of the platform, which leave no error info.
inline void check(HRESULT code) {
    if (FAILED(code)) fail(code);
}

// Throws what a callee left behind for its failed member; to be called right after the failed call.
[[noreturn]] void fail_callee(HRESULT code, IUnknown* callee, REFIID interface_id);

// For calls of members: picks up the callee's error info at once.
template <class Interface>
void check(HRESULT code, Interface* callee) {
    if (FAILED(code)) fail_callee(code, callee, __uuidof(Interface));
}
template <class Interface>
void check(HRESULT code, const ComPtr<Interface>& callee) {
    check(code, callee.get());
}

// Nothing is no callee: throws "object variable not set".
template <class Pointer>
const Pointer& require(const Pointer& object) {
    if (!object) fail(error_object_variable_not_set);
    return object;
}

// Turns the exception being handled into a report. The only function that looks at exception types.
ErrorReport current_error() noexcept;

// For members that raise their errors, as their objects' ISupportErrorInfo says: leaves what there
// is to say about the exception being handled for the caller, and answers its code. `source` speaks
// where nobody else does.
HRESULT raise_current_error(const wchar_t* source) noexcept;

}  // namespace automation
