// A text in UTF-8 as a stream for the platform's XML reader.
#pragma once

#include <string>

#include "automation/com_ptr.h"

namespace hostkit::project_file {

// Wine's reader loses its place when a block that it got ends with a character that is no ASCII,
// and texts come out changed. Every block ends with one that is. Where a text has none for so long
// that none can, reading fails, and `is_stuck`, which must outlive the stream, becomes true.
automation::ComPtr<ISequentialStream> make_text_blocks(std::string text, bool& is_stuck);

}  // namespace hostkit::project_file
