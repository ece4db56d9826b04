// Lines of text on the process's standard streams.
#pragma once

#include <string_view>

namespace hostkit {

enum class StandardStream { output, error };

// Writes the text and a line end: characters to a console, UTF-8 to a file or a pipe. Does nothing
// when the process has no such stream.
void write_line(StandardStream stream, std::wstring_view text);

}  // namespace hostkit
