#include "cli/command_help.h"

#include "cli/words.h"

namespace cli {
namespace {

constexpr std::size_t page_width = 80;
// Where the texts of operands and options begin.
constexpr std::size_t text_column = 22;

constexpr const char* in_general = R"("tessera help COMMAND" explains a command and its options.
"--name value" and "--name=value" mean the same; after "--" everything is a
file name. "-" in place of a file to read is standard input, in place of one to
write standard output.

Exit code: 0 done, 1 errors were reported, nothing came back, or diff found
differences, 2 the command could not be run.
)";

// The words in lines that begin at the column `indent`, behind what stands in the first one.
std::string wrapped(std::string text, std::size_t indent, const std::vector<std::string>& words) {
    std::size_t line = 0;
    const auto begin_line = [&] {
        text += '\n';
        line = text.size();
    };
    if (text.size() > 0 && text.size() >= indent) begin_line();
    text.resize(line + indent, ' ');
    for (const std::string& word : words) {
        const bool is_first = text.size() == line + indent;
        if (!is_first && text.size() - line + 1 + word.size() > page_width) {
            begin_line();
            text.append(indent, ' ');
        } else if (!is_first) {
            text += ' ';
        }
        text += word;
    }
    return text + "\n";
}

std::vector<std::string> words_of(const std::string& text) {
    return split(text, ' ');
}

std::vector<const CLI::Option*> options_of(const CLI::App& command) {
    return command.get_options(
        [&](const CLI::Option* option) { return option != command.get_help_ptr(); });
}

// "--out FILE", "PROJECT"
std::string name_with_value(const CLI::Option& option) {
    if (option.get_positional()) return option.get_name(true);
    const std::string value = value_of(option);
    return option.get_name() + (value.empty() ? "" : " " + value);
}

std::string usage(const CLI::App& command) {
    std::vector<std::string> parts;
    for (const CLI::Option* const option : options_of(command)) {
        const std::string name = name_with_value(*option);
        parts.push_back(option->get_required() ? name : "[" + name + "]");
    }
    const std::string call = "tessera " + command.get_name();
    return wrapped(call, call.size() + 1, parts);
}

std::string explained(const CLI::Option& option) {
    std::string text = option.get_description();
    if (option.get_positional() && !choices_of(option).empty())
        text += ": " + joined(choices_of(option), ", ");
    return wrapped("  " + name_with_value(option), text_column, words_of(text));
}

}  // namespace

std::string overview(const CLI::App& command_line) {
    std::string text = "tessera - " + command_line.get_description() + "\n\n";
    for (const CLI::App* const command : commands_of(command_line))
        text += usage(*command) + wrapped({}, 4, words_of(command->get_description())) + "\n";
    return text + "tessera --help\ntessera --version\n\n" + in_general;
}

std::string command_help(const CLI::App& command) {
    std::string text =
        usage(command) + "\n" + wrapped({}, 0, words_of(command.get_description())) + "\n";
    for (const CLI::Option* const option : options_of(command))
        text += explained(*option);
    return text;
}

}  // namespace cli
