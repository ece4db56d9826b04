// The host kit's error boundary: every member's body runs inside it.
//
// Unlike the component, a host raises its errors: the boundary turns exceptions into the HRESULT
// and the thread's error info. It also counts calls, so that a test can make the n-th one fail.
#pragma once

#include <source_location>
#include <type_traits>

#include "automation/call.h"
#include "hostkit/call_watch.h"
#include "model.h"

namespace hostkit {

// Who raises an error that nobody else did.
inline constexpr wchar_t error_source[] = L"KelosHostKit";

// Fault injection, per thread. The n-th counted call from now on (n from 1) fails with the code;
// n = 0 ends it. One call fails; those after it work again.
void fail_call(long n, HRESULT code);
// Counted calls since the last fail_call.
long counted_calls();

// Counts a call and tells the watcher; throws when it is the one that is to fail, or when the
// watcher says so.
void count_call();

// Who is told of the counted calls on this thread; nothing ends it. The caller keeps the watcher
// alive. What the watcher calls itself is not told.
void watch_calls(IHostKitWatcher* watcher);
// The row of a mapping table that the watcher is told with the next calls.
void note_row(long row, long row_count);
// That row; 0 before the first.
long noted_row();

// What a member is. The contract's are written into the log of calls and may fail by their name.
struct Counted {};    // a call of the contract: may be made to fail by its number, too
struct Watched {};    // one of the service or of a control: does not count
struct Uncounted {};  // the kit's own: never fails by request

namespace detail {

template <class Kind, class... Values>
void enter(const Given<Values...>& arguments, const std::source_location& member) {
    if constexpr (!std::is_same_v<Kind, Uncounted>)
        if (CallWatch* const watch = call_watch())
            watch->note(call_name(member.function_name()), arguments.text());
    if constexpr (std::is_same_v<Kind, Counted>) count_call();
}

}  // namespace detail

// Runs the body of a member without result.
template <class Kind = Counted, class Body, class... Values>
HRESULT run(const Given<Values...>& arguments, Body&& body,
            const std::source_location& member = std::source_location::current()) noexcept {
    try {
        detail::enter<Kind>(arguments, member);
        body();
        return S_OK;
    } catch (...) {
        return automation::raise_current_error(error_source);
    }
}
template <class Kind = Counted, class Body>
HRESULT run(Body&& body,
            const std::source_location& member = std::source_location::current()) noexcept {
    return run<Kind>(Given(), body, member);
}

// Runs the body of a member with a result: what the body returns is handed out.
template <class Kind = Counted, class T, class Body, class... Values>
HRESULT answer(T* result, const Given<Values...>& arguments, Body&& body,
               const std::source_location& member = std::source_location::current()) noexcept {
    if (!result) return run<Uncounted>([] { automation::fail(E_POINTER); });
    using Holder = typename automation::Owned<T>::type;
    Holder holder{};
    const HRESULT code = run<Kind>(
        arguments, [&] { holder = body(); }, member);
    if constexpr (requires { holder.detach(); })
        *result = holder.detach();
    else
        *result = holder;
    return code;
}
template <class Kind = Counted, class T, class Body>
HRESULT answer(T* result, Body&& body,
               const std::source_location& member = std::source_location::current()) noexcept {
    return answer<Kind>(result, Given(), body, member);
}

inline VARIANT_BOOL as_variant_bool(bool value) noexcept {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

// The place in a list for an index from 1; null when there is no such item.
template <class List>
auto item_at(List& list, long index) noexcept -> decltype(&list[0]) {
    const bool exists = index >= 1 && static_cast<std::size_t>(index) <= list.size();
    return exists ? &list[static_cast<std::size_t>(index) - 1] : nullptr;
}

}  // namespace hostkit
