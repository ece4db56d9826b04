// A type library as text: what it says, in its order, one line per type and member.
#pragma once

#include <string>

namespace tools {

// UTF-8; the DLL or type library is found like a DLL.
std::string list_type_library(const std::wstring& file);

}  // namespace tools
