// Numbers as digits and column letters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessera {

inline constexpr std::u16string_view column_letters = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ";

// Writes a number in the positional system whose digits are `zero_digit` followed by `digits`, or,
// when there is no zero digit, in the bijective system over `digits`. Numbers below 1 give the
// empty text. Throws std::invalid_argument when there are no digits at all.
std::u16string NumericSystem(std::u16string_view digits, std::u16string_view zero_digit,
                             std::int32_t number);

// Adds the number that column letters stand for: (code - 64) x 26^i for every letter, counted from
// the right. Letters are not checked; they are expected in upper case. Throws std::overflow_error.
void add_column_letters(std::u16string_view letters, std::int32_t& column);

// The pointer of a cell: sheet, "!", column letters, row number.
std::u16string cell_pointer(std::u16string_view sheet, std::int32_t column, std::int32_t row);

}  // namespace tessera
