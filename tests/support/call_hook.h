// What a host does from inside the n-th call that it gets.
#pragma once

#include <functional>

#include "support/com_fixture.h"
#include "support/early_bound.h"

namespace test {

// Hooked for as long as it lives; does nothing before `arm`.
class CallHook {
  public:
    explicit CallHook(ComPtr<IHostKit> kit) : kit_(std::move(kit)) {
        call(kit_, &IHostKit::putref_Watcher, watcher_.get());
    }
    ~CallHook() { kit_->putref_Watcher(nullptr); }
    CallHook(const CallHook&) = delete;
    CallHook& operator=(const CallHook&) = delete;

    // The n-th call from now on does this before it returns to its work.
    void arm(long n, std::function<void()> act) {
        watcher_->left = n;
        watcher_->act = std::move(act);
    }
    // What it refers to may go.
    void let_go() { watcher_->act = nullptr; }
    // False when there were not as many calls.
    bool has_acted() const noexcept { return watcher_->left <= 0; }

  private:
    struct Watcher : EarlyBound<IHostKitWatcher> {
        long left = 0;
        std::function<void()> act;

        STDMETHODIMP Called(long, long) override {
            if (--left == 0 && act) act();
            return S_OK;
        }
    };

    const ComPtr<IHostKit> kit_;
    const ComPtr<Watcher> watcher_ = automation::make_plain<Watcher>();
};

}  // namespace test
