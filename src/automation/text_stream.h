// A text in UTF-8, or in UTF-16 with a byte-order mark, as a stream for the platform's XML reader.
#pragma once

#include <string>

#include "automation/com_ptr.h"

namespace automation {

// Wine's reader loses its place when a block ends with a character that is no ASCII, and texts come
// out changed: blocks end with ASCII, and long runs of other characters have references in them.
ComPtr<ISequentialStream> make_text_stream(std::string text);

}  // namespace automation
