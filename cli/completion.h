// Scripts that complete commands, options and their values in a shell, made of their definitions.
#pragma once

#include <string>

#include "cli/command_line.h"

namespace cli {

std::string bash_completion(const CLI::App& command_line);
std::string powershell_completion(const CLI::App& command_line);

}  // namespace cli
