// The type names that the archive reads back. Writing uses the platform's name of whatever type a
// value has; these are the ones among them that lead back to a value.
#pragma once

#include <optional>
#include <string_view>

#include "automation/windows_headers.h"

namespace tessera {

std::optional<VARTYPE> archived_type(std::wstring_view type_name) noexcept;

}  // namespace tessera
