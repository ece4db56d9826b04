// tessera spreadsheet: makes a workbook of a content document.

#include "cli/commands.h"
#include "cli/course.h"
#include "cli/failure.h"
#include "cli/output_path.h"
#include "cli/records/content_reader.h"
#include "cli/standard_path.h"
#include "cli/unit_labels.h"
#include "cli/workbook/workbook_file.h"

namespace cli {
namespace {

class Spreadsheet {
  public:
    Spreadsheet(const Arguments& arguments, Console& console)
        : arguments_(arguments),
          console_(console),
          course_(console, arguments, is_standard(*arguments.out)),
          base_(base_workbook(arguments.template_file, *arguments.out)) {
        check_output_path(*arguments.out, arguments.input);
    }

    int run() {
        write();
        course_.close();
        tell();
        return outcome_.unwritten.empty() ? exit_success : exit_with_errors;
    }

  private:
    void write() {
        go_on(L"reading " + input_name(arguments_.input));
        const dom::Document document = load_content_document(arguments_.input);
        const dom::Node root = dom::root(document);
        const ContentRecords records =
            read_contents(root, [&](long number, long count) { course_.step(number, count); });
        outcome_ =
            write_workbook_file(*arguments_.out, base_, root, records, unit_name,
                                [&](const std::wstring& part) { go_on(L"writing " + part); });
    }

    void go_on(const std::wstring& text) {
        if (course_.is_stopped()) throw Stopped();
        course_.phase(text);
    }

    void tell() {
        tell_unwritten(console_.error, outcome_);
        if (!arguments_.quiet) teller(console_, *arguments_.out).write_line(summary(outcome_));
        tell_written(console_, *arguments_.out, arguments_.quiet);
    }

    const Arguments& arguments_;
    Console& console_;
    Course course_;
    const BaseWorkbook base_;
    WorkbookOutcome outcome_;
};

}  // namespace

int run_spreadsheet(const Arguments& arguments, Console& console) {
    return Spreadsheet(arguments, console).run();
}

}  // namespace cli
