// The changes between two content documents as a report.
#pragma once

#include <string>
#include <vector>

#include "cli/review/content_diff.h"

namespace cli {

struct DiffReport {
    std::u16string before;  // the files
    std::u16string after;
    const std::vector<CellChange>& changes;
    std::size_t rows_before = 0;

    std::size_t count(ChangeKind kind) const;
};

// A row for every difference, at most `width` columns wide; empty when nothing differs.
std::u16string report_as_text(const DiffReport& report, std::size_t width);
// "rows: 1 added, 2 removed, 3 changed, 104 unchanged".
std::u16string report_summary(const DiffReport& report);
std::u16string report_as_json(const DiffReport& report);

}  // namespace cli
