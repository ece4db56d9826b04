// The message box that scripts find in place of the language's own.
#pragma once

#include "automation/com_ptr.h"

namespace hostkit {

// The language's MsgBox waits for a user whom a host without a display does not have. This one is
// shown or only recorded, as the service's mode says; it is called as the object's default member.
automation::ComPtr<IDispatch> make_message_box();

}  // namespace hostkit
