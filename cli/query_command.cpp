// tessera query: runs a query and writes what it finds.

#include <optional>

#include "automation/dispatch.h"
#include "cli/commands.h"
#include "cli/content_file.h"
#include "cli/failure.h"
#include "cli/output_path.h"
#include "cli/project.h"
#include "cli/row_walk.h"
#include "cli/text_file.h"

namespace cli {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;

namespace {

constexpr std::size_t buffer_limit = 32768;

std::size_t count_elements(const dom::Node& root) {
    std::size_t count = 0;
    dom::for_each_element(root, [&](const dom::Node&) { ++count; });
    return count;
}

// What one run of the command wrote.
struct Written {
    std::size_t count = 0;
    const wchar_t* noun = L"row";
    std::size_t replaced = 0;
    bool is_there = true;  // false: nothing came back that could be written
    bool is_complete = false;
};

class Query {
  public:
    Query(const Arguments& arguments, Console& console)
        : arguments_(arguments),
          console_(console),
          course_(console, arguments, !arguments.out),
          project_(arguments.input, arguments),
          query_(project_.query(arguments.query)),
          content_(automation::create_object<ITesseraQContent>(L"Tessera.QContent")),
          cursor_(get(content_, &ITesseraQContent::get_HQuery)) {
        if (arguments.out) check_output_path(*arguments.out, arguments.input);
    }

    int run() {
        if (!find()) return exit_with_errors;
        open_output();
        course_.phase(L"reading " + arguments_.query);
        const Written written = write();
        if (file_ && written.is_there) file_->finish();
        course_.close();
        return tell(written);
    }

  private:
    // False when the user did not want to wait for it.
    bool find() {
        course_.phase(L"running " + arguments_.query);
        const CourseWatch watch(project_.kit(), course_);
        try {
            call(query_, &IKelosQuery::Run);
            call(cursor_, &ITesseraHQuery::putref_WorkSet, project_.workset().get());
            call(cursor_, &ITesseraHQuery::putref_Query, query_.get());
        } catch (const automation::Error&) {
            if (!course_.has_refused()) throw;
        }
        if (!course_.has_refused()) return true;
        course_.close();
        console_.error.write_line(L"tessera: stopped; nothing was written");
        return false;
    }

    // XML is UTF-16 in files; everything on standard output, and strings, are UTF-8.
    void open_output() {
        if (!arguments_.out) return;
        const bool is_xml = arguments_.format != QueryFormat::strings;
        file_.emplace(*arguments_.out, is_xml ? FileEncoding::utf16 : FileEncoding::utf8);
    }
    TextSink& sink() {
        if (file_) return *file_;
        return console_.out;
    }
    std::u16string_view encoding_name() const { return file_ ? u"UTF-16" : u"UTF-8"; }

    Written write() {
        switch (arguments_.format) {
            case QueryFormat::columns:
                return write_whole(get(content_, &ITesseraQContent::XMLColumns), L"element");
            case QueryFormat::complete:
                return write_complete();
            case QueryFormat::rows:
                return write_rows();
            case QueryFormat::strings:
                break;
        }
        return write_strings();
    }

    Written write_whole(const dom::Document& document, const wchar_t* noun) {
        const dom::Node root = document ? dom::root(document) : nullptr;
        if (!root) return {0, noun, 0, false};
        const std::size_t replaced = write_document(sink(), root, encoding_name());
        return {count_elements(root), noun, replaced, true, true};
    }

    Written write_complete() {
        dom::Document document;
        {
            // A cursor without a query is at its end, whatever rows there still were.
            const auto end = [&] { call(cursor_, &ITesseraHQuery::putref_Query, nullptr); };
            const CourseWatch watch(project_.kit(), course_, end);
            document = get(content_, &ITesseraQContent::XMLComplete);
        }
        Written written = write_whole(document, L"content element");
        if (get(cursor_, &ITesseraHQuery::get_State) == uccStateAbort || course_.has_refused())
            written.is_complete = false;
        return written;
    }

    Written write_rows() {
        XmlWriter writer(sink());
        Written written;
        writer.declaration(encoding_name());
        writer.start(u"Rows");
        RowWalk walk = walk_rows();
        for (; walk.is_on_row(); walk.move_on()) {
            const dom::Document row = get(content_, &ITesseraQContent::XMLRow);
            if (!row) continue;
            write_element(writer, dom::root(row));
            ++written.count;
        }
        writer.end();
        writer.finish();
        written.replaced = writer.replaced();
        written.is_complete = !walk.is_broken_off();
        return written;
    }

    Written write_strings() {
        Written written;
        std::u16string buffer;
        const VARIANT_BOOL encode = arguments_.encode ? VARIANT_TRUE : VARIANT_FALSE;
        RowWalk walk = walk_rows();
        for (; walk.is_on_row(); walk.move_on()) {
            Bstr text;
            if (!get(content_, &ITesseraQContent::XMLRowAsString, text.put(), encode)) continue;
            buffer.append(text.u16()).append(u"\n");
            ++written.count;
            if (buffer.size() > buffer_limit) sink().write(std::exchange(buffer, {}));
        }
        sink().write(buffer);
        written.is_complete = !walk.is_broken_off();
        return written;
    }

    RowWalk walk_rows() {
        const auto table = get(query_, &IKelosQuery::get_ResultTable);
        const long total = table ? get(table, &IKelosResultTable::get_TotalRowCount) : 0;
        return {cursor_, course_, ErrorCounter(project_.service(), arguments_.window), total};
    }

    // What failed because it was stopped is no news.
    int tell(const Written& written) {
        const Findings findings = course_.has_refused()
                                      ? Findings{}
                                      : collect_findings(project_.service(), arguments_.window);
        // Standard output is talked on only when it does not carry the result.
        ConsoleStream& stream = file_ ? console_.out : console_.error;
        if (!arguments_.quiet) tell_messages(stream, findings);
        tell_errors(console_.error, findings, arguments_.query);
        if (!written.is_complete) tell_broken_off(written);
        if (!arguments_.quiet) tell_summary(stream, written, findings);
        if (file_ && written.is_there)
            stream.write_line(arguments_.quiet ? *arguments_.out : L"written: " + *arguments_.out);
        return written.is_complete && !findings.has_errors() ? exit_success : exit_with_errors;
    }

    void tell_broken_off(const Written& written) {
        const std::wstring count = count_of(written.count, written.noun);
        console_.error.write_line(
            !written.is_there ? L"tessera: no document came back; nothing was written"
                              : L"tessera: broken off; " + count +
                                    (written.count == 1 ? L" was" : L" were") + L" written");
    }

    void tell_summary(ConsoleStream& stream, const Written& written, const Findings& findings) {
        if (file_ && written.is_there)
            stream.write_line(count_of(written.count, written.noun) +
                              (course_.has_refused() ? L"" : L", " + findings.counted()));
        if (written.replaced > 0) stream.write_line(replaced_text(written.replaced));
    }

    const Arguments& arguments_;
    Console& console_;
    Course course_;
    const Project project_;
    const ComPtr<IKelosQuery> query_;
    const ComPtr<ITesseraQContent> content_;
    const ComPtr<ITesseraHQuery> cursor_;
    std::optional<TextFile> file_;
};

}  // namespace

int run_query(const Arguments& arguments, Console& console) {
    return Query(arguments, console).run();
}

}  // namespace cli
