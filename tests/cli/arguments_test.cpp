#include "cli/arguments.h"

#include <doctest/doctest.h>

#include <vector>

#include "cli/failure.h"

using cli::Arguments;
using cli::Command;
using cli::QueryFormat;

namespace {

using Given = std::vector<const wchar_t*>;

Arguments parsed(const Given& arguments) {
    return cli::parse_arguments(arguments);
}

// What is said about arguments that cannot be used.
std::wstring problem(const Given& arguments) {
    try {
        parsed(arguments);
        return L"";
    } catch (const cli::Failure& failure) {
        return failure.text();
    }
}

bool mentions(const std::wstring& text, const wchar_t* part) {
    return text.find(part) != text.npos;
}

}  // namespace

TEST_CASE("an export takes all of its options in any order") {
    const Arguments plain = parsed({L"export", L"plant.xml"});
    CHECK(plain.command == Command::export_document);
    CHECK(plain.input == L"plant.xml");
    CHECK_FALSE(plain.document.has_value());
    CHECK_FALSE(plain.script.has_value());
    CHECK_FALSE(plain.out.has_value());
    CHECK_FALSE(plain.quiet);
    CHECK_FALSE(plain.window);
    CHECK(parsed({L"export", L"plant.xml", L"--no-scripts"}).no_scripts);

    const Arguments full = parsed({L"export", L"--window", L"--out", L"a b.xml", L"plant.xml",
                                   L"--quiet", L"--script=m.vbs", L"--document", L"Übersicht"});
    CHECK(full.input == L"plant.xml");
    CHECK(full.document == L"Übersicht");
    CHECK(full.script == L"m.vbs");
    CHECK(full.out == L"a b.xml");
    CHECK(full.quiet);
    CHECK(full.window);
}

TEST_CASE("workbooks are told by their names, and a template needs one to go to") {
    const Arguments made =
        parsed({L"spreadsheet", L"c.xml", L"--out", L"W.XLSX", L"--template=t.xlsx"});
    CHECK(made.command == Command::spreadsheet);
    CHECK(made.template_file == L"t.xlsx");
    CHECK(problem({L"spreadsheet", L"c.xml"}) == L"spreadsheet: \"--out\" is missing");
    for (const wchar_t* name : {L"w.xls", L".xlsx", L"xlsx"})
        CHECK(mentions(problem({L"spreadsheet", L"c.xml", L"--out", name}),
                       L"no name of a workbook"));
    CHECK(problem({L"export", L"p.xml", L"--template", L"t.xlsx"}) ==
          L"export: --template requires --out");
    CHECK(mentions(problem({L"export", L"p.xml", L"--template", L"t.xlsx", L"--out", L"c.xml"}),
                   L"must end in \".xlsx\""));
}

TEST_CASE("commands on content documents take what they need") {
    const Arguments check = parsed({L"check", L"c.xml", L"--project", L"p.xml", L"--json"});
    CHECK(check.project == L"p.xml");
    CHECK(check.json);
    const Arguments diff = parsed({L"diff", L"old.xml", L"new.xml"});
    CHECK(diff.input == L"old.xml");
    CHECK(diff.second_input == L"new.xml");
    const Arguments preview = parsed({L"preview", L"c.xml", L"--against=o.xml", L"--out=p.html"});
    CHECK(preview.against == L"o.xml");
    CHECK(problem({L"preview", L"c.xml"}) == L"preview: \"--out\" is missing");
    CHECK(problem({L"diff", L"c.xml"}) == L"diff: the new content document is missing");
    CHECK(mentions(problem({L"diff", L"a", L"b", L"c"}), L"one argument too many"));
    CHECK(mentions(problem({L"check", L"c.xml", L"--out", L"x"}), L"there is no option"));
    const Arguments import =
        parsed({L"import", L"w.xlsx", L"--project=p.xml", L"--apply", L"--prefer", L"sheet"});
    CHECK(import.command == Command::import_workbook);
    CHECK(import.project == L"p.xml");
    CHECK(import.apply);
    CHECK(import.prefer == cli::Preference::sheet);
}

TEST_CASE("a query knows its four formats") {
    const struct {
        const wchar_t* name;
        QueryFormat format;
    } formats[] = {{L"columns", QueryFormat::columns},
                   {L"rows", QueryFormat::rows},
                   {L"complete", QueryFormat::complete},
                   {L"strings", QueryFormat::strings}};
    for (const auto& format : formats) {
        const Arguments query =
            parsed({L"query", L"plant.xml", L"--query", L"Pumps", L"--format", format.name});
        CHECK(query.command == Command::query);
        CHECK(query.query == L"Pumps");
        CHECK(query.format == format.format);
    }
    CHECK(parsed({L"query", L"p", L"--query=q", L"--format=strings", L"--encode"}).encode);
}

