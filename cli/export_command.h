// tessera export: runs a document's mapping script and writes the content document.
#pragma once

#include "cli/arguments.h"
#include "cli/console.h"

namespace cli {

// Answers the exit code. Throws Failure.
int run_export(const Arguments& arguments, Console& console);

}  // namespace cli
