// The base of every automation object: IUnknown, IDispatch over the type library, class
// information and error info support, so that a class file holds only what the class does.
//
//     class Language : public automation::Object<Language, IKelosLanguage> { … };
//     ComPtr<Language> language = automation::make<Language>(name, lcid);
//
// Self        the class itself. It may have
//                 static constexpr GUID private_id   answers `own_object` (see below)
// Interfaces  what the object answers; the first is the one that IDispatch speaks for, and the
//             coclass whose default it is gives the object's type name. One that
//             extends another interface of the contract names it: Extends<IKelosDocument,
//             IKelosObject>.
//
// Lifetime: only `make` creates objects; the reference count is 1 during destruction.
#pragma once

#include <type_traits>

#include "automation/call.h"
#include "automation/late_arguments.h"
#include "automation/plain_object.h"

namespace automation {

// An interface together with the dual interfaces that it inherits and that are answered with it.
template <class Interface, class... Inherited>
struct Extends {};

namespace detail {

template <class Entry>
struct Entry_ {
    using Interface = Entry;
    static bool is(REFIID id) noexcept { return id == __uuidof(Entry); }
};
template <class Derived, class... Inherited>
struct Entry_<Extends<Derived, Inherited...>> {
    using Interface = Derived;
    static bool is(REFIID id) noexcept {
        return id == __uuidof(Derived) || ((id == __uuidof(Inherited)) || ...);
    }
};
template <class Entry>
using interface_of = typename Entry_<Entry>::Interface;

// Automation interfaces raise their errors with words; others, of windows or private, leave none.
template <class Entry>
bool raises(REFIID id) noexcept {
    return std::is_base_of_v<IDispatch, interface_of<Entry>> && Entry_<Entry>::is(id);
}

template <class Interface>
ITypeInfo* info_of() {
    static TypeInfoSlot slot(__uuidof(Interface));
    return slot.get();
}

}  // namespace detail

template <class Self, class Main, class... More>
class Object : public ReferenceCounted<detail::interface_of<Main>, detail::interface_of<More>...,
                                       ISupportErrorInfo, IProvideClassInfo> {
  public:
    using MainInterface = detail::interface_of<Main>;

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 1;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (!info) return E_POINTER;
        *info = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        return with_type_info([&](ITypeInfo* own) {
            own->AddRef();
            *info = own;
            return S_OK;
        });
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return with_type_info(
            [&](ITypeInfo* own) { return own->GetIDsOfNames(names, count, ids); });
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) override {
        return with_type_info([&](ITypeInfo* own) {
            return invoke_member(own, static_cast<MainInterface*>(this), member, kind, parameters,
                                 result, exception, bad_argument);
        });
    }

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override {
        const bool raises = detail::raises<Main>(id) || (detail::raises<More>(id) || ...);
        return raises ? S_OK : S_FALSE;
    }

    STDMETHODIMP GetClassInfo(ITypeInfo** info) override {
        if (!info) return E_POINTER;
        *info = nullptr;
        ITypeInfo* const known = class_info();
        if (!known) return E_NOTIMPL;
        known->AddRef();
        *info = known;
        return S_OK;
    }

    MainInterface* main_interface() noexcept { return static_cast<MainInterface*>(this); }
    ComPtr<MainInterface> main_pointer() noexcept { return main_interface(); }

  protected:
    // Answered by `make` alone, so that no object can stand on the stack.
    virtual void made_by_make() const noexcept = 0;

  private:
    void* find_interface(REFIID id) noexcept override {
        if (id == IID_IUnknown || id == IID_IDispatch || detail::Entry_<Main>::is(id))
            return static_cast<MainInterface*>(this);
        if (id == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
        if (id == IID_IProvideClassInfo)
            return class_info() ? static_cast<IProvideClassInfo*>(this) : nullptr;
        if constexpr (requires { Self::private_id; })
            if (id == Self::private_id) return static_cast<Self*>(this);
        void* found = nullptr;
        static_cast<void>(((detail::Entry_<More>::is(id)
                                ? (found = static_cast<detail::interface_of<More>*>(this), true)
                                : false) ||
                           ...));
        return found;
    }

    // Nothing for a class that is not in the type library.
    static ITypeInfo* class_info() noexcept {
        try {
            return class_of_interface(__uuidof(MainInterface));
        } catch (...) {
            return nullptr;
        }
    }

    template <class Use>
    static HRESULT with_type_info(Use&& use) noexcept {
        try {
            // Its own reference: the member that is called may let the module's last object die.
            const ComPtr<ITypeInfo> info(detail::info_of<MainInterface>());
            return use(info.get());
        } catch (...) {
            return current_error().code;
        }
    }
};

namespace detail {

template <class Self>
class Made final : public Self {
  public:
    using Self::Self;

  private:
    void made_by_make() const noexcept override {}
};

}  // namespace detail

template <class Self, class... Parameters>
ComPtr<Self> make(Parameters&&... parameters) {
    return ComPtr<Self>::attach(new detail::Made<Self>(std::forward<Parameters>(parameters)...));
}

// The component's own object behind an interface, or nothing when it is somebody else's. This is
// how internal members are reached: they are in no type library, and only the component's own
// classes answer their private id.
template <class Self>
ComPtr<Self> own_object(IUnknown* object) noexcept {
    void* found = nullptr;
    if (!object || FAILED(object->QueryInterface(Self::private_id, &found))) return {};
    return ComPtr<Self>::attach(static_cast<Self*>(found));
}

}  // namespace automation
