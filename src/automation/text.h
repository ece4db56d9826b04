// Comparisons of text as the platform makes them.
#pragma once

#include <string_view>

#include "automation/windows_headers.h"

namespace automation {

inline bool equal_ignoring_case(std::wstring_view left, std::wstring_view right) noexcept {
    // The comparison is one of code units, so that texts of different lengths cannot be equal.
    if (left.size() != right.size()) return false;
    const int length = static_cast<int>(left.size());
    return length == 0 ||
           CompareStringOrdinal(left.data(), length, right.data(), length, TRUE) == CSTR_EQUAL;
}

}  // namespace automation
