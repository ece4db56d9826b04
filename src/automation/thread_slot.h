// Values of a thread's own.
//
// Not `thread_local`: with the compiler's run-time linked statically, its values stand under a key
// of the process that is never given back, so that a process which loads and unloads the DLL runs
// out of keys; and a destructor at thread exit can unload the very DLL that it is running in.
#pragma once

#include <memory>
#include <new>

#include "automation/windows_headers.h"

namespace automation {

// One pointer for each thread, null at first. `destroy` gets what stands in it when its thread
// ends, and what stands in all of them when the slot, and with it the module, does.
class ThreadSlot {
  public:
    explicit ThreadSlot(PFLS_CALLBACK_FUNCTION destroy = nullptr) : index_(FlsAlloc(destroy)) {
        if (index_ == FLS_OUT_OF_INDEXES) throw std::bad_alloc();
    }
    ~ThreadSlot() { FlsFree(index_); }
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    void* get() const noexcept { return FlsGetValue(index_); }
    // Fails only with the first value of a thread, for want of memory.
    void set(void* value) const {
        if (!FlsSetValue(index_, value)) throw std::bad_alloc();
    }

  private:
    const DWORD index_;
};

// The thread's T: made on first use, destroyed with its thread or with the module, whichever ends
// first. COM may be gone by then.
template <class T>
class ThreadOwn {
  public:
    // Throws what making it throws.
    static T& get() {
        static const ThreadSlot slot(destroy);
        if (void* const present = slot.get()) return *static_cast<T*>(present);
        auto made = std::make_unique<T>();
        slot.set(made.get());
        return *made.release();
    }

  private:
    static void WINAPI destroy(void* value) { delete static_cast<T*>(value); }
};

}  // namespace automation
