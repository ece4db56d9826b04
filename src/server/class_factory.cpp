#include "server/class_factory.h"

#include <algorithm>
#include <new>

#include "automation/error.h"

namespace server {
namespace {

using automation::ComPtr;

class ClassFactory final : public IClassFactory {
  public:
    explicit ClassFactory(const ClassEntry& entry) noexcept : entry_(entry) {
        automation::object_born();
    }

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (!result) return E_POINTER;
        const bool known = id == IID_IUnknown || id == IID_IClassFactory;
        *result = known ? static_cast<IClassFactory*>(this) : nullptr;
        if (!known) return E_NOINTERFACE;
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

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        try {
            return entry_.create()->QueryInterface(id, result);
        } catch (...) {
            return automation::current_error().code;
        }
    }
    STDMETHODIMP LockServer(BOOL lock) override {
        automation::lock_module(lock != FALSE);
        return S_OK;
    }

  private:
    ~ClassFactory() { automation::object_died(); }

    const ClassEntry& entry_;
    std::atomic<ULONG> references_{1};
};

}  // namespace

HRESULT get_class_object(REFCLSID class_id, REFIID interface_id, void** result) noexcept {
    if (!result) return E_POINTER;
    *result = nullptr;
    const auto classes = module_classes();
    const auto entry = std::ranges::find_if(
        classes, [&](const ClassEntry& candidate) { return candidate.class_id == class_id; });
    if (entry == classes.end()) return CLASS_E_CLASSNOTAVAILABLE;
    auto* const created = new (std::nothrow) ClassFactory(*entry);
    if (!created) return E_OUTOFMEMORY;
    return ComPtr<IClassFactory>::attach(created)->QueryInterface(interface_id, result);
}

}  // namespace server
