#include "hostkit/project_file/loader_parts.h"

#include <algorithm>

#include "hostkit/model/texts.h"

namespace hostkit::project_file {

std::wstring script_text(std::wstring_view text) {
    std::vector<std::wstring_view> lines = split(text, L'\n');
    const auto is_blank = [](std::wstring_view line) { return trimmed(line).empty(); };
    while (!lines.empty() && is_blank(lines.back()))
        lines.pop_back();
    lines.erase(lines.begin(), std::find_if_not(lines.begin(), lines.end(), is_blank));

    std::size_t shared = text.size();
    for (const std::wstring_view line : lines)
        if (!is_blank(line)) shared = std::min(shared, line.find_first_not_of(L" \t"));

    std::wstring result;
    for (const std::wstring_view line : lines) {
        if (!result.empty()) result += L"\r\n";
        if (!is_blank(line)) result += line.substr(shared);
    }
    return result;
}

}  // namespace hostkit::project_file
