// Late-bound calls: members reached by name or by dispatch id.
//
// All functions throw automation::Error with what the callee put into the exception info; an
// object that is nothing throws "object variable not set".
#pragma once

#include <functional>
#include <initializer_list>

#include "automation/error.h"
#include "automation/variant.h"

namespace automation {

// Arguments in the order in which the member declares them; they stay the caller's.
using Arguments = std::initializer_list<std::reference_wrapper<const VARIANT>>;

DISPID member_id(IDispatch* object, const wchar_t* name);

Variant invoke(IDispatch* object, DISPID member, WORD kind, Arguments arguments = {});

// The object is held meanwhile: what it does may have its owner let go of it.
inline Variant get_property(IDispatch* object, const wchar_t* name, Arguments arguments = {}) {
    const ComPtr<IDispatch> keep(object);
    return invoke(object, member_id(object, name), DISPATCH_PROPERTYGET | DISPATCH_METHOD,
                  arguments);
}
inline Variant call_method(IDispatch* object, const wchar_t* name, Arguments arguments = {}) {
    const ComPtr<IDispatch> keep(object);
    return invoke(object, member_id(object, name), DISPATCH_METHOD, arguments);
}
inline void put_property(IDispatch* object, const wchar_t* name, const VARIANT& value) {
    const ComPtr<IDispatch> keep(object);
    invoke(object, member_id(object, name), DISPATCH_PROPERTYPUT, {value});
}

// The object that a late-bound call returned as a role; nothing when the value holds no object or
// one that does not have the role.
template <class Role>
ComPtr<Role> object_as(const Variant& value) noexcept {
    return value.object().template try_as<Role>();
}

// The factory of a class by its programmatic name.
ComPtr<IClassFactory> class_factory(const wchar_t* programmatic_name);
// Creates an object by its programmatic name and asks it for a role.
ComPtr<IUnknown> create_unknown(const wchar_t* programmatic_name);
template <class Role>
ComPtr<Role> create_object(const wchar_t* programmatic_name) {
    return create_unknown(programmatic_name).template as<Role>();
}

}  // namespace automation
