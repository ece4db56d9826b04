#include "hostkit/boundary.h"

#include "automation/thread_slot.h"

namespace hostkit {
namespace {

using automation::ComPtr;
using automation::ThreadOwn;

struct Fault {
    long calls = 0;
    long failing = 0;
    HRESULT code = E_FAIL;
};

struct Watch {
    IHostKitWatcher* watcher = nullptr;
    bool is_telling = false;
    long row = 0;
    long row_count = 0;
};

void tell_watcher() {
    auto& watch = ThreadOwn<Watch>::get();
    if (!watch.watcher || watch.is_telling) return;
    const ComPtr<IHostKitWatcher> watcher = watch.watcher;
    watch.is_telling = true;
    const HRESULT code = watcher->Called(watch.row, watch.row_count);
    watch.is_telling = false;
    automation::check(code, watcher);
}

}  // namespace

void fail_call(long n, HRESULT code) {
    ThreadOwn<Fault>::get() = {0, n, code};
}

long counted_calls() {
    return ThreadOwn<Fault>::get().calls;
}

void count_call() {
    auto& fault = ThreadOwn<Fault>::get();
    if (++fault.calls == fault.failing) automation::fail(fault.code, L"Failed on request");
    tell_watcher();
}

void watch_calls(IHostKitWatcher* watcher) {
    ThreadOwn<Watch>::get().watcher = watcher;
    note_row(0, 0);
}

void note_row(long row, long row_count) {
    auto& watch = ThreadOwn<Watch>::get();
    watch.row = row;
    watch.row_count = row_count;
}

long noted_row() {
    return ThreadOwn<Watch>::get().row;
}

}  // namespace hostkit
