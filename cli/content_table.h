// The content document as a table: what was mapped where.
#pragma once

#include <vector>

#include "cli/records/content_records.h"
#include "cli/text_table.h"

namespace cli {

// One row per record: sheet, cell, object, property, value, unit, direction.
TextTable content_table(const std::vector<ContentRecord>& contents);

}  // namespace cli
