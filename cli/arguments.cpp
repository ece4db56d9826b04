#include "cli/arguments.h"

#include <algorithm>
#include <map>
#include <vector>

#include "cli/failure.h"

namespace cli {
namespace {

constexpr wchar_t help[] =
    LR"(tessera - runs exports and queries of a project file

tessera export PROJECT [--document NAME] [--script FILE | --no-scripts]
                       [--out FILE] [--template FILE] [--quiet] [--window]
    Runs the mapping script of a document and writes the content document.
    --document NAME  name or path of the document; without it, the first
                     document that has a mapping table
    --script FILE    a script to run in place of the document's own
    --no-scripts     run no script and evaluate no expression of the file
    --out FILE       where to write; without it, PROJECT.DOCUMENT.content.xml
                     in the current folder; with a name that ends in
                     ".xlsx", a workbook
    --template FILE  a workbook whose cells are filled in; it stays as it is
    --quiet          tell only the path and the errors
    --window         show the progress form

tessera query PROJECT --query NAME --format FORMAT [--encode] [--out FILE]
                      [--quiet] [--window]
    Runs a query and writes what it finds. FORMAT is one of
    columns          the document that describes the columns
    rows             the documents of the rows, gathered below one root
    complete         the content document of headings and cells
    strings          one string per row; --encode: each of them encoded
    Without --out, the result goes to standard output.

tessera spreadsheet CONTENT --out FILE.xlsx [--template FILE] [--quiet]
    Makes a workbook of a content document.

tessera import FILE.xlsx --project PROJECT [--apply]
                         [--prefer sheet|project] [--json] [--quiet]
    Compares the cells of a workbook, which "tessera export" made and somebody
    edited, with the project, and shows what would be written.
    --apply          write it; the project file that was there before is kept
                     as PROJECT.bak
    --prefer SIDE    what to take when a value was changed on both sides
    --json           the report for programs
    --quiet          tell only the errors, the counts and the path

tessera decode FILE [--out FILE] [--quiet]
    Decodes a file of encoded strings, one in each line.

tessera check CONTENT [--project PROJECT] [--json] [--quiet]
    Reports what is wrong with a content document, or with the one in a
    workbook: by rule, with counts and places.
    --project FILE   look objects and units up in this project file, too
    --json           the report for programs
    --quiet          tell the counts only

tessera diff OLD NEW [--json] [--quiet]
    Compares two content documents or workbooks cell by cell.

tessera preview CONTENT [--against OLD] --out FILE [--quiet]
    Writes a page that shows the cells as a browser can.
    --against OLD    mark what has changed since that content document

tessera --help
tessera --version

Exit code: 0 done, 1 errors were reported, nothing came back, or diff
found differences, 2 the command could not be run.
)";

constexpr unsigned for_export = 1;
constexpr unsigned for_query = 2;
constexpr unsigned for_decode = 4;
constexpr unsigned for_spreadsheet = 8;
constexpr unsigned for_check = 32;
constexpr unsigned for_diff = 64;
constexpr unsigned for_preview = 128;
constexpr unsigned for_import = 256;
constexpr unsigned every_command = ~0U;

struct CommandName {
    std::wstring_view name;
    Command command;
    unsigned mask;
    std::wstring_view input;
    std::wstring_view second_input = {};
};
constexpr CommandName commands[] = {
    {L"export", Command::export_document, for_export, L"the project file"},
    {L"query", Command::query, for_query, L"the project file"},
    {L"decode", Command::decode, for_decode, L"the file to decode"},
    {L"spreadsheet", Command::spreadsheet, for_spreadsheet, L"the content document"},
    {L"check", Command::check, for_check, L"the content document"},
    {L"diff", Command::diff, for_diff, L"the old content document", L"the new content document"},
    {L"preview", Command::preview, for_preview, L"the content document"},
    {L"import", Command::import_workbook, for_import, L"the workbook"},
};

struct Option {
    std::wstring_view name;
    unsigned commands;
    bool takes_value;
};
constexpr Option options[] = {
    {L"--document", for_export, true},
    {L"--script", for_export, true},
    {L"--no-scripts", for_export, false},
    {L"--query", for_query, true},
    {L"--format", for_query, true},
    {L"--encode", for_query, false},
    {L"--project", for_check | for_import, true},
    {L"--apply", for_import, false},
    {L"--prefer", for_import, true},
    {L"--json", for_check | for_diff | for_import, false},
    {L"--against", for_preview, true},
    {L"--out", for_export | for_query | for_decode | for_spreadsheet | for_preview, true},
    {L"--template", for_export | for_spreadsheet, true},
    {L"--quiet", every_command, false},
    {L"--window", for_export | for_query, false},
};

struct FormatName {
    std::wstring_view name;
    QueryFormat format;
};
constexpr FormatName formats[] = {
    {L"columns", QueryFormat::columns},
    {L"rows", QueryFormat::rows},
    {L"complete", QueryFormat::complete},
    {L"strings", QueryFormat::strings},
};

std::wstring quoted(std::wstring_view text) {
    return std::wstring(L"\"").append(text).append(L"\"");
}

bool is_help(std::wstring_view argument) {
    return argument == L"--help" || argument == L"-h" || argument == L"-?" || argument == L"/?";
}

const CommandName& command_named(std::wstring_view name) {
    for (const CommandName& known : commands)
        if (known.name == name) return known;
    throw Failure(L"there is no command " + quoted(name) + L"; \"tessera --help\" lists them");
}

class Parser {
  public:
    Parser(const CommandName& command, std::span<const wchar_t* const> arguments)
        : command_(command), rest_(arguments) {}

