#include "mapping/number_system.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace tessera {
namespace {

constexpr char16_t code_before_first_letter = u'A' - 1;

std::int32_t to_int32(double number) {
    if (!(number >= std::numeric_limits<std::int32_t>::min() &&
          number <= std::numeric_limits<std::int32_t>::max()))
        throw std::overflow_error("column number");
    return static_cast<std::int32_t>(number);
}

std::u16string decimal_text(std::int32_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

}  // namespace

std::u16string NumericSystem(std::u16string_view digits, std::u16string_view zero_digit,
                             std::int32_t number) {
    const auto base = static_cast<std::int32_t>(zero_digit.size() + digits.size());
    if (base == 0 || digits.empty()) throw std::invalid_argument("no digits");
    std::u16string reversed;
    while (number > 0) {
        std::int32_t digit = number % base;
        number /= base;
        if (digit == 0 && !zero_digit.empty()) {
            reversed.append(zero_digit.rbegin(), zero_digit.rend());
            continue;
        }
        if (digit == 0) {
            // Bijective: there is no zero, so the highest digit is borrowed from the next place.
            --number;
            digit = base;
        }
        reversed.push_back(digits[static_cast<std::size_t>(digit - 1)]);
    }
    std::ranges::reverse(reversed);
    return reversed;
}

void add_column_letters(std::u16string_view letters, std::int32_t& column) {
    constexpr double base = 26;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        const int worth = letters[letters.size() - 1 - i] - code_before_first_letter;
        column = to_int32(column + worth * std::pow(base, static_cast<double>(i)));
    }
}

std::u16string cell_pointer(std::u16string_view sheet, std::int32_t column, std::int32_t row) {
    std::u16string pointer(sheet);
    pointer += u'!';
    pointer += NumericSystem(column_letters, {}, column);
    pointer += decimal_text(row);
    return pointer;
}

}  // namespace tessera
