// English texts of script errors, for engines that deliver only a number.
#pragma once

#include <string>

#include "automation/windows_headers.h"

namespace hostkit {

// What a run-time error's code says; never empty.
std::wstring runtime_error_text(HRESULT code);

}  // namespace hostkit
