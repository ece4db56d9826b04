// The public contract as text: what a DLL's type library says, in its order.
#pragma once

#include <string>

namespace test {

// UTF-8, one line per member; the DLL or type library is found like a DLL.
std::string list_type_library(const std::wstring& file);

}  // namespace test
