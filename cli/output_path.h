// Where results are written to.
#pragma once

#include <string>
#include <string_view>

namespace cli {

// "plant.Datasheet.content.xml" for the project file "…/plant.xml": a name in the current folder.
// What file names cannot have is written as "%2F", so that two names are never one file.
std::wstring content_file_name(std::wstring_view project_path, std::wstring_view document_name);

// Throws Failure when writing to the path would overwrite the input, whatever it is called there.
void check_output_path(const std::wstring& path, const std::wstring& input);

}  // namespace cli
