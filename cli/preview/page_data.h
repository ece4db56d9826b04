// What the page's script shows, as data.
#pragma once

#include <string>

#include "cli/preview/page.h"

namespace cli {

// JSON that may stand inside a script element of a page.
std::string page_data(const PageSource& source);

}  // namespace cli
