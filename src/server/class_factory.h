// Class factories for the module's class table.
#pragma once

#include "server/class_table.h"

namespace server {

// What DllGetClassObject answers: CLASS_E_CLASSNOTAVAILABLE for a class that is not in the table.
HRESULT get_class_object(REFCLSID class_id, REFIID interface_id, void** result) noexcept;

}  // namespace server
