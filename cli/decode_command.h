// tessera decode: decodes a file of encoded strings.
#pragma once

#include "cli/arguments.h"
#include "cli/console.h"

namespace cli {

// Answers the exit code. Throws Failure.
int run_decode(const Arguments& arguments, Console& console);

}  // namespace cli
