// tessera preview: a content document as a page to look at.

#include "automation/bstr.h"
#include "cli/commands.h"
#include "cli/course.h"
#include "cli/failure.h"
#include "cli/output_path.h"
#include "cli/preview/page.h"
#include "cli/review/content_input.h"
#include "cli/standard_path.h"
#include "cli/text_file.h"

namespace cli {
namespace {

std::u16string file_name(std::wstring_view path) {
    path.remove_prefix(path.find_last_of(L"/\\:") + 1);
    return std::u16string(automation::as_u16(path));
}

}  // namespace

int run_preview(const Arguments& arguments, Console& console) {
    const std::wstring& out = *arguments.out;
    check_output_path(out, arguments.input);
    if (arguments.against) check_output_path(out, *arguments.against);

    Course course(console, arguments, is_standard(out));
    const std::vector<ContentRecord> contents = read_content_input(arguments.input, course);
    std::vector<ContentRecord> old_contents;
    if (arguments.against) old_contents = read_content_input(*arguments.against, course);
    const std::vector<CellChange> changes =
        arguments.against ? compare_contents(old_contents, contents) : std::vector<CellChange>();

    course.phase(L"writing " + out);
    TextFile file(out, FileEncoding::utf8);
    write_page(file, {file_name(input_name(arguments.input)),
                      file_name(input_name(arguments.against.value_or(L""))), contents, changes,
                      [&](long number, long count) { course.step(number, count); }});
    if (course.is_stopped()) throw Stopped();
    file.finish();
    course.close();
    tell_written(console, out, arguments.quiet);
    return exit_success;
}

}  // namespace cli
