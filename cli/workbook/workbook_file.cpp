#include "cli/workbook/workbook_file.h"

#include "automation/bstr.h"
#include "cli/failure.h"
#include "cli/findings.h"
#include "cli/output_file.h"
#include "cli/output_path.h"

namespace cli {

BaseWorkbook base_workbook(const std::optional<std::wstring>& template_path,
                           const std::wstring& output) {
    if (!template_path) return BaseWorkbook();
    check_output_path(output, *template_path);
    return BaseWorkbook(*template_path);
}

WorkbookOutcome write_workbook_file(const std::wstring& path, const BaseWorkbook& base,
                                    const dom::Node& contents_root, const ContentRecords& records,
                                    const UnitLabel& unit_label, const WriteCourse& course) {
    WorkbookPlan plan = plan_workbook(records, unit_label);
    if (plan.cells == 0)
        throw Failure(L"the content document has no value that a workbook can hold; \"" + path +
                      L"\" was not written; \"tessera check\" says what its cells lack");
    if (base.counts_from_1904()) count_from_1904(plan);
    OutputFile file(path);
    const auto left_out = write_workbook(file, base, plan, contents_root, course);
    course(L"\"" + path + L"\"");
    file.finish();
    plan.unwritten.insert(plan.unwritten.end(), left_out.begin(), left_out.end());
    return {plan.sheets.size(), plan.cells - left_out.size(), std::move(plan.unwritten)};
}

std::wstring summary(const WorkbookOutcome& outcome) {
    return count_of(outcome.sheets, L"sheet") + L", " + count_of(outcome.cells, L"cell");
}

void tell_unwritten(ConsoleStream& stream, const WorkbookOutcome& outcome) {
    for (const UnwrittenCell& cell : outcome.unwritten)
        stream.write_line(L"not in the workbook: \"" +
                          std::wstring(automation::as_wide(cell.pointer)) + L"\": " + cell.reason);
}

}  // namespace cli
