// The commands of the program, each in a file of its name.
#pragma once

#include "cli/arguments.h"
#include "cli/console.h"

namespace cli {

// They answer the exit code, and throw Failure.
int run_check(const Arguments& arguments, Console& console);
int run_decode(const Arguments& arguments, Console& console);
int run_diff(const Arguments& arguments, Console& console);
int run_export(const Arguments& arguments, Console& console);
int run_preview(const Arguments& arguments, Console& console);
int run_list(const Arguments& arguments, Console& console);
int run_import(const Arguments& arguments, Console& console);
int run_query(const Arguments& arguments, Console& console);
int run_spreadsheet(const Arguments& arguments, Console& console);

}  // namespace cli
