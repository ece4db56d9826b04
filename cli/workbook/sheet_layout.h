// How a sheet is made readable at once: column widths, what stays in view, how it is printed.
#pragma once

#include <cstdint>
#include <map>

#include "cli/workbook/workbook_plan.h"

namespace cli {

struct SheetLayout {
    std::map<std::int32_t, std::int64_t> widths;  // in characters
    std::int32_t header_rows = 0;                 // stay in view, and are printed on every page
    std::int32_t header_columns = 0;
    std::int32_t last_column = 1;
    std::int32_t last_row = 1;
    std::int64_t pages_wide = 1;

    std::int64_t width_of(std::int32_t column) const;
};

SheetLayout layout_of(const PlannedSheet& sheet);

}  // namespace cli
