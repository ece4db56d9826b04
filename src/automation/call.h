// Calls of vtable members that own what they return and throw what went wrong.
//
//     Bstr uid = get(object, &IKelosObject::get_SystemUID);
//     call(service, &IKelosService::Trace, text.get());
//
// A callee that is nothing throws "object variable not set". A failing member throws its error
// with the error info that it left.
#pragma once

#include <tuple>
#include <type_traits>
#include <utility>

#include "automation/error.h"
#include "automation/variant.h"

struct IXMLDOMNode;

namespace automation {

// How a returned value is owned: `type` holds it, `put` gives the address to write to.
template <class T>
struct Owned {
    using type = T;
    static T* put(T& holder) noexcept { return &holder; }
    static type finish(T& holder) noexcept { return holder; }
};
template <>
struct Owned<BSTR> {
    using type = Bstr;
    static BSTR* put(Bstr& holder) noexcept { return holder.put(); }
    static type finish(Bstr& holder) noexcept { return std::move(holder); }
};
template <>
struct Owned<VARIANT> {
    using type = Variant;
    static VARIANT* put(Variant& holder) noexcept { return holder.put(); }
    static type finish(Variant& holder) noexcept { return std::move(holder); }
};
template <class I>
requires std::is_base_of_v<IUnknown, I>
struct Owned<I*> {
    using type = ComPtr<I>;
    static I** put(ComPtr<I>& holder) noexcept { return holder.put(); }
    static type finish(ComPtr<I>& holder) noexcept { return std::move(holder); }
};

// The callee for the time of its call. Foreign code may come back to the caller, who then lets go
// of the very object that is at work: it must stay. Nodes of the parser call nobody.
template <class Interface>
auto held(Interface* callee) noexcept {
    if constexpr (std::is_base_of_v<IXMLDOMNode, Interface>)
        return callee;
    else
        return ComPtr<Interface>(callee);
}
template <class Interface>
auto held(const ComPtr<Interface>& callee) noexcept {
    return held(callee.get());
}
template <class Interface>
Interface* held(ComPtr<Interface>&& temporary) noexcept {
    return temporary.get();
}

template <class Interface>
Interface* raw(Interface* pointer) noexcept {
    return pointer;
}
template <class Interface>
Interface* raw(const ComPtr<Interface>& pointer) noexcept {
    return pointer.get();
}

// The last parameter of the member is the address of its result.
template <class Callee, class Declaring, class... Parameters, class... Arguments>
auto get(Callee&& callee, HRESULT (STDMETHODCALLTYPE Declaring::*member)(Parameters...),
         Arguments... arguments) {
    using Address = std::tuple_element_t<sizeof...(Parameters) - 1, std::tuple<Parameters...>>;
    using Result = Owned<std::remove_pointer_t<Address>>;
    const auto keep = held(std::forward<Callee>(callee));
    auto* const object = require(raw(keep));
    typename Result::type result{};
    check((object->*member)(arguments..., Result::put(result)), static_cast<Declaring*>(object));
    return Result::finish(result);
}

template <class Callee, class Declaring, class... Parameters, class... Arguments>
void call(Callee&& callee, HRESULT (STDMETHODCALLTYPE Declaring::*member)(Parameters...),
          Arguments... arguments) {
    const auto keep = held(std::forward<Callee>(callee));
    auto* const object = require(raw(keep));
    check((object->*member)(arguments...), static_cast<Declaring*>(object));
}

}  // namespace automation
