// The report of an import: for people and, as JSON, for programs.
#pragma once

#include <string>

#include "cli/import/import_rows.h"

namespace cli {

struct ImportReport {
    std::u16string workbook;
    std::u16string project;
    const std::vector<ImportRow>& rows;
    bool is_applied = false;
    std::u16string backup;  // where the project file that was replaced is kept

    std::size_t count(Outcome outcome) const;
    // False when a row failed, was refused, or is a conflict that nobody decided.
    bool is_clean() const;
};

// A table of the rows that have something to tell, then their reasons; empty when none has.
std::u16string report_as_text(const ImportReport& report, std::size_t width);
// One line of counts.
std::u16string report_summary(const ImportReport& report);
std::u16string report_as_json(const ImportReport& report);

}  // namespace cli
