// Classes of the host of which objects are made for every row or expression.
#pragma once

#include "automation/dispatch.h"
#include "automation/thread_kept.h"

namespace tessera {

// Looking a class up by its name costs a hundred times what making an object does: its factory is
// kept per thread, until the thread's last object dies.
template <const wchar_t* programmatic_name>
class KeptClass {
  public:
    // Throws what the look-up or the factory says.
    template <class Role>
    static automation::ComPtr<Role> create() {
        automation::ComPtr<IUnknown> created;
        const auto& factory = automation::ThreadKept<Holder>::get().factory;
        automation::check(factory->CreateInstance(nullptr, IID_IUnknown,
                                                  reinterpret_cast<void**>(created.put())));
        return created.as<Role>();
    }

  private:
    struct Holder {
        automation::ComPtr<IClassFactory> factory = automation::class_factory(programmatic_name);
    };
};

}  // namespace tessera
