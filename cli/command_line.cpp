#include "cli/command_line.h"

#include <algorithm>
#include <functional>

#include "cli/nearest.h"
#include "cli/wide_text.h"
#include "cli/words.h"

namespace cli {
namespace {

// Placeholders of values that are no files; one with bars lists the values that there are.
constexpr const char* name_value = "NAME";
constexpr const char* login_value = "LOGIN";
constexpr char bar = '|';

using Take = std::function<void(const std::string&)>;
template <class Value>
using Names = std::vector<std::pair<std::string, Value>>;

// What is wrong with a value that is none of the choices, or nothing.
std::string choice_problem(const std::string& choices, const std::string& value) {
    const std::vector<std::string> known = split(choices, bar);
    if (std::ranges::count(known, value) > 0) return {};
    std::vector<std::wstring> names(known.size());
    std::ranges::transform(known, names.begin(), wide);
    return "\"" + value + "\" is none of " + joined(known, ", ") +
           utf8(suggestion(wide(value), names));
}

void expect(CLI::Option& option, const std::string& placeholder) {
    option.type_name(placeholder);
    option.check([placeholder](const std::string& value) {
        if (value.empty()) return std::string("its value is empty");
        if (placeholder.find(bar) == placeholder.npos) return std::string();
        return choice_problem(placeholder, value);
    });
}

// One command while it is defined.
class Definition {
  public:
    Definition(CLI::App& command_line, const char* name, const char* purpose)
        : command_(*command_line.add_subcommand(name, purpose)) {}

    Definition& runs(Arguments& arguments, Command command) {
        command_.callback([&arguments, command] { arguments.command = command; });
        return *this;
    }

    // An argument without a name; `role` says what it is when it is missing.
    Definition& operand(const char* name, const char* role, std::wstring& field) {
        expect(*add(name, role, [&field](const std::string& value) { field = wide(value); }),
               "FILE");
        last_->required();
        return *this;
    }
    Definition& option(const char* name, const std::string& placeholder, std::wstring& field,
                       const char* text) {
        return option(name, placeholder,
                      Take([&field](const std::string& value) { field = wide(value); }), text);
    }
    Definition& option(const char* name, const std::string& placeholder,
                       std::optional<std::wstring>& field, const char* text) {
        return option(name, placeholder,
                      Take([&field](const std::string& value) { field = wide(value); }), text);
    }
    template <class Value>
    Definition& choice(const char* name, const Names<Value>& names, Value& field,
                       const char* text) {
        std::string placeholder;
        for (const auto& known : names)
            placeholder += (placeholder.empty() ? "" : std::string(1, bar)) + known.first;
        return option(name, placeholder, Take([&field, names](const std::string& value) {
                          for (const auto& known : names)
                              if (known.first == value) field = known.second;
                      }),
                      text);
    }
    Definition& flag(const char* name, bool& field, const char* text) {
        last_ = command_.add_flag(name, field, text)->disable_flag_override();
        return *this;
    }

    // What commands on a project take besides.
    Definition& opens_project(Arguments& arguments) {
        return option("--language", name_value, arguments.language,
                      "language of texts and numbers: one of the project's, by its name or its "
                      "locale identifier")
            .option("--user", login_value, arguments.user, "log in as this user of the project");
    }

    // These are said of the option that was defined last.
    Definition& required() {
        last_->required();
        return *this;
    }
    Definition& needs(const char* other) {
        last_->needs(command_.get_option(other));
        return *this;
    }
    Definition& excludes(const char* other) {
        last_->excludes(command_.get_option(other));
        return *this;
    }

  private:
    CLI::Option* add(const char* name, const char* text, const Take& take) {
        return last_ = command_.add_option_function<std::string>(name, take, text);
    }
    Definition& option(const char* name, const std::string& placeholder, const Take& take,
                       const char* text) {
        expect(*add(name, text, take), placeholder);
        return *this;
    }

    CLI::App& command_;
    CLI::Option* last_ = nullptr;
};

class CommandLine {
  public:
    explicit CommandLine(Arguments& arguments)
        : arguments_(arguments),
          app_(std::make_unique<CLI::App>("exports and queries of project files", "tessera")) {
        app_->set_help_flag("-h,-?,--help", "explain the command");
        app_->set_version_flag("--version", "");
        app_->allow_windows_style_options(false);  // "/folder/file" is a path
        app_->require_subcommand(1);
        define_export();
        define_query();
        define_spreadsheet();
        define_import();
        define_decode();
        define_check();
        define_diff();
        define_preview();
        define_list();
        define_completion();
        define_help();
    }

    std::unique_ptr<CLI::App> take() { return std::move(app_); }

  private:
    Definition command(const char* name, const char* purpose, Command command) {
        return Definition(*app_, name, purpose).runs(arguments_, command);
    }

    void define_export() {
        command("export", "Runs the mapping script of a document and writes the content document.",
                Command::export_document)
            .operand("PROJECT", "the project file", arguments_.input)
            .option("--document", name_value, arguments_.document,
                    "name or path of the document; without it, the first document that has a "
                    "mapping table")
            .option("--script", "FILE", arguments_.script,
                    "a script to run in place of the document's own")
            .flag("--no-scripts", arguments_.no_scripts,
                  "run no script and evaluate no expression of the project file")
            .excludes("--script")
            .option("--out", "FILE", arguments_.out,
                    "where to write; without it, PROJECT.DOCUMENT.content.xml in the current "
                    "folder; with a name that ends in \".xlsx\", a workbook; \"-\" is standard "
                    "output")
            .option("--template", "FILE", arguments_.template_file,
                    "a workbook whose cells are filled in; it stays as it is")
            .needs("--out")
            .opens_project(arguments_)
            .flag("--quiet", arguments_.quiet, "tell only the path and the errors")
            .flag("--window", arguments_.window, "show the progress form");
    }

