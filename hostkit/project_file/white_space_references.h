// Line ends and tabs that a file writes as character references: "&#13;&#10;".
//
// In attributes they stay what they are while white space that is written as itself becomes a
// blank. Not every parser knows the difference, so they go through it as characters that no text
// has.
#pragma once

#include <string>

namespace hostkit::project_file {

// In the text of a file, UTF-8: stand-ins for the references; comments and CDATA stay as they are.
std::string hide_white_space_references(const std::string& text);
// In a name or value of the parser: the characters for the stand-ins.
std::wstring white_space_restored(std::wstring text);

}  // namespace hostkit::project_file
