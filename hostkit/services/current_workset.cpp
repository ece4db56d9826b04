#include "hostkit/services/current_workset.h"

namespace hostkit {

using automation::ComPtr;

namespace {

// A plain pointer: at thread exit COM may be gone, so that nothing may be released then.
thread_local IKelosWorkset* thread_workset = nullptr;

}  // namespace

ComPtr<IKelosWorkset> current_workset() {
    return thread_workset;
}

void set_current_workset(ComPtr<IKelosWorkset> workset) {
    const auto old = ComPtr<IKelosWorkset>::attach(std::exchange(thread_workset, workset.detach()));
}

}  // namespace hostkit
