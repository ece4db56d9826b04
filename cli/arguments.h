// What the command line says is to be done.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace cli {

enum class Command {
    text,  // only tells one: an explanation, the version
    list,
    export_document,
    query,
    decode,
    spreadsheet,
    check,
    diff,
    preview,
    import_workbook,
};
// Which side an import takes when a value was changed on both.
enum class Preference { none, sheet, project };
enum class QueryFormat { columns, rows, complete, strings };
enum class Shell { none, bash, powershell };

struct Arguments {
    Command command = Command::text;
    std::wstring text;                    // of the command that only tells one
    std::wstring topic;                   // the command to explain
    Shell shell = Shell::none;            // to complete the commands in
    std::wstring input;                   // the project file, or the file to decode
    std::wstring second_input;            // of the command that compares two
    std::optional<std::wstring> project;  // beside an input that is none
    std::optional<std::wstring> against;
    std::optional<std::wstring> language;
    std::optional<std::wstring> user;
    std::optional<std::wstring> document;
    std::optional<std::wstring> script;
    std::optional<std::wstring> out;
    std::optional<std::wstring> template_file;  // a workbook to fill in
    std::wstring query;
    QueryFormat format = QueryFormat::complete;
    Preference prefer = Preference::none;
    bool apply = false;
    bool encode = false;
    bool json = false;
    bool quiet = false;
    bool window = false;
    bool no_scripts = false;

    // By the name of the result; what goes to standard output has none, but may have a template.
    bool writes_workbook() const;
};

// Takes the arguments that follow the program's name. Throws Failure.
Arguments parse_arguments(std::span<const wchar_t* const> arguments);

// True for a name that ends as those of workbooks do, ".xlsx" in any case.
bool is_workbook_path(std::wstring_view path);

}  // namespace cli
