// The error boundary: every member's body runs inside it.
//
// Whatever goes wrong is handed to the host's error report together with the class's source text
// and the member's label; then the member returns normally, with the result as far as it got.
// Nothing propagates out of the component.
//
// A class does its work in plain C++ members: they take views, return values, report under their
// own label (`guarded`, `guarded_result`) and never throw. The automation member is one call of
// them: `answer` hands out their result, `give` and `keep` serve a plain field. A member's name
// (source and label) is written once, as a constant where plain and automation member share it.
#pragma once

#include <type_traits>

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

// Runs the body, reports what it throws.
template <class Body>
void guarded(const MemberName& member, Body&& body) noexcept {
    try {
        body();
    } catch (...) {
        report_current_error(member);
    }
}

// For plain members with a result: the body fills it in, and what it filled in before it failed
// counts.
template <class Result, class Body>
Result guarded_result(const MemberName& member, Body&& body) noexcept {
    Result result{};
    guarded(member, [&] { body(result); });
    return result;
}

// For automation members without result.
template <class Body>
HRESULT trapped(const MemberName& member, Body&& body) noexcept {
    guarded(member, body);
    return S_OK;
}

// For automation members with a result that the body fills in.
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

namespace detail {

// A value in the type that holds an automation result.
template <class Holder, class Value>
void assign(Holder& holder, Value&& value) {
    if constexpr (std::is_same_v<std::remove_cvref_t<Value>, bool>)
        holder = as_variant_bool(value);
    else if constexpr (std::is_constructible_v<Holder, Value&&>)
        holder = Holder(std::forward<Value>(value));
    else
        holder = value.main_pointer();
}

}  // namespace detail

// Hands out what a plain member returns: `produce` is only called when there is a place for it.
template <class T, class Produce>
HRESULT answer(T* result, const MemberName& member, Produce&& produce) noexcept {
    return trapped(result, member,
                   [&](auto& holder) { detail::assign(holder, std::forward<Produce>(produce)()); });
}

// Reports that the caller has no place for the member's result.
HRESULT report_missing_place(const MemberName& member) noexcept;

// Hands out a field. A number's way is short: nothing can go wrong on it.
template <class T, class Field>
HRESULT give(T* result, const Field& field, const MemberName& member) noexcept {
    if constexpr (std::is_same_v<T, Field> && (std::is_arithmetic_v<T> || std::is_enum_v<T>)) {
        if (!result) return report_missing_place(member);
        *result = field;
        return S_OK;
    } else {
        return trapped(result, member, [&](auto& holder) { detail::assign(holder, field); });
    }
}

// Stores into a field what a caller gives.
inline HRESULT keep(automation::Bstr& field, BSTR value, const MemberName& member) noexcept {
    return trapped(member, [&] { field = automation::Bstr(automation::view_of(value)); });
}
inline HRESULT keep(bool& field, VARIANT_BOOL value) noexcept {
    field = value != VARIANT_FALSE;
    return S_OK;
}
// Storing a number or sharing an object cannot fail.
template <class Field, class Value>
HRESULT keep(Field& field, Value value) noexcept {
    field = value;
    return S_OK;
}

}  // namespace tessera
