#include "cli/nearest.h"

#include <algorithm>
#include <cwctype>

namespace cli {
namespace {

// Fewer letters begin too many names.
constexpr std::size_t least_beginning = 3;
// One change in so many letters is a misspelling.
constexpr std::size_t letters_per_change = 3;

std::wstring folded(std::wstring_view text) {
    std::wstring result(text);
    for (wchar_t& letter : result)
        letter = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(letter)));
    return result;
}

}  // namespace

std::size_t edit_distance(std::wstring_view left, std::wstring_view right) {
    const std::wstring from = folded(left);
    const std::wstring to = folded(right);
    using Row = std::vector<std::size_t>;
    Row before(to.size() + 1);
    Row last(to.size() + 1);
    Row row(to.size() + 1);
    for (std::size_t j = 0; j <= to.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= from.size(); ++i) {
        std::swap(before, last);
        std::swap(last, row);
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t change = from[i - 1] == to[j - 1] ? 0 : 1;
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
    }
    return row[to.size()];
}

std::wstring suggestion(std::wstring_view given, const std::vector<std::wstring>& known) {
    const std::size_t most = std::max<std::size_t>(1, given.size() / letters_per_change);
    const std::wstring* nearest = nullptr;
    std::size_t least = most + 1;
    for (const std::wstring& name : known) {
        const bool begins =
            given.size() >= least_beginning && folded(name).starts_with(folded(given));
        const std::size_t distance =
            begins ? std::min(most, edit_distance(given, name)) : edit_distance(given, name);
        if (distance >= std::min(least, given.size())) continue;
        nearest = &name;
        least = distance;
    }
    if (!nearest) return {};
    return L"; did you mean \"" + *nearest + L"\"?";
}

}  // namespace cli
