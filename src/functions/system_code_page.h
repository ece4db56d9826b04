// The system's ANSI code page as the codecs want it.
#pragma once

#include "codec/ansi_code_page.h"

namespace tessera {

// Made once. In a code page with double-byte characters only the single-byte ones are held.
const AnsiCodePage& system_code_page();

}  // namespace tessera
