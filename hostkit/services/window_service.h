// The window service: keeps the forms that the host shows as windows of its own.
#pragma once

#include "automation/com_ptr.h"
#include "services.h"

namespace hostkit {

automation::ComPtr<IHostKitWindowService> window_service();

}  // namespace hostkit
