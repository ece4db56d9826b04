// The host application with its window and presentation services, and the wrapper of controls.
#pragma once

#include "automation/com_ptr.h"
#include "kelos.h"

namespace hostkit {

automation::ComPtr<IKelosApplication> host_application();
automation::ComPtr<IKelosUIService> ui_service();
automation::ComPtr<IKelosControlWrapper> wrap_control(IDispatch* control);

// Gives the control's window the keyboard; a control without a window is left alone.
void focus_control(IDispatch* control);

}  // namespace hostkit
