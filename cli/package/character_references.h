// Characters that a text of XML names by their number: "&#10;", "&#x1F600;".
//
// Not every parser of the platforms reads those of white space and those beyond 16 bits rightly, so
// they are resolved before it sees them. White space goes through it as characters that no text
// has: a parser changes what stands there as itself.
#pragma once

#include <string>
#include <string_view>

namespace cli {

// Of a text in UTF-8; one in UTF-16 stays as it is. References of ASCII characters that print stay,
// as do comments and CDATA.
std::string resolved_references(std::string_view text);
// In a text that came from the parser.
void restore_white_space(std::wstring& text) noexcept;

}  // namespace cli
