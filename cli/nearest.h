// "Did you mean …?": the known name that a misspelt one is most like.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cli {

// How many letters must be added, left out, changed or swapped with their neighbour to make one
// name the other; case does not count.
std::size_t edit_distance(std::wstring_view left, std::wstring_view right);

// "; did you mean "export"?", or nothing when no name is like the one that was given: one that it
// begins, or that it becomes by few changes.
std::wstring suggestion(std::wstring_view given, const std::vector<std::wstring>& known);

}  // namespace cli
