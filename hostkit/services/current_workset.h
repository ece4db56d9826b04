// The workset that the host application of this thread is working in.
#pragma once

#include "automation/com_ptr.h"
#include "kelos.h"

namespace hostkit {

// What was set last on this thread; nothing before that.
automation::ComPtr<IKelosWorkset> current_workset();

// The thread holds the workset until another one, or nothing, is set: whoever opens a workset also
// has to take it away again, or the module never counts as unused.
void set_current_workset(automation::ComPtr<IKelosWorkset> workset);

}  // namespace hostkit
