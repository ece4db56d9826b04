// What the page's script shows, as data.
#pragma once

#include <string>

#include "cli/preview/page.h"

namespace cli {

// JSON that may stand inside a script element: no "<" in it ends the element, and no line separator
// is one to the script.
std::string page_data(const PageSource& source);

}  // namespace cli
