// The text of an XML file, whatever it is encoded in.
#pragma once

#include <string>

namespace hostkit::project_file {

// The bytes as UTF-8 without byte-order mark and without a declared encoding; lines and columns
// stay where they are. Throws when the encoding is none that is read, or when the bytes are not
// valid in it; the path and the line are for that sentence.
std::string utf8_text(const std::wstring& path, std::string bytes);

}  // namespace hostkit::project_file
