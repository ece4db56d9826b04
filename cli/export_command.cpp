// tessera export: runs a document's mapping script and writes the content document.

#include <algorithm>

#include "automation/bstr.h"
#include "automation/dispatch.h"
#include "cli/commands.h"
#include "cli/content_file.h"
#include "cli/content_table.h"
#include "cli/course.h"
#include "cli/failure.h"
#include "cli/findings.h"
#include "cli/output_path.h"
#include "cli/project.h"
#include "cli/records/content_reader.h"
#include "cli/standard_path.h"
#include "cli/text_file.h"
#include "cli/unit_labels.h"
#include "cli/workbook/workbook_file.h"
#include "text/trim.h"

namespace cli {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;

namespace {

struct Script {
    Bstr text;
    std::wstring name;      // what an error in it is told of
    std::wstring origin;    // whose it is
    bool is_files = false;  // it came with the project file
};

// Engines take a null character for a script's end.
Bstr script_in(const std::wstring& path) {
    const std::u16string text = read_text_file(path, L"the script");
    const std::size_t null = text.find(u'\0');
    if (null == text.npos) return Bstr(text);
    const auto line = std::ranges::count(std::u16string_view(text).substr(0, null), u'\n') + 1;
    throw Failure(L"the script \"" + path + L"\" has a null character in line " +
                  std::to_wstring(line) + L"; save it as a text file");
}

class Export {
  public:
    Export(const Arguments& arguments, Console& console)
        : arguments_(arguments),
          console_(console),
          course_(console, arguments, arguments.out == standard_path),
          project_(arguments.input, arguments),
          chosen_(project_.document(arguments.document)),
          path_(arguments.out ? *arguments.out : content_file_name(arguments.input, chosen_.name)),
          base_(base_workbook(arguments.template_file, path_)),
          told_(teller(console, path_)) {
        check_output_path(path_, arguments.input);
        if (arguments.script) check_output_path(path_, *arguments.script);
    }

    int run() {
        prepare();
        const dom::Document document = execute();
        findings_ = collect_findings(project_.service(), arguments_.window,
                                     [&](long row) { return row_name(row); });
        const bool usable = document && !course_.has_refused();
        if (usable) write(dom::root(document));
        course_.close();
        tell(usable);
        const bool is_whole = !workbook_ || workbook_->unwritten.empty();
        return usable && is_whole && !findings_.has_errors() && !course_.is_stopped()
                   ? exit_success
                   : exit_with_errors;
    }

  private:
    void prepare() {
        runner_ = automation::create_object<ITesseraVexScript>(L"Tessera.VexScript");
        call(runner_, &ITesseraVexScript::putref_WorkSet, project_.workset().get());
        call(runner_, &ITesseraVexScript::putref_Document, chosen_.document.get());
        if (arguments_.script)
            script_ = {script_in(*arguments_.script), *arguments_.script, *arguments_.script};
        else
            script_ = script_of_document();
        if (arguments_.no_scripts) forbid_scripts();
    }

    // Asking for the script stores the default one where there is none.
    Script script_of_document() {
        const Bstr stored = stored_script(chosen_);
        Bstr text =
            get(runner_, &ITesseraVexScript::GetVexScript, chosen_.document.get(), VARIANT_FALSE);
        const bool is_stored = text.view() == stored.view();
        return {std::move(text), chosen_.name,
                is_stored ? L"the document's" : L"the default one for mapping tables", is_stored};
    }

    // The default script is the component's own: it runs all the same, and the expressions that it
    // hands on do not.
    void forbid_scripts() {
        if (script_.is_files && !script_.text.empty())
            throw Failure(L"the document \"" + chosen_.name +
                          L"\" has a script of its own, which \"--no-scripts\" does not run; "
                          L"leave the option out if you trust the project file");
        const auto& service = project_.service();
        call(service, &IHostKitService::put_AllowsScripts, VARIANT_FALSE);
        call(service, &IHostKitService::put_AllowedScript, script_.text.get());
    }

