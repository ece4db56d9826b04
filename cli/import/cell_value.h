// What a user entered into a cell, compared with what was written there, and as a value for the
// project.
#pragma once

#include <string>

#include "automation/variant.h"
#include "cli/workbook/cell_content.h"
#include "cli/workbook/sheet_reader.h"

namespace cli {

// The cell in the form in which cells are written: dates count from 1900, whatever the workbook
// does. A cell with an error is a text.
CellContent content_of(const SheetCell& cell, bool from_1904);

// Programs keep 15 digits of a number and seconds of a time, and have line ends of their own.
bool is_same_content(const CellContent& left, const CellContent& right);

// Dates as 2026-03-31T14:30:00, numbers with a point.
std::u16string shown(const CellContent& content);

struct EnteredValue {
    automation::Variant value;
    std::wstring problem;  // why there is no value; empty when there is one
};

// The value of the type that the record's value has: of a value list, the one whose text was
// entered. Nothing is a number or a date only because it looks like one somewhere.
EnteredValue entered_value(const CellContent& entered, const ContentRecord& record);

}  // namespace cli
