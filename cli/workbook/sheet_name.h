// Which names sheets of a workbook may have.
#pragma once

#include <string>
#include <string_view>

namespace cli {

// Why a sheet cannot be called so ("has more than 31 characters"); empty when it can.
std::wstring sheet_name_problem(std::u16string_view name);

// Sheets whose names differ in nothing but case are one: the names are equal when these are.
std::u16string folded_sheet_name(std::u16string_view name);

}  // namespace cli
