// The texts that explain the commands, made of their definitions.
#pragma once

#include <string>

#include "cli/command_line.h"

namespace cli {

// Every command, how it is called and what it does.
std::string overview(const CLI::App& command_line);
// One command, with its options.
std::string command_help(const CLI::App& command);

}  // namespace cli
