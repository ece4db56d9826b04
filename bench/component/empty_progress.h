// The baseline of calls: an object whose members do nothing, behind the same dispatch.
#pragma once

#include "automation/com_ptr.h"
#include "tessera.h"

namespace bench {

// Made in a file of its own, so that the compiler does not know whose members it calls.
automation::ComPtr<ITesseraProgress> make_empty_progress();

}  // namespace bench
