// tessera diff: what differs between two content documents.

#include "automation/bstr.h"
#include "cli/commands.h"
#include "cli/course.h"
#include "cli/failure.h"
#include "cli/review/content_input.h"
#include "cli/review/diff_report.h"

namespace cli {

int run_diff(const Arguments& arguments, Console& console) {
    Course course(console, arguments, arguments.json);
    const std::vector<ContentRecord> before = read_content_input(arguments.input, course);
    const std::vector<ContentRecord> after = read_content_input(arguments.second_input, course);
    course.phase(L"comparing");
    const std::vector<CellChange> changes = compare_contents(before, after);
    course.close();

    const DiffReport report{std::u16string(automation::as_u16(arguments.input)),
                            std::u16string(automation::as_u16(arguments.second_input)), changes,
                            before.size()};
    if (arguments.json) {
        console.out.write(report_as_json(report));
    } else {
        if (!arguments.quiet) console.out.write(report_as_text(report, console.out.width()));
        console.out.write(report_summary(report) + u"\n");
    }
    return changes.empty() ? exit_success : exit_with_errors;
}

}  // namespace cli
