// Writes the module's type libraries into the registry, and takes them out again.
//
// The module's own library belongs to it. The shared one (the host contract's) belongs to every
// module that was registered with it and is taken out with the last of them. Each of them is a
// value of the key that holds the library's place for programs of its width: named by the module's
// own library, it holds the place of the shared library in the module's file.
//
// The platform's functions for this are no help: they write and take out what programs of the other
// width see, too, and cannot be told everywhere for whom.
#pragma once

#include <string>
#include <vector>

#include "automation/windows_headers.h"

namespace server {

// Answers the identity of the module's own library. Throws.
GUID register_type_libraries(HKEY classes);

// What is not registered is no failure. Throws when the module's own libraries cannot be read.
HRESULT unregister_type_libraries(HKEY classes);

// All keys that registering them can change. Throws.
std::vector<std::wstring> type_library_keys();

}  // namespace server
