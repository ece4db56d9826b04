// What a cell of a workbook holds for a value of the content document.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/records/content_records.h"

namespace cli {

struct CellContent {
    enum class Kind { blank, number, boolean, date, text };
    Kind kind = Kind::blank;
    double number = 0;  // of a date its serial number; of a boolean 1 or 0
    std::u16string text;
};

// The document value or else the project's; of a value list, the display text of its current entry.
// Numbers and dates that are archived as such are numbers, as are texts that the record's flag says
// are numeric and that are, in the record's locale. Nothing becomes a number for its looks alone.
CellContent cell_content(const ContentRecord& record);

// What a user chooses from: the display texts of a value list, in an order that does not depend on
// which entry is the current one. Empty for other records.
std::vector<std::u16string> list_texts(const ContentRecord& record);

enum class CellRole {
    heading,  // a fixed value
    output,   // from the project only: whatever is entered does not go back
    input,
};
CellRole cell_role(const ContentRecord& record);

// A number as it is archived or, with its separator, written in a locale: never grouped, so that a
// point and a comma both part the decimals.
std::optional<double> archived_number(std::u16string_view text);

}  // namespace cli
