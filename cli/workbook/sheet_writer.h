// Writes a sheet of a workbook, row by row.
#pragma once

#include <string>

#include "cli/workbook/drop_downs.h"
#include "cli/workbook/sheet_layout.h"
#include "cli/workbook/styles.h"
#include "cli/xml_writer.h"

namespace cli {

// What the sheets of a workbook share.
struct SharedParts {
    StyleSheet styles;
    DropDowns drop_downs;
};

// `notes` is the relationship to the drawing of the sheet's notes; empty when there are none.
void write_sheet(XmlWriter& writer, const PlannedSheet& sheet, const SheetLayout& layout,
                 SharedParts& shared, std::u16string_view notes);

// A column for each list that is not offered in place.
void write_lists_sheet(XmlWriter& writer, const std::vector<DropDowns::NamedList>& lists);

// Without a password: who wants to change what does not go back can.
void write_protection(XmlWriter& writer);

// A cell of the plan at its place; `style` is an index of the style sheet.
void write_cell(XmlWriter& writer, const PlannedCell& cell, std::size_t style);
void write_text_cell(XmlWriter& writer, const CellAddress& at, std::u16string_view text);

}  // namespace cli
