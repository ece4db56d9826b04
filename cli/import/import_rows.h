// What an import makes of every row of a content document: three values compared, that of the
// workbook as it was made, that of its cell, and that of the project now.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "automation/variant.h"
#include "cli/arguments.h"
#include "cli/import/host_values.h"
#include "cli/workbook/workbook_reader.h"

namespace cli {

enum class Outcome {
    unchanged,  // nothing to write: the cell was not edited, or the project has that value already
    blank,      // the cell was emptied; that never overwrites
    changed,    // is written
    kept,       // edited here and in the project, which was preferred
    conflict,   // edited here and in the project, and nobody decided
    refused,    // edited, but the value goes one way only
    failed,     // cannot be read or written
};

// Called with the number of each row before it; may throw.
using RowStep = std::function<void(long)>;

enum class CellState { absent, blank, value };

struct ImportRow {
    const ContentRecord* record = nullptr;
    Outcome outcome = Outcome::unchanged;
    CellState state = CellState::absent;
    std::u16string exported;                // what was written into the cell
    std::u16string cell;                    // what stands there
    std::optional<std::u16string> project;  // what that says now; nothing when nobody asked it
    std::u16string new_value;               // what it says after the import
    std::wstring reason;                    // why nothing is written
    std::wstring notice;
    automation::Variant value;  // to write
};

// Compares all rows; what is changed is not written yet. Throws Failure when a
// sheet that has rows is missing.
std::vector<ImportRow> compare_rows(const ContentRecords& records, WorkbookReader& workbook,
                                    const HostValues& host, Preference preference,
                                    const RowStep& step);

// Sets what is changed in the open project; what that refuses becomes a failed row.
void write_rows(std::vector<ImportRow>& rows, const HostValues& host, const RowStep& step);

// "SetXValue(2)": by which name and with which parameter the value goes back.
std::u16string way_back(const ContentRecord& record);

}  // namespace cli
