// Lines of a module's code.
#pragma once

#include <string_view>

namespace hostkit {

struct SourceLine {
    long number;  // from 1
    std::wstring_view text;
};

// The line with the given number, without its line end. A number outside of the code means the
// nearest line: a block that is never closed is only noticed behind the last one.
SourceLine source_line(std::wstring_view code, long number) noexcept;

}  // namespace hostkit