    void define_query() {
        const Names<QueryFormat> formats{{"columns", QueryFormat::columns},
                                         {"rows", QueryFormat::rows},
                                         {"complete", QueryFormat::complete},
                                         {"strings", QueryFormat::strings}};
        command("query",
                "Runs a query and writes what it finds: the document of its \"columns\", the "
                "documents of its \"rows\" below one root, the \"complete\" content document of "
                "headings and cells, or \"strings\", one for each row.",
                Command::query)
            .operand("PROJECT", "the project file", arguments_.input)
            .option("--query", name_value, arguments_.query, "name of the query")
            .required()
            .choice("--format", formats, arguments_.format, "what to write")
            .required()
            .flag("--encode", arguments_.encode, "encode each of the strings")
            .option("--out", "FILE", arguments_.out, "where to write; without it, standard output")
            .opens_project(arguments_)
            .flag("--quiet", arguments_.quiet, "tell only the path and the errors")
            .flag("--window", arguments_.window, "show the progress form");
    }

    void define_spreadsheet() {
        command("spreadsheet", "Makes a workbook of a content document.", Command::spreadsheet)
            .operand("CONTENT", "the content document", arguments_.input)
            .option("--out", "FILE", arguments_.out, "the workbook, \"….xlsx\", or \"-\"")
            .required()
            .option("--template", "FILE", arguments_.template_file,
                    "a workbook whose cells are filled in; it stays as it is")
            .flag("--quiet", arguments_.quiet, "tell only the path and the errors");
    }

    void define_import() {
        const Names<Preference> sides{{"sheet", Preference::sheet},
                                      {"project", Preference::project}};
        command("import",
                "Compares the cells of a workbook, which \"tessera export\" made and somebody "
                "edited, with the project, and shows what would be written.",
                Command::import_workbook)
            .operand("WORKBOOK", "the workbook", arguments_.input)
            .option("--project", "FILE", arguments_.project, "the project file")
            .required()
            .flag("--apply", arguments_.apply,
                  "write it; the project file that was there is kept as PROJECT.bak")
            .choice("--prefer", sides, arguments_.prefer,
                    "what to take when a value was changed on both sides")
            .opens_project(arguments_)
            .flag("--json", arguments_.json, "the report for programs")
            .flag("--quiet", arguments_.quiet, "tell only the errors, the counts and the path");
    }

    void define_decode() {
        command("decode", "Decodes a file of encoded strings, one in each line.", Command::decode)
            .operand("FILE", "the file to decode", arguments_.input)
            .option("--out", "FILE", arguments_.out, "where to write; without it, standard output")
            .flag("--quiet", arguments_.quiet, "tell only the path and the errors");
    }

    void define_check() {
        command("check",
                "Reports what is wrong with a content document, or with the one in a workbook: by "
                "rule, with counts and places.",
                Command::check)
            .operand("CONTENT", "the content document", arguments_.input)
            .option("--project", "FILE", arguments_.project,
                    "look objects and units up in this project file, too")
            .flag("--json", arguments_.json, "the report for programs")
            .flag("--quiet", arguments_.quiet, "tell the counts only");
    }

    void define_diff() {
        command("diff", "Compares two content documents or workbooks cell by cell.", Command::diff)
            .operand("OLD", "the old content document", arguments_.input)
            .operand("NEW", "the new content document", arguments_.second_input)
            .flag("--json", arguments_.json, "the report for programs")
            .flag("--quiet", arguments_.quiet, "tell the counts only");
    }

    void define_preview() {
        command("preview", "Writes a page that shows the cells as a browser can.", Command::preview)
            .operand("CONTENT", "the content document", arguments_.input)
            .option("--against", "FILE", arguments_.against,
                    "mark what has changed since this content document")
            .option("--out", "FILE", arguments_.out, "the page, or \"-\"")
            .required()
            .flag("--quiet", arguments_.quiet, "tell only the path");
    }

    void define_list() {
        command("list", "Lists the documents, queries and languages of a project.", Command::list)
            .operand("PROJECT", "the project file", arguments_.input)
            .opens_project(arguments_)
            .flag("--json", arguments_.json, "the list for programs");
    }

    void define_completion() {
        const Names<Shell> shells{{"bash", Shell::bash}, {"powershell", Shell::powershell}};
        command("completion", "Writes a script that completes commands and options in a shell.",
                Command::text)
            .choice("SHELL", shells, arguments_.shell, "the shell")
            .required();
    }

    // Last of all: it knows the names of the others.
    void define_help() {
        std::string names = "help";
        for (const CLI::App* const known : commands_of(*app_))
            names += bar + known->get_name();
        command("help", "Explains a command and its options.", Command::text)
            .option("COMMAND", names, arguments_.topic, "the command; without it, all of them");
    }

    Arguments& arguments_;
    std::unique_ptr<CLI::App> app_;
};

}  // namespace

std::unique_ptr<CLI::App> make_command_line(Arguments& arguments) {
    return CommandLine(arguments).take();
}

std::vector<const CLI::App*> commands_of(const CLI::App& command_line) {
    return command_line.get_subcommands([](const CLI::App*) { return true; });
}

std::string value_of(const CLI::Option& option) {
    return option.get_expected_max() == 0 ? std::string() : option.get_type_name();
}

std::vector<std::string> choices_of(const CLI::Option& option) {
    const std::string value = value_of(option);
    if (value.find(bar) == value.npos) return {};
    return split(value, bar);
}

bool takes_file(const CLI::Option& option) {
    const std::string value = value_of(option);
    return !value.empty() && value != name_value && value != login_value &&
           value.find(bar) == value.npos;
}

}  // namespace cli