TEST_CASE("values may look like options, and operands after two dashes") {
    CHECK(parsed({L"export", L"p", L"--document", L"--quiet"}).document == L"--quiet");
    CHECK(parsed({L"export", L"p", L"--document=a=b"}).document == L"a=b");
    CHECK(parsed({L"decode", L"--", L"--help"}).input == L"--help");
    CHECK(parsed({L"decode", L"-"}).input == L"-");
}

TEST_CASE("help is found wherever it is asked for, and says what each command takes") {
    const std::wstring overview = parsed({L"--help"}).text;
    for (const Given& given : {Given{L"-h"}, Given{L"-?"}, Given{L"/?"}, Given{L"help"}})
        CHECK(parsed(given).text == overview);
    const std::wstring query = parsed({L"help", L"query"}).text;
    for (const Given& given : {Given{L"query", L"--help"}, Given{L"query", L"p", L"-?"}})
        CHECK(parsed(given).text == query);
    CHECK(query.starts_with(
        L"tessera query PROJECT --query NAME --format columns|rows|complete|strings\n"
        L"              [--encode] "));
    CHECK(mentions(query, L"\n  --out FILE          where to write; "));
    CHECK(mentions(overview, L"\ntessera diff OLD NEW [--json] [--quiet]\n    Compares "));
    for (const std::wstring& text : {overview, query})
        for (std::size_t line = 0, end; (end = text.find(L'\n', line)) != text.npos; line = end + 1)
            CHECK(end - line <= 80);
    CHECK(parsed({L"--version"}).text == L"tessera " TESSERA_VERSION L"\n");
}

TEST_CASE("a completion script names every command, its options and their values") {
    const std::wstring script = parsed({L"completion", L"powershell"}).text;
    const std::wstring overview = parsed({L"help"}).text;
    const std::wstring call = L"\ntessera ";
    for (std::size_t at = overview.find(call); at != overview.npos;
         at = overview.find(call, at + 1)) {
        const std::size_t name = at + call.size();
        const std::wstring command =
            overview.substr(name, overview.find_first_of(L" \n", name) - name);
        CHECK(mentions(script, (command.starts_with(L"--") ? L"'" + command + L"'"
                                                           : L"\n        '" + command + L"' = @{ ")
                                   .c_str()));
    }
    CHECK(mentions(script, L"'--format' = @('columns', 'rows', 'complete', 'strings'); "));
    CHECK(mentions(script, L"'--encode' = $null"));
}

TEST_CASE("what is wrong is named") {
    const struct {
        Given given;
        const wchar_t* named;
    } cases[] = {
        {{}, L"no command"},
        {{L"transport", L"p"}, L"\"transport\"; \"tessera --help\" lists them"},
        {{L"exprt", L"p"}, L"\"exprt\"; did you mean \"export\"?"},
        {{L"--quiet", L"export", L"p"}, L"\"--quiet\" must stand behind the command"},
        {{L"help", L"exprot"}, L"did you mean \"export\"?"},
        {{L"import", L"w"}, L"\"--project\" is missing"},
        {{L"import", L"w", L"--project", L"p", L"--prefer", L"me"}, L"\"me\""},
        {{L"export"}, L"project file is missing"},
        {{L"export", L""}, L"PROJECT: its value is empty"},
        {{L"decode"}, L"file to decode is missing"},
        {{L"export", L"p", L"q"}, L"\"q\""},
        {{L"export", L"p", L"--format", L"rows"}, L"\"--format\""},
        {{L"export", L"p", L"--Quiet"}, L"\"--Quiet\"; did you mean \"--quiet\"?"},
        {{L"export", L"p", L"-q"}, L"\"-q\""},
        {{L"export", L"p", L"--out"}, L"\"--out\" needs a value"},
        {{L"export", L"p", L"--out", L""}, L"--out: its value is empty"},
        {{L"export", L"p", L"--out="}, L"\"--out\" needs a value"},
        {{L"export", L"p", L"--quiet=yes"}, L"\"--quiet\" takes no value"},
        {{L"export", L"p", L"--out", L"a", L"--out", L"b"}, L"\"--out\" is given twice"},
        {{L"query", L"p", L"--format", L"rows"}, L"\"--query\" is missing"},
        {{L"query", L"p", L"--query", L"q"}, L"\"--format\" is missing"},
        {{L"query", L"p", L"--query", L"q", L"--format", L"Rows"},
         L"\"Rows\" is none of columns, rows, "},
        {{L"query", L"p", L"--query", L"q", L"--format", L"rows", L"--encode"}, L"\"--encode\""},
        {{L"decode", L"f", L"--window"}, L"\"--window\""},
        {{L"export", L"p", L"--script", L"s", L"--no-scripts"}, L"--script excludes --no-scripts"},
    };
    for (const auto& wrong : cases) {
        CAPTURE(wrong.given.size());
        CHECK(mentions(problem(wrong.given), wrong.named));
    }
}
