// The records of the content document that travels in a workbook, with what stands in its cells.
#pragma once

#include <unordered_set>

#include "cli/records/content_reader.h"
#include "cli/workbook/workbook_reader.h"

namespace cli {

// The records whose values were written into cells when the workbook was made: not those of a
// second value for a cell, or of a place that no workbook has.
using WrittenCells = std::unordered_set<const ContentRecord*>;
WrittenCells written_cells(const ContentRecords& records);

// A cell that was edited becomes the record's document value; one that was emptied leaves it as it
// is. Cells of sheets that are missing count as emptied.
std::vector<ContentRecord> read_workbook_records(WorkbookReader& workbook,
                                                 const RecordRead& told = {});

}  // namespace cli
