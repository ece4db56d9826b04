// Writes the module's class table and type library into the registry, and takes them out again.
#pragma once

#include "server/class_table.h"
#include "server/registry_scope.h"

namespace server {

// Registers all or nothing: after a failure, everything is as it was before, be it an older
// registration or none.
HRESULT register_classes(Scope scope) noexcept;

// Takes out what registering wrote, in reverse order. What is not there is no failure; what the
// module's build for the other width has registered stays.
HRESULT unregister_classes(Scope scope) noexcept;

// Both, as an installing program asks for them: for "user" or for everybody.
HRESULT install(bool registers, const wchar_t* command_line) noexcept;

}  // namespace server
