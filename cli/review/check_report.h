// The findings of a check as a report: by rule, with counts and places.
#pragma once

#include <string>
#include <vector>

#include "cli/records/content_records.h"
#include "cli/review/rules.h"

namespace cli {

struct CheckReport {
    std::u16string file;
    const std::vector<ContentRecord>& contents;
    const std::vector<Finding>& findings;
    bool has_project = false;

    std::size_t count(Severity severity) const;
};

// For a reader, at most `width` columns wide: of each rule some places only.
std::u16string report_as_text(const CheckReport& report, std::size_t width);
// "109 rows: 2 errors, no warning, 1 notice", and what could not be checked.
std::u16string report_summary(const CheckReport& report);
// For programs: all rules, all places.
std::u16string report_as_json(const CheckReport& report);

}  // namespace cli
