// Which cells a workbook gets: sorted into sheets, with what each holds, and what finds no place.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/workbook/cell_content.h"

namespace cli {

inline constexpr std::u16string_view spreadsheet_namespace =
    u"http://schemas.openxmlformats.org/spreadsheetml/2006/main";

struct PlannedCell {
    CellAddress at;
    const ContentRecord* record = nullptr;
    CellContent content;
    CellRole role = CellRole::output;
    std::u16string unit;  // as a user reads it
};

struct PlannedSheet {
    std::u16string name;
    std::vector<PlannedCell> cells;  // row by row
};

struct UnwrittenCell {
    std::u16string pointer;
    std::wstring reason;
};

struct WorkbookPlan {
    std::vector<PlannedSheet> sheets;  // as they come in the content document
    std::vector<UnwrittenCell> unwritten;
    std::size_t cells = 0;
};

// What a user reads for a record's unit.
using UnitLabel = std::function<std::u16string(const ContentRecord& record)>;

// The records must outlive the plan. Of two values for one cell the first one stays.
WorkbookPlan plan_workbook(const ContentRecords& records, const UnitLabel& unit_label);

// For a workbook whose days are counted from 1904; earlier ones become texts.
void count_from_1904(WorkbookPlan& plan);

}  // namespace cli
