// How a workbook shows a number: the decimals that the host shows, and the unit behind it.
#pragma once

#include <string>
#include <string_view>

namespace cli {

// The format code that shows the number as the display value does ("General", "0.00"), followed by
// the unit as a text of its own. A display value that is no number says nothing about decimals.
std::u16string number_format(double number, std::u16string_view display, std::u16string_view unit);

}  // namespace cli
