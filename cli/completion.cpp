#include "cli/completion.h"

#include "cli/words.h"

namespace cli {
namespace {

constexpr const char* bash_begin = R"(# Completes the commands and options of tessera.exe in bash:
#     source <(tessera completion bash)
_tessera_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}
_tessera_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$1")
}
_tessera() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} options= operands=
    COMPREPLY=()
    # bash parts "--name=value" at the sign.
    if [ "$word" = = ]; then
        word=
    elif [ "$before" = = ]; then
        before=${COMP_WORDS[COMP_CWORD-2]}
    fi
    if [ "$COMP_CWORD" -eq 1 ]; then
)";

constexpr const char* bash_end = R"(    case $word in
        -*) _tessera_words "$options" "$word" ;;
        *) if [ "$operands" ]; then
               _tessera_words "$operands" "$word"
           else
               _tessera_files "$word"
           fi ;;
    esac
}
complete -F _tessera tessera tessera.exe
)";

constexpr const char* powershell_begin =
    R"(# Completes the commands and options of tessera.exe in PowerShell:
#     tessera completion powershell | Out-String | Invoke-Expression
Register-ArgumentCompleter -Native -CommandName tessera, tessera.exe -ScriptBlock {
    param($word, $ast, $position)
    # Of each command its options, and of each option its values; of what has no name as well.
    $commands = [ordered]@{
)";

constexpr const char* powershell_end = R"(    }
    $given = @($ast.CommandElements | Select-Object -Skip 1 | ForEach-Object { $_.ToString() })
    $done = if ($word) { @($given | Select-Object -SkipLast 1) } else { $given }
    if ($done.Count -eq 0) {
        $found = @($commands.Keys) + '--help', '--version'
    } elseif ($commands.Contains($done[0])) {
        $options = $commands[$done[0]]
        $last = $done[-1]
        if ($done.Count -gt 1 -and $options.Contains($last) -and $null -ne $options[$last]) {
            $found = $options[$last]
        } elseif ($word -like '-*') {
            $found = @($options.Keys | Where-Object { $_ })
        } else {
            $found = $options['']
        }
    }
    # Without one, PowerShell completes the names of files.
    $found | Where-Object { $_ -like "$word*" } | ForEach-Object {
        [System.Management.Automation.CompletionResult]::new($_, $_, 'ParameterValue', $_)
    }
}
)";

std::vector<std::string> command_names(const CLI::App& command_line) {
    std::vector<std::string> names;
    for (const CLI::App* const command : commands_of(command_line))
        names.push_back(command->get_name());
    return names;
}

std::vector<const CLI::Option*> options_with_values(const CLI::App& command) {
    return command.get_options([](const CLI::Option* option) {
        return option->nonpositional() && !value_of(*option).empty();
    });
}

std::vector<std::string> option_names(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* const option : command.get_options())
        if (option->nonpositional()) names.push_back(option->get_name());
    return names;
}

// What an argument without a name can be, where that is known.
std::vector<std::string> operand_choices(const CLI::App& command) {
    for (const CLI::Option* const option : command.get_options())
        if (option->get_positional()) return choices_of(*option);
    return {};
}

// What may stand behind an option: a file, one of some words, or what nobody knows.
std::string bash_value(const CLI::Option& option) {
    const auto choices = choices_of(option);
    if (!choices.empty()) return "_tessera_words '" + joined(choices, " ") + "' \"$word\"; ";
    return takes_file(option) ? "_tessera_files \"$word\"; " : "";
}

std::string powershell_list(const std::vector<std::string>& words) {
    return words.empty() ? "@()" : "@('" + joined(words, "', '") + "')";
}

std::string powershell_options(const CLI::App& command) {
    std::vector<std::string> options{"'' = " + powershell_list(operand_choices(command))};
    for (const std::string& name : option_names(command)) {
        const CLI::Option& option = *command.get_option(name);
        options.push_back(
            "'" + name +
            "' = " + (value_of(option).empty() ? "$null" : powershell_list(choices_of(option))));
    }
    return joined(options, "; ");
}

}  // namespace

std::string bash_completion(const CLI::App& command_line) {
    std::string text = bash_begin;
    text += "        _tessera_words '" + joined(command_names(command_line), " ") +
            " --help --version' \"$word\"\n        return\n    fi\n";
    text += "    case ${COMP_WORDS[1]}:$before in\n";
    for (const CLI::App* const command : commands_of(command_line))
        for (const CLI::Option* const option : options_with_values(*command))
            text += "        " + command->get_name() + ":" + option->get_name() + ") " +
                    bash_value(*option) + "return ;;\n";
    text += "    esac\n    case ${COMP_WORDS[1]} in\n";
    for (const CLI::App* const command : commands_of(command_line))
        text += "        " + command->get_name() + ") options='" +
                joined(option_names(*command), " ") + "' operands='" +
                joined(operand_choices(*command), " ") + "' ;;\n";
    return text + "    esac\n" + bash_end;
}

std::string powershell_completion(const CLI::App& command_line) {
    std::string text = powershell_begin;
    for (const CLI::App* const command : commands_of(command_line))
        text +=
            "        '" + command->get_name() + "' = @{ " + powershell_options(*command) + " }\n";
    return text + powershell_end;
}

}  // namespace cli
