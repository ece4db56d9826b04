// Dates in workbooks: numbers of days that a number format shows as dates.
#pragma once

#include <optional>
#include <string_view>

namespace cli {

// Whether numbers of this format are dates or times: a code of the workbook's own, or the number of
// one that every workbook has.
bool is_date_format(std::u16string_view code);
bool is_date_format(long built_in) noexcept;

// The automation date of a day's number. Workbooks count from 1900, with a 29 February of that year
// that never was, or from 1904. Nothing for days that there are not.
std::optional<double> automation_date(double serial, bool from_1904) noexcept;

}  // namespace cli
