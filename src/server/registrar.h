// Writes the module's class table and type library into the registry, and takes them out again.
#pragma once

#include "server/class_table.h"

namespace server {

// Registers all or nothing: what was written before a failure is taken back.
HRESULT register_classes() noexcept;

// Takes out what registering wrote, in reverse order. What is not there is no failure.
HRESULT unregister_classes() noexcept;

}  // namespace server
