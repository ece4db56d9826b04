// What a note at a cell tells: whose value it is and which way it goes.
#pragma once

#include <string>

#include "cli/workbook/workbook_plan.h"

namespace cli {

// Several lines; empty for fixed values, which have no story.
std::u16string note_text(const PlannedCell& cell);

}  // namespace cli
