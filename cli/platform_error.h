// The platform's words for its errors.
#pragma once

#include <string>

#include "automation/windows_headers.h"

namespace cli {

// "Access denied", without a full stop or a line end.
std::wstring reason_of(DWORD error);

}  // namespace cli
