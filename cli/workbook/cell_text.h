// Texts as cells of a workbook hold them.
#pragma once

#include <string>
#include <string_view>

namespace cli {

// So many UTF-16 units a cell holds at most.
inline constexpr std::size_t longest_cell_text = 32767;

// Characters that XML has no way to write become "_x0001_"; what already looks like that has its
// underscore written so.
std::u16string escaped_cell_text(std::u16string_view text);
// The text for which that stands in a file.
std::u16string unescaped_cell_text(std::u16string_view text);

// True when a spreadsheet program would make something else of the text if it were typed in: a
// formula, a number, a date.
bool would_be_reinterpreted(std::u16string_view text);

}  // namespace cli
