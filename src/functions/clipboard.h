// Unicode text on the system clipboard.
#pragma once

#include <string>
#include <string_view>

#include "automation/windows_headers.h"

namespace tessera {

// Puts the text on the clipboard, unless another program holds it. Throws when memory runs out.
void put_clipboard_text(std::wstring_view text);

// The text on the clipboard; empty when there is none or another program holds the clipboard.
std::wstring clipboard_text();

}  // namespace tessera