    // False when help was asked for.
    bool read() {
        while (!rest_.empty()) {
            const std::wstring_view argument = take();
            if (!only_operands_ && is_help(argument)) return false;
            if (!only_operands_ && argument == L"--")
                only_operands_ = true;
            else if (!only_operands_ && argument.size() > 1 && argument.front() == L'-')
                read_option(argument);
            else
                operands_.push_back(argument);
        }
        return true;
    }

    Arguments result() const {
        Arguments result;
        result.command = command_.command;
        read_inputs(result);
        result.project = value(L"--project");
        result.against = value(L"--against");
        result.json = given_.contains(L"--json");
        result.document = value(L"--document");
        result.script = value(L"--script");
        result.out = value(L"--out");
        result.template_file = value(L"--template");
        result.encode = given_.contains(L"--encode");
        result.quiet = given_.contains(L"--quiet");
        result.window = given_.contains(L"--window");
        result.no_scripts = given_.contains(L"--no-scripts");
        if (result.no_scripts && result.script)
            fail(L"\"--script\" and \"--no-scripts\" exclude each other");
        if (command_.command == Command::spreadsheet) check_workbook(required(L"--out"));
        if (result.template_file) check_workbook(required(L"--out"));
        if (command_.command == Command::preview) required(L"--out");
        if (command_.command == Command::import_workbook) required(L"--project");
        result.apply = given_.contains(L"--apply");
        result.prefer = preference();
        if (command_.command == Command::query) {
            result.query = required(L"--query");
            result.format = format();
            if (result.encode && result.format != QueryFormat::strings)
                fail(L"\"--encode\" is for \"--format strings\" only");
        }
        return result;
    }

  private:
    [[noreturn]] void fail(const std::wstring& problem) const {
        throw Failure(std::wstring(command_.name) + L": " + problem);
    }

    std::wstring_view take() {
        const std::wstring_view argument = rest_.front();
        rest_ = rest_.subspan(1);
        return argument;
    }

    const Option& option_named(std::wstring_view name) const {
        for (const Option& known : options)
            if (known.name == name && (known.commands & command_.mask) != 0) return known;
        fail(L"there is no option " + quoted(name) + L"; \"tessera --help\" lists them");
    }

    // "--name value" or "--name=value".
    void read_option(std::wstring_view argument) {
        const std::size_t sign = argument.find(L'=');
        const Option& option = option_named(argument.substr(0, sign));
        std::wstring_view value;
        if (sign != argument.npos) {
            if (!option.takes_value) fail(quoted(option.name) + L" takes no value");
            value = argument.substr(sign + 1);
        } else if (option.takes_value) {
            if (rest_.empty()) fail(quoted(option.name) + L" needs a value");
            value = take();
        }
        if (option.takes_value && value.empty()) fail(quoted(option.name) + L" needs a value");
        if (!given_.emplace(option.name, value).second)
            fail(quoted(option.name) + L" is given twice");
    }

    void read_inputs(Arguments& result) const {
        const std::size_t count = command_.second_input.empty() ? 1 : 2;
        result.input = operand(0, command_.input);
        if (count == 2) result.second_input = operand(1, command_.second_input);
        if (operands_.size() > count) fail(quoted(operands_[count]) + L" is one argument too many");
    }

    std::wstring operand(std::size_t index, std::wstring_view role) const {
        if (operands_.size() <= index) fail(std::wstring(role) + L" is missing");
        if (operands_[index].empty()) fail(std::wstring(role) + L" has no name");
        return std::wstring(operands_[index]);
    }

    std::optional<std::wstring> value(std::wstring_view option) const {
        const auto found = given_.find(option);
        if (found == given_.end()) return {};
        return std::wstring(found->second);
    }

    std::wstring required(std::wstring_view option) const {
        if (auto given = value(option)) return *given;
        fail(quoted(option) + L" is missing");
    }

    // Spreadsheet programs go by the name.
    void check_workbook(const std::wstring& path) const {
        if (!is_workbook_path(path))
            fail(quoted(path) + L" is no name of a workbook: it must end in \".xlsx\"");
    }

    Preference preference() const {
        const auto side = value(L"--prefer");
        if (!side) return Preference::none;
        if (side == L"sheet") return Preference::sheet;
        if (side == L"project") return Preference::project;
        fail(quoted(*side) + L" cannot be preferred; \"sheet\" and \"project\" can");
    }

    QueryFormat format() const {
        const std::wstring name = required(L"--format");
        for (const FormatName& known : formats)
            if (known.name == name) return known.format;
        fail(L"there is no format " + quoted(name) +
             L"; there are columns, rows, complete and strings");
    }

    const CommandName& command_;
    std::span<const wchar_t* const> rest_;
    bool only_operands_ = false;
    std::vector<std::wstring_view> operands_;
    std::map<std::wstring_view, std::wstring_view> given_;
};

}  // namespace

Arguments parse_arguments(std::span<const wchar_t* const> arguments) {
    if (arguments.empty()) throw Failure(L"no command is given; \"tessera --help\" lists them");
    const std::wstring_view first = arguments.front();
    Arguments result;
    if (is_help(first)) return result;
    if (first == L"--version") {
        result.command = Command::version;
        return result;
    }
    Parser parser(command_named(first), arguments.subspan(1));
    return parser.read() ? parser.result() : result;
}

std::wstring_view help_text() noexcept {
    return help;
}

bool is_workbook_path(std::wstring_view path) {
    constexpr std::wstring_view ending = L".xlsx";
    constexpr wchar_t case_bit = 0x20;
    return path.size() > ending.size() && std::ranges::equal(
                                              path.substr(path.size() - ending.size()), ending, {},
                                              [](wchar_t letter) { return letter | case_bit; },
                                              [](wchar_t letter) { return letter | case_bit; });
}

}  // namespace cli
