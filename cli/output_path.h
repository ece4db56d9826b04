// Where results are written to.
#pragma once

#include <string>
#include <string_view>

#include "cli/console.h"

namespace cli {

// "plant.Datasheet.content.xml" for the project file "…/plant.xml": a name in the current folder.
// That of a project from standard input begins with "project".
// What file names cannot have is written as "%2F", so that two names are never one file.
std::wstring content_file_name(std::wstring_view project_path, std::wstring_view document_name);

// Throws Failure when writing to the path would overwrite the input, whatever it is called there.
void check_output_path(const std::wstring& path, const std::wstring& input);

// What a command tells goes to standard output, unless that takes the result.
ConsoleStream& teller(Console& console, const std::wstring& path);
// In the last line, where the result is: for programs the path alone.
void tell_written(Console& console, const std::wstring& path, bool quiet);

}  // namespace cli
