#include "cli/workbook/sheet_layout.h"

#include <algorithm>

#include "cli/text.h"
#include "cli/workbook/styles.h"

namespace cli {
namespace {

constexpr std::int64_t usual_width = 9;
constexpr std::int64_t padding = 4;
// More would leave no room for what scrolls.
constexpr std::int32_t most_header_rows = 10;
// Sheets with fewer columns fit on a screen.
constexpr std::int32_t columns_in_view = 8;
// So many characters wide a page can be and still be read.
constexpr std::int64_t page_width = 200;

std::size_t longest_line(std::u16string_view text) {
    std::size_t longest = 0;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(u'\n', start), text.size());
        longest = std::max(longest, display_width(text.substr(start, end - start)));
        start = end + 1;
    }
    return std::min(longest, widest_column);
}

std::size_t shown_width(const PlannedCell& cell) {
    constexpr std::size_t date_width = 10;
    constexpr std::size_t date_and_time_width = 16;
    switch (cell.content.kind) {
        case CellContent::Kind::blank:
            return 0;
        case CellContent::Kind::date:
            return cell.content.number ==
                           static_cast<double>(static_cast<std::int64_t>(cell.content.number))
                       ? date_width
                       : date_and_time_width;
        case CellContent::Kind::boolean:
            return 6;
        case CellContent::Kind::number:
            return display_width(cell.record->display_value().text) +
                   (cell.unit.empty() ? 0 : display_width(cell.unit) + 1);
        case CellContent::Kind::text:
            return longest_line(cell.content.text);
    }
    return 0;
}

// A heading runs over the empty cells beside it.
bool runs_over(const PlannedSheet& sheet, std::size_t index) {
    const PlannedCell& cell = sheet.cells[index];
    if (cell.role != CellRole::heading || cell.content.kind != CellContent::Kind::text)
        return false;
    if (index + 1 == sheet.cells.size()) return true;
    const CellAddress& next = sheet.cells[index + 1].at;
    return next.row != cell.at.row || next.column > cell.at.column + 1;
}

// What stands above the first value of an object.
std::int32_t header_rows_of(const PlannedSheet& sheet) {
    const auto first = std::ranges::find_if(
        sheet.cells, [](const PlannedCell& cell) { return cell.role != CellRole::heading; });
    if (first == sheet.cells.begin() || first == sheet.cells.end()) return 0;
    const std::int32_t rows = first->at.row - 1;
    return rows <= most_header_rows ? rows : 0;
}

}  // namespace

std::int64_t SheetLayout::width_of(std::int32_t column) const {
    const auto known = widths.find(column);
    return known == widths.end() ? usual_width : known->second;
}

SheetLayout layout_of(const PlannedSheet& sheet) {
    SheetLayout layout;
    layout.header_rows = header_rows_of(sheet);
    std::int32_t first_column = last_cell.column;
    for (std::size_t i = 0; i < sheet.cells.size(); ++i) {
        const PlannedCell& cell = sheet.cells[i];
        first_column = std::min(first_column, cell.at.column);
        layout.last_column = std::max(layout.last_column, cell.at.column);
        layout.last_row = std::max(layout.last_row, cell.at.row);
        std::int64_t& width = layout.widths.try_emplace(cell.at.column, usual_width).first->second;
        if (!runs_over(sheet, i))
            width = std::max(width, static_cast<std::int64_t>(shown_width(cell)) + padding);
    }
    if (first_column == 1 && layout.last_column > columns_in_view) layout.header_columns = 1;
    std::int64_t total = 0;
    for (std::int32_t column = 1; column <= layout.last_column; ++column)
        total += layout.width_of(column);
    layout.pages_wide = (total + page_width - 1) / page_width;
    return layout;
}

}  // namespace cli
