// tessera import: takes what was edited in a workbook back into the project.

#include "automation/bstr.h"
#include "automation/error.h"
#include "cli/commands.h"
#include "cli/course.h"
#include "cli/failure.h"
#include "cli/import/import_report.h"
#include "cli/output_path.h"
#include "cli/records/content_reader.h"
#include "cli/standard_path.h"

namespace cli {

using automation::Bstr;
using automation::call;

namespace {

class Import {
  public:
    Import(const Arguments& arguments, Console& console)
        : arguments_(arguments),
          console_(console),
          course_(console, arguments, arguments.json),
          project_(*arguments.project, arguments),
          host_(project_) {
        check_output_path(*arguments.project, arguments.input);
    }

    int run() {
        course_.phase(L"reading " + input_name(arguments_.input));
        WorkbookReader workbook(arguments_.input);
        const ContentRecords records =
            read_contents(dom::root(workbook.content_document()),
                          [&](long number, long count) { course_.step(number, count); });
        const auto total = static_cast<long>(records.contents.size());
        const RowStep step = [&](long number) { course_.step(number, total); };
        course_.phase(L"comparing");
        rows_ = compare_rows(records, workbook, host_, arguments_.prefer, step);
        course_.phase(L"setting values");
        write_rows(rows_, host_, step);
        ImportReport report{std::u16string(automation::as_u16(arguments_.input)),
                            std::u16string(automation::as_u16(*arguments_.project)),
                            rows_,
                            false,
                            {}};
        if (arguments_.apply && report.count(Outcome::changed) > 0) save(report);
        course_.close();
        tell(report);
        return report.is_clean() ? exit_success : exit_with_errors;
    }

  private:
    // What the kit says names the file.
    void save(ImportReport& report) {
        course_.phase(L"writing " + *arguments_.project);
        const std::wstring backup = *arguments_.project + L".bak";
        try {
            call(project_.kit(), &IHostKit::Save, Bstr(backup).get());
        } catch (const automation::Error&) {
            throw Failure(automation::current_error().description.str() + L"; nothing was written");
        }
        report.is_applied = true;
        report.backup = automation::as_u16(backup);
    }

    void tell(const ImportReport& report) {
        if (arguments_.json) return console_.out.write(report_as_json(report));
        if (!arguments_.quiet) {
            console_.out.write(report_as_table(report, console_.out.width()));
            console_.out.write(report_notices(report));
        }
        console_.error.write(report_errors(report));
        console_.out.write(report_summary(report) + u"\n");
        if (report.is_applied)
            console_.out.write_line(L"written: " + *arguments_.project + L" (before: " +
                                    std::wstring(automation::as_wide(report.backup)) + L")");
        else if (report.count(Outcome::changed) > 0)
            console_.out.write_line(L"nothing was written; \"--apply\" writes it");
    }

    const Arguments& arguments_;
    Console& console_;
    Course course_;
    const Project project_;
    const HostValues host_;
    std::vector<ImportRow> rows_;
};

}  // namespace

int run_import(const Arguments& arguments, Console& console) {
    return Import(arguments, console).run();
}

}  // namespace cli
