// The number that a text begins with.
#pragma once

#include <string_view>

namespace tessera {

// Reads decimal digits with a sign, a decimal point and an exponent as far as they go, whatever
// follows; 0 when the text does not begin with a number. Blanks, tabs and line breaks are passed
// over everywhere, and the decimal separator is the point in every locale.
double leading_number(std::u16string_view text);

}  // namespace tessera
