#include "server/class_factory.h"

#include <algorithm>

#include "automation/error.h"

namespace server {
namespace {

class ClassFactory final : public automation::PlainObject<IClassFactory> {
  public:
    explicit ClassFactory(const ClassEntry& entry) : entry_(entry) {}

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
    const ClassEntry& entry_;
};

}  // namespace

HRESULT get_class_object(REFCLSID class_id, REFIID interface_id, void** result) noexcept {
    if (!result) return E_POINTER;
    *result = nullptr;
    const auto classes = module_classes();
    const auto entry = std::ranges::find_if(
        classes, [&](const ClassEntry& candidate) { return candidate.class_id == class_id; });
    if (entry == classes.end()) return CLASS_E_CLASSNOTAVAILABLE;
    try {
        return automation::make_plain<ClassFactory>(*entry)->QueryInterface(interface_id, result);
    } catch (...) {
        return automation::current_error().code;
    }
}

}  // namespace server
