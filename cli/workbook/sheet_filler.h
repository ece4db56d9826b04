// Fills cells of a sheet that exists: everything else in it stays as it is.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "cli/workbook/styles.h"

namespace cli {

// Told of a value that finds no place in the sheet.
using LeftOut = std::function<void(const PlannedCell& cell, const std::wstring& reason)>;

// The sheet's text with the cells filled in. Cells keep their style, new ones get that of their row
// or column; formulas stay, as does what somebody entered for a value that goes into the project
// only.
std::string filled_sheet(std::string_view xml, const PlannedSheet& sheet, StyleSheet& styles,
                         const LeftOut& left_out);

}  // namespace cli
