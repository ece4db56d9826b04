// Taking a document pointer (sheet, "!", cell) apart.
#pragma once

#include <string>

#include "automation/bstr.h"

namespace tessera {

// Splits "sheet!cell" and adds the cell's column to `column`, which the caller sets to 0. What
// follows a second "!" is ignored; column letters are not checked. False, after an error report,
// when there is no cell or its text has no number at its end.
bool SplitExDocP(std::wstring_view pointer, std::wstring& sheet, long& column, long& row) noexcept;

}  // namespace tessera
