// The text of an XML file, whatever it is encoded in.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace hostkit::project_file {

enum class Encoding { utf8, utf16_little, utf16_big, windows_1252, latin_1 };

// What a byte-order mark, the first character or else the XML declaration says. Nothing for an
// encoding that is not read, or none that the file can be in.
std::optional<Encoding> encoding_of(std::string_view bytes);

// The bytes as UTF-8 without byte-order mark and without a declared encoding; lines and columns
// stay where they are. Throws when the encoding is none that is read, or when the bytes are not
// valid in it; the path and the line are for that sentence.
std::string utf8_text(const std::wstring& path, std::string bytes);

}  // namespace hostkit::project_file
