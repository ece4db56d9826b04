// The records of the content document that travels in a workbook, with what stands in its cells.
#pragma once

#include "cli/records/content_records.h"
#include "cli/workbook/workbook_reader.h"

namespace cli {

// A cell that was edited becomes the record's document value; one that was emptied leaves it as it
// is. Cells of sheets that are missing count as emptied.
std::vector<ContentRecord> read_workbook_records(WorkbookReader& workbook);

}  // namespace cli
