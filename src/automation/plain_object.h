// Objects that count their references: what every object of ours is, and the base of those that
// are no automation objects over the type library, such as what the platform calls back or what
// speaks for somebody else's IDispatch.
#pragma once

#include <atomic>
#include <type_traits>
#include <utility>

#include "automation/module.h"

namespace automation {

// IUnknown of the interfaces. Starts with one reference, which the creating function hands out.
template <class... Interfaces>
class ReferenceCounted : public Interfaces... {
  public:
    ReferenceCounted(const ReferenceCounted&) = delete;
    ReferenceCounted& operator=(const ReferenceCounted&) = delete;

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
        if (left == 0) {
            // References that a destructor takes for a while must not destroy the object again.
            references_.store(1, std::memory_order_relaxed);
            delete this;
        }
        return left;
    }

  protected:
    ReferenceCounted() { object_born(); }
    virtual ~ReferenceCounted() { object_died(); }

    // The interface without a new reference, or null.
    virtual void* find_interface(REFIID id) noexcept = 0;

  private:
    std::atomic<ULONG> references_{1};
};

// Answers the given interfaces and, when the first is a dispatch interface, IDispatch.
template <class Main, class... More>
class PlainObject : public ReferenceCounted<Main, More...> {
  private:
    void* find_interface(REFIID id) noexcept override {
        if (id == IID_IUnknown || id == __uuidof(Main)) return static_cast<Main*>(this);
        if (std::is_base_of_v<IDispatch, Main> && id == IID_IDispatch)
            return static_cast<Main*>(this);
        void* found = nullptr;
        static_cast<void>(
            ((id == __uuidof(More) ? (found = static_cast<More*>(this), true) : false) || ...));
        return found;
    }
};

template <class Self, class... Parameters>
ComPtr<Self> make_plain(Parameters&&... parameters) {
    return ComPtr<Self>::attach(new Self(std::forward<Parameters>(parameters)...));
}

}  // namespace automation
