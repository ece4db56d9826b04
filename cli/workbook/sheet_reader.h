// The cells of one sheet, as they stand in the file.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cli/package/package_reader.h"
#include "cli/records/cell_pointer.h"

namespace cli {

struct SheetCell {
    enum class Kind { blank, number, boolean, text, error };
    Kind kind = Kind::blank;
    double number = 0;  // of a boolean 1 or 0; of a date its serial number
    bool is_date = false;
    bool is_formula = false;  // what stands here is what it last came to
    std::u16string text;      // of a text and of an error; line ends are LF
};

struct CellRange {
    CellAddress first;
    CellAddress last;
    bool holds(const CellAddress& cell) const noexcept;
};

class SheetCells {
  public:
    // Null for a cell that is not in the file.
    const SheetCell* find(const CellAddress& cell) const;
    // The range that was merged over the cell, which shows the first cell of it only.
    const CellRange* merged_over(const CellAddress& cell) const;

    std::map<CellAddress, SheetCell> cells;
    std::vector<CellRange> merged;
};

// What cells of all sheets refer to.
struct CellTables {
    std::vector<std::u16string> shared_texts;
    std::vector<bool> date_styles;  // by the index of a cell's style
};

CellTables read_cell_tables(const PackageReader& package,
                            const std::vector<Relationship>& of_workbook);

// Throws Failure where the part is no sheet, or a cell refers to what there is not.
SheetCells read_sheet(const PackageReader& package, std::string_view part,
                      const CellTables& tables);

// A cell as the user sees it, for messages.
std::u16string shown_value(const SheetCell& cell);

}  // namespace cli
