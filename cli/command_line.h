// The commands and their options, each defined once: what reads them, explains them and completes
// them goes by this.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "cli/arguments.h"

namespace cli {

// The parser, which writes what it reads into the arguments: they must outlive it.
std::unique_ptr<CLI::App> make_command_line(Arguments& arguments);

// The commands in the order of their definition.
std::vector<const CLI::App*> commands_of(const CLI::App& command_line);
// "FILE"; empty for an option that takes no value.
std::string value_of(const CLI::Option& option);
// The values that there are for an option or an operand; none when any is right.
std::vector<std::string> choices_of(const CLI::Option& option);
// True when a value is the path of a file.
bool takes_file(const CLI::Option& option);

}  // namespace cli
