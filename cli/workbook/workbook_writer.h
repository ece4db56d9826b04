// Writes a workbook that spreadsheet programs open.
#pragma once

#include <functional>

#include "automation/dom.h"
#include "cli/byte_sink.h"
#include "cli/workbook/base_workbook.h"
#include "cli/workbook/workbook_plan.h"

namespace cli {

// Called before every part that takes its time, with what is about to be written; may throw.
using WriteCourse = std::function<void(const std::wstring& part)>;

// The content document, whose root is given, travels inside the workbook. The same plan, document
// and base give the same bytes. Answers which values found no place in the sheets of the base.
std::vector<UnwrittenCell> write_workbook(ByteSink& sink, const BaseWorkbook& base,
                                          const WorkbookPlan& plan, const dom::Node& contents_root,
                                          const WriteCourse& course);

}  // namespace cli
