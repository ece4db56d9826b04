// What the objects of one thread share.
#pragma once

#include <memory>

#include "automation/module.h"
#include "automation/thread_slot.h"

namespace automation {

// The thread's T: created on first use, and deleted when the last of the objects that live on the
// thread dies. (Not at thread exit: COM may be gone by then.)
template <class T>
class ThreadKept {
  public:
    // Throws what creating it throws.
    static T& get() {
        if (void* const present = slot().get()) return *static_cast<T*>(present);
        add_thread_idle_hook(release);
        auto made = std::make_unique<T>();
        slot().set(made.get());
        return *made.release();
    }

  private:
    static const ThreadSlot& slot() {
        static const ThreadSlot slot;
        return slot;
    }
    static void release() noexcept {
        const std::unique_ptr<T> kept(static_cast<T*>(slot().get()));
        if (kept) slot().set(nullptr);
    }
};

}  // namespace automation
