// A content document made into the file of a workbook, and what the user is told of it.
#pragma once

#include <optional>
#include <string>

#include "cli/console.h"
#include "cli/workbook/workbook_writer.h"

namespace cli {

struct WorkbookOutcome {
    std::size_t sheets = 0;
    std::size_t cells = 0;
    std::vector<UnwrittenCell> unwritten;
};

// The workbook of this file, whose cells are filled in; without one, the plainest. Throws Failure
// when it is no workbook, or what is to be written.
BaseWorkbook base_workbook(const std::optional<std::wstring>& template_path,
                           const std::wstring& output);

// Throws Failure when the file cannot be written, or when no cell of the document can.
WorkbookOutcome write_workbook_file(const std::wstring& path, const BaseWorkbook& base,
                                    const dom::Node& contents_root, const ContentRecords& records,
                                    const UnitLabel& unit_label, const WriteCourse& course);

// "3 sheets, 109 cells"
std::wstring summary(const WorkbookOutcome& outcome);
// A line for each value that found no place.
void tell_unwritten(ConsoleStream& stream, const WorkbookOutcome& outcome);

}  // namespace cli
