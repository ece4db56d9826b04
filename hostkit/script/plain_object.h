// The base of objects that are no automation objects over the type library: what the platform
// calls back, or what speaks for somebody else's IDispatch.
#pragma once

#include <atomic>
#include <type_traits>

#include "automation/module.h"

namespace hostkit {

// Answers the given interfaces and, when the first is a dispatch interface, IDispatch. Lives until
// its last release; starts with one reference, which `make_plain` hands out.
template <class Main, class... More>
class PlainObject : public Main, public More... {
  public:
    PlainObject(const PlainObject&) = delete;
    PlainObject& operator=(const PlainObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (!result) return E_POINTER;
        *result = find_interface(id);
        if (!*result) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override {
        return references_.fetch_add(1, std::memory_order_relaxed) + 1;
    }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) delete this;
        return left;
    }

  protected:
    PlainObject() noexcept { automation::object_born(); }
    virtual ~PlainObject() { automation::object_died(); }

  private:
    void* find_interface(REFIID id) noexcept {
        if (id == IID_IUnknown || id == __uuidof(Main)) return static_cast<Main*>(this);
        if (std::is_base_of_v<IDispatch, Main> && id == IID_IDispatch)
            return static_cast<Main*>(this);
        void* found = nullptr;
        static_cast<void>(
            ((id == __uuidof(More) ? (found = static_cast<More*>(this), true) : false) || ...));
        return found;
    }

    std::atomic<ULONG> references_{1};
};

template <class Self, class... Parameters>
automation::ComPtr<Self> make_plain(Parameters&&... parameters) {
    return automation::ComPtr<Self>::attach(new Self(std::forward<Parameters>(parameters)...));
}

}  // namespace hostkit
