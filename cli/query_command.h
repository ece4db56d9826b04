// tessera query: runs a query and writes what it finds.
#pragma once

#include "cli/arguments.h"
#include "cli/console.h"

namespace cli {

// Answers the exit code. Throws Failure.
int run_query(const Arguments& arguments, Console& console);

}  // namespace cli
