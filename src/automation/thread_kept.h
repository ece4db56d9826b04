// What the objects of one thread share.
#pragma once

#include <utility>

#include "automation/module.h"

namespace automation {

// The thread's T: created on first use, and deleted when the last of the objects that live on the
// thread dies. (Not at thread exit: COM may be gone by then.)
template <class T>
class ThreadKept {
  public:
    // Throws what creating it throws.
    static T& get() {
        if (!kept_) {
            add_thread_idle_hook(release);
            kept_ = new T;
        }
        return *kept_;
    }

  private:
    static void release() noexcept { delete std::exchange(kept_, nullptr); }

    static inline thread_local T* kept_ = nullptr;
};

}  // namespace automation
