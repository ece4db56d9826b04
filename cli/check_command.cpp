// tessera check: what is wrong with a content document.

#include <optional>

#include "automation/bstr.h"
#include "cli/commands.h"
#include "cli/course.h"
#include "cli/failure.h"
#include "cli/project.h"
#include "cli/review/check_report.h"
#include "cli/review/content_check.h"
#include "cli/review/content_input.h"
#include "cli/review/project_check.h"

namespace cli {
namespace {

std::vector<Finding> check_all(const std::vector<ContentRecord>& contents,
                               const std::optional<Project>& project, Course& course) {
    course.phase(L"checking");
    std::vector<Finding> findings;
    ContentCheck content_check(contents);
    std::optional<ProjectCheck> project_check;
    if (project) project_check.emplace(contents, project->workset());
    for (std::size_t i = 0; i < contents.size(); ++i) {
        course.step(static_cast<long>(i + 1), static_cast<long>(contents.size()));
        content_check.check(i, findings);
        if (project_check) project_check->check(i, findings);
    }
    return findings;
}

}  // namespace

int run_check(const Arguments& arguments, Console& console) {
    Course course(console, arguments, arguments.json);
    const std::vector<ContentRecord> contents = read_content_input(arguments.input, course);
    std::optional<Project> project;
    if (arguments.project) project.emplace(*arguments.project, arguments);
    const std::vector<Finding> findings = check_all(contents, project, course);
    course.close();

    const CheckReport report{std::u16string(automation::as_u16(arguments.input)), contents,
                             findings, project.has_value()};
    if (arguments.json) {
        console.out.write(report_as_json(report));
    } else {
        if (!arguments.quiet) console.out.write(report_as_text(report, console.out.width()));
        console.out.write(report_summary(report) + u"\n");
    }
    return report.count(Severity::error) == 0 ? exit_success : exit_with_errors;
}

}  // namespace cli
