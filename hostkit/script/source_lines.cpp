#include "hostkit/script/source_lines.h"

namespace hostkit {
namespace {

std::wstring_view without_return(std::wstring_view line) noexcept {
    if (!line.empty() && line.back() == L'\r') line.remove_suffix(1);
    return line;
}

}  // namespace

SourceLine source_line(std::wstring_view code, long number) noexcept {
    // The line end of the last line does not begin another one.
    if (!code.empty() && code.back() == L'\n') code.remove_suffix(1);
    long current = 1;
    std::size_t start = 0;
    std::size_t end = code.find(L'\n');
    while (current < number && end != std::wstring_view::npos) {
        ++current;
        start = end + 1;
        end = code.find(L'\n', start);
    }
    if (end == std::wstring_view::npos) end = code.size();
    return {current, without_return(code.substr(start, end - start))};
}

}  // namespace hostkit
