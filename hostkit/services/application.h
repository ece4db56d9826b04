// The host application with its window and presentation services, the workset that it is working
// in, and the wrapper of controls.
#pragma once

#include "automation/com_ptr.h"
#include "services.h"

namespace hostkit {

automation::ComPtr<IKelosApplication> host_application();
automation::ComPtr<IHostKitWindowService> window_service();
automation::ComPtr<IKelosUIService> ui_service();
automation::ComPtr<IKelosControlWrapper> wrap_control(IDispatch* control);

// Gives the control's window the keyboard; a control without a window is left alone.
void focus_control(IDispatch* control);

// The workset that was set last on this thread; nothing before that.
automation::ComPtr<IKelosWorkset> current_workset();
// The thread holds the workset until another one, or nothing, is set: whoever opens a workset also
// has to take it away again, or the module never counts as unused.
void set_current_workset(automation::ComPtr<IKelosWorkset> workset);

}  // namespace hostkit
