#include "cli/arguments.h"

#include <algorithm>
#include <vector>

#include "cli/command_help.h"
#include "cli/command_line.h"
#include "cli/completion.h"
#include "cli/failure.h"
#include "cli/nearest.h"
#include "cli/standard_path.h"
#include "cli/wide_text.h"

namespace cli {
namespace {

std::wstring in_quotes(std::wstring_view text) {
    return std::wstring(L"\"").append(text).append(L"\"");
}

std::wstring in_quotes(const std::string& text) {
    return in_quotes(wide(text));
}

// Says why the arguments cannot be used, in this program's words.
class Problem {
  public:
    explicit Problem(const CLI::App& command_line)
        : command_line_(command_line),
          given_(command_line.get_subcommands()),
          command_(given_.empty() ? command_line : *given_.front()) {}

    std::wstring of(const CLI::ParseError& error) const {
        if (given_.empty()) return no_command();
        std::wstring text = wide(error.what());
        if (dynamic_cast<const CLI::ExtrasError*>(&error))
            text = not_expected();
        else if (dynamic_cast<const CLI::RequiredError*>(&error))
            text = missing();
        else if (dynamic_cast<const CLI::ArgumentMismatch*>(&error))
            text = mismatch(error.what());
        return of(text);
    }
    std::wstring of(const std::wstring& text) const {
        return wide(command_.get_name()) + L": " + text;
    }

  private:
    std::wstring no_command() const {
        const std::wstring given = first_extra();
        if (given.empty()) return L"no command is given; \"tessera --help\" lists them";
        std::vector<std::wstring> known;
        for (const CLI::App* const command : commands_of(command_line_))
            known.push_back(wide(command->get_name()));
        return L"there is no command " + in_quotes(given) +
               or_else(suggestion(given, known), L"\"tessera --help\" lists them");
    }

    std::wstring not_expected() const {
        const std::wstring given = first_extra();
        if (given.size() < 2 || given.front() != L'-')
            return in_quotes(given) + L" is one argument too many; \"tessera help " +
                   wide(command_.get_name()) + L"\" says what it takes";
        const std::wstring name = given.substr(0, given.find(L'='));
        std::vector<std::wstring> known;
        for (const CLI::Option* const option : command_.get_options())
            if (option->nonpositional()) known.push_back(wide(option->get_name()));
        if (std::ranges::count(known, name) > 0)
            return in_quotes(name) + L" must stand behind the command";
        return L"there is no option " + in_quotes(name) +
               or_else(suggestion(name, known),
                       L"\"tessera help " + wide(command_.get_name()) + L"\" lists them");
    }

    std::wstring missing() const {
        for (const CLI::Option* const option : command_.get_options())
            if (option->get_required() && option->count() == 0)
                return (option->get_positional() ? wide(option->get_description())
                                                 : in_quotes(option->get_name())) +
                       L" is missing";
        return {};
    }

    // The library's sentence begins with the option that it is about.
    std::wstring mismatch(const std::string& sentence) const {
        const std::string name = sentence.substr(0, sentence.find_first_of(" :"));
        if (const CLI::Option* const flag = command_.get_option_no_throw("--" + name))
            return in_quotes(flag->get_name()) + L" takes no value";
        const CLI::Option* const option = command_.get_option_no_throw(name);
        if (!option) return wide(sentence);
        return in_quotes(name) + (option->count() > 1 ? L" is given twice" : L" needs a value");
    }

    std::wstring first_extra() const {
        for (const std::string& extra : command_line_.remaining(true))
            if (extra != "--") return wide(extra);
        return {};
    }

    static std::wstring or_else(const std::wstring& suggested, const std::wstring& hint) {
        return suggested.empty() ? L"; " + hint : suggested;
    }

    const CLI::App& command_line_;
    const std::vector<CLI::App*> given_;
    const CLI::App& command_;
};

// The library takes its arguments from the back.
std::vector<std::string> reversed(std::span<const wchar_t* const> arguments) {
    std::vector<std::string> texts;
    for (const wchar_t* const argument : arguments)
        texts.insert(texts.begin(),
                     argument == std::wstring_view(L"/?") ? "--help" : utf8(argument));
    return texts;
}

// Behind a sign the library would take the next argument for the value.
void check_signs(std::span<const wchar_t* const> arguments) {
    for (const std::wstring_view argument : arguments) {
        if (argument == L"--") return;
        if (argument.starts_with(L"--") && argument.find(L'=') == argument.size() - 1)
            throw Failure(in_quotes(argument.substr(0, argument.size() - 1)) +
                          L" needs a value behind its \"=\"");
    }
}

// Spreadsheet programs go by the name.
std::wstring workbook_problem(const std::wstring& path) {
    if (is_workbook_path(path) || is_standard(path)) return {};
    return in_quotes(path) + L" is no name of a workbook: it must end in \".xlsx\"";
}

// Standard input comes to its end when it is read.
std::wstring input_problem(const Arguments& arguments) {
    const std::optional<std::wstring> read[] = {arguments.input,   arguments.second_input,
                                                arguments.project, arguments.against,
                                                arguments.script,  arguments.template_file};
    if (std::ranges::count(read, std::wstring(standard_path)) > 1)
        return L"only one file can be \"-\": standard input is read once";
    if (arguments.apply && is_standard(*arguments.project))
        return L"\"--apply\" needs a project file to write to; standard input is none";
    return {};
}

// What the library does not look at: whether the values of options go together.
std::wstring combination_problem(const Arguments& arguments) {
    if (const std::wstring problem = input_problem(arguments); !problem.empty()) return problem;
    if (arguments.command == Command::spreadsheet || arguments.template_file)
        return workbook_problem(*arguments.out);
    if (arguments.encode && arguments.format != QueryFormat::strings)
        return L"\"--encode\" is for \"--format strings\" only";
    return {};
}

std::wstring explanation(const CLI::App& command_line, const std::wstring& topic) {
    return wide(topic.empty() ? overview(command_line)
                              : command_help(*command_line.get_subcommand(utf8(topic))));
}

std::wstring completion(const CLI::App& command_line, Shell shell) {
    return wide(shell == Shell::bash ? bash_completion(command_line)
                                     : powershell_completion(command_line));
}

Arguments told(std::wstring text) {
    Arguments arguments;
    arguments.text = std::move(text);
    return arguments;
}

}  // namespace

Arguments parse_arguments(std::span<const wchar_t* const> given) {
    Arguments arguments;
    const auto command_line = make_command_line(arguments);
    try {
        check_signs(given);
        command_line->parse(reversed(given));
    } catch (const CLI::CallForVersion&) {
        return told(L"tessera " TESSERA_VERSION L"\n");
    } catch (const CLI::CallForHelp&) {
        const auto commands = command_line->get_subcommands();
        return told(
            explanation(*command_line, commands.empty() ? L"" : wide(commands[0]->get_name())));
    } catch (const CLI::ParseError& error) {
        throw Failure(Problem(*command_line).of(error));
    }
    if ((arguments.command == Command::query || arguments.command == Command::decode) &&
        arguments.out == standard_path)
        arguments.out.reset();  // where they write to without it
    const std::wstring problem = combination_problem(arguments);
    if (!problem.empty()) throw Failure(Problem(*command_line).of(problem));
    if (arguments.shell != Shell::none)
        arguments.text = completion(*command_line, arguments.shell);
    else if (arguments.command == Command::text)
        arguments.text = explanation(*command_line, arguments.topic);
    return arguments;
}

bool Arguments::writes_workbook() const {
    if (!out) return false;
    return is_workbook_path(*out) || (is_standard(*out) && template_file);
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
