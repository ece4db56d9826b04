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

// The rows that have something to tell; empty when none has.
std::u16string report_as_table(const ImportReport& report, std::size_t width);
// A line for each row that failed, was refused or is a conflict; and for what else is to be told.
std::u16string report_errors(const ImportReport& report);
std::u16string report_notices(const ImportReport& report);
// One line of counts.
std::u16string report_summary(const ImportReport& report);
std::u16string report_as_json(const ImportReport& report);

}  // namespace cli