    // "row 3, Sheet!B7, Process.Flow"
    std::wstring row_name(long row) {
        if (!table_of_rows_) table_of_rows_ = mapping_table(chosen_);
        std::wstring name = L"row " + std::to_wstring(row);
        if (!table_of_rows_) return name;
        name += L", " + get(table_of_rows_, &IKelosMappingTable::get_Target, row).str();
        const Bstr property = get(table_of_rows_, &IKelosMappingTable::get_SourceProperty, row);
        return property.empty() ? name : name + L", " + property.str();
    }

    dom::Document execute() {
        if (arguments_.window) course_.open_form(L"Tessera: " + chosen_.name);
        course_.phase(L"running " + script_.name);
        const CourseWatch watch(project_.kit(), course_);
        return get(runner_, &ITesseraVexScript::Execute, script_.text.get());
    }

    void write(const dom::Node& root) {
        course_.phase(L"writing " + path_);
        // Neither is free in a long document.
        ContentRecords records;
        if (arguments_.writes_workbook() || !arguments_.quiet) records = read_contents(root);
        if (!arguments_.quiet) table_ = content_table(records.contents);
        if (arguments_.writes_workbook()) return write_workbook(root, records);
        TextFile file(path_, FileEncoding::utf16);
        replaced_ = write_document(file, root, file.encoding_name());
        file.finish();
    }

    void write_workbook(const dom::Node& root, const ContentRecords& records) {
        UnitLabels labels(project_.workset());
        workbook_ = write_workbook_file(
            path_, base_, root, records,
            [&](const ContentRecord& record) { return labels.label(record); },
            [&](const std::wstring& part) { course_.phase(L"writing " + part); });
    }

    void tell(bool written) {
        if (written && !arguments_.quiet) tell_table();
        // What failed because it was stopped is no news.
        if (!course_.has_refused()) {
            if (!arguments_.quiet) tell_messages(told_, findings_);
            tell_errors(console_.error, findings_, script_.name);
        }
        if (!written) tell_missing();
        if (workbook_) tell_unwritten(console_.error, *workbook_);
        if (!arguments_.quiet && written) tell_summary();
        if (written) tell_written(console_, path_, arguments_.quiet);
        if (written && course_.is_stopped())
            console_.error.write_line(
                L"tessera: stopped, but the document was complete and is written");
    }

    void tell_table() {
        told_.write_line(L"document: " + chosen_.name +
                         (arguments_.document ? L"" : L" (the first that has a mapping table)"));
        told_.write_line(L"script:   " + script_.origin);
        told_.write(u"\n" + format_table(table_, told_.width()) + u"\n");
    }

    void tell_missing() {
        const bool is_empty = tessera::trim_blanks(script_.text.view()).empty();
        std::wstring reason = L"no content document came back";
        if (course_.has_refused())
            reason = L"stopped";
        else if (is_empty && arguments_.script)
            reason = L"the script \"" + script_.name + L"\" is empty";
        else if (is_empty)
            reason = L"the document \"" + chosen_.name +
                     L"\" has no mapping script, and \"--script\" names none";
        else if (!findings_.has_errors())
            // Whatever fails in a script is reported; that there is nothing to call is not.
            reason = L"the script has no procedure \"DoVex\"";
        console_.error.write_line(L"tessera: " + reason + L"; nothing was written");
    }

    void tell_summary() {
        told_.write_line(count_of(table_.rows.size(), L"row") + L", " + findings_.counted());
        if (workbook_) told_.write_line(summary(*workbook_));
        if (replaced_ > 0) told_.write_line(replaced_text(replaced_));
    }

    const Arguments& arguments_;
    Console& console_;
    Course course_;
    const Project project_;
    const ChosenDocument chosen_;
    const std::wstring path_;
    const BaseWorkbook base_;  // of a workbook
    ConsoleStream& told_;
    ComPtr<ITesseraVexScript> runner_;
    Script script_;
    Findings findings_;
    ComPtr<IKelosMappingTable> table_of_rows_;
    TextTable table_;
    std::size_t replaced_ = 0;
    std::optional<WorkbookOutcome> workbook_;
};

}  // namespace

int run_export(const Arguments& arguments, Console& console) {
    return Export(arguments, console).run();
}

}  // namespace cli
