// Program text inside a project file.
#pragma once

#include <string>
#include <string_view>

namespace hostkit {

// The lines without the empty ones before and after them and without the indentation that all of
// them share, parted by CR LF.
std::wstring script_text(std::wstring_view text);

}  // namespace hostkit
