// The error boundary: every member's body runs inside it.
//
// Whatever goes wrong is handed to the host's error report together with the class's source text
// and the member's label; then the member returns normally, with the result as far as it got.
// Nothing propagates out of the component.
#pragma once

#include "automation/call.h"

namespace tessera {

// Where an error happened, in the words that the error report gets.
struct MemberName {
    const wchar_t* source;
    const wchar_t* label;
};

// Hands the exception being handled to the host. If the host service itself cannot be had or
// refuses, nothing more can be done, and nothing happens.
void report_current_error(const MemberName& member) noexcept;

// For internal procedures: runs the body, reports what it throws.
template <class Body>
void guarded(const MemberName& member, Body&& body) noexcept {
    try {
        body();
    } catch (...) {
        report_current_error(member);
    }
}

// For members without result.
template <class Body>
HRESULT trapped(const MemberName& member, Body&& body) noexcept {
    guarded(member, body);
    return S_OK;
}

// For members with a result: the body fills it in, and what it filled in before it failed counts.
template <class T, class Body>
HRESULT trapped(T* result, const MemberName& member, Body&& body) noexcept {
    using Result = automation::Owned<T>;
    typename Result::type holder{};
    guarded(member, [&] {
        if (!result) automation::fail(E_POINTER);
        body(holder);
    });
    if (result) {
        if constexpr (requires { holder.detach(); })
            *result = holder.detach();
        else
            *result = holder;
    }
    return S_OK;
}

inline VARIANT_BOOL as_variant_bool(bool value) noexcept {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace tessera
