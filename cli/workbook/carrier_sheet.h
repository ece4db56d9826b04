// The content document as a sheet: programs that drop the parts of a package that they do not know
// keep sheets.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/workbook/sheet_reader.h"
#include "cli/xml_writer.h"

namespace cli {

inline constexpr std::u16string_view carrier_sheet = u"Tessera content";

// Column A: what the sheet is, the number of the cells that follow, and in those the document,
// compressed, as text. Plain text would not do: programs change blanks and line ends.
void write_carrier_sheet(XmlWriter& writer, std::string_view document);

// The document again; nothing for a sheet that only has the name. Throws Failure, which begins with
// `place`, when somebody changed or cut the cells.
std::optional<std::string> read_carrier_sheet(const SheetCells& sheet, const std::wstring& place);

}  // namespace cli
