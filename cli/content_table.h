// The content document as a table: what was mapped where.
#pragma once

#include "automation/dom.h"
#include "cli/text_table.h"

namespace cli {

// One row per "Content" element below the root, in document order: sheet, cell, object, property,
// value, unit, direction.
TextTable content_table(const dom::Node& contents_root);

}  // namespace cli
