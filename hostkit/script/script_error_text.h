// What a script error quotes: an English text where the engine delivers only a number, and the line
// of the code.
#pragma once

#include <string>
#include <string_view>

#include "automation/windows_headers.h"

namespace hostkit {

// What a run-time error's code says; never empty.
std::wstring runtime_error_text(HRESULT code);

struct SourceLine {
    long number;  // from 1
    std::wstring_view text;
};

// The line with the given number, without its line end. A number outside of the code means the
// nearest line: a block that is never closed is only noticed behind the last one.
SourceLine source_line(std::wstring_view code, long number) noexcept;

}  // namespace hostkit
