#include "cli/text_table.h"

#include <algorithm>
#include <numeric>

#include "cli/text.h"

namespace cli {
namespace {

constexpr std::u16string_view gap = u"  ";

using Row = std::vector<std::u16string>;
using Widths = std::vector<std::size_t>;

Row made_visible(const Row& row) {
    Row result;
    for (const std::u16string& cell : row)
        result.push_back(visible(cell));
    return result;
}

void widen(Widths& widths, const Row& row) {
    for (std::size_t i = 0; i < widths.size(); ++i)
        widths[i] = std::max(widths[i], display_width(row[i]));
}

// Takes from the widest column what is too much, one column of text at a time, but no column is
// made narrower than its heading.
void narrow(Widths& widths, const Widths& least, std::size_t width) {
    for (std::size_t i = 0; i < widths.size(); ++i)
        widths[i] = std::max(std::min(widths[i], width), least[i]);
    std::size_t total = std::accumulate(widths.begin(), widths.end(), std::size_t{0}) +
                        gap.size() * (widths.size() - 1);
    while (total > width) {
        std::size_t widest = widths.size();
        for (std::size_t i = 0; i < widths.size(); ++i)
            if (widths[i] > least[i] && (widest == widths.size() || widths[i] > widths[widest]))
                widest = i;
        if (widest == widths.size()) return;
        --widths[widest];
        --total;
    }
}

void append_line(std::u16string& text, const Row& row, const Widths& widths) {
    std::u16string line;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const std::u16string cell = cut_to(row[i], widths[i]);
        line += cell;
        line.append(widths[i] - display_width(cell), u' ').append(gap);
    }
    // Nothing but blanks may be taken away: a cell that ends with blanks loses them, too.
    line.resize(line.find_last_not_of(u' ') + 1);
    text.append(line).append(u"\n");
}

}  // namespace

std::u16string format_table(const TextTable& table, std::size_t width) {
    if (table.headings.empty()) return {};
    const Row headings = made_visible(table.headings);
    Widths least(headings.size());
    widen(least, headings);
    Widths widths = least;
    std::vector<Row> rows;
    for (const Row& row : table.rows) {
        rows.push_back(made_visible(row));
        widen(widths, rows.back());
    }
    narrow(widths, least, width);

    std::u16string text;
    append_line(text, headings, widths);
    Row lines;
    for (const std::size_t column : widths)
        lines.emplace_back(column, u'-');
    append_line(text, lines, widths);
    for (const Row& row : rows)
        append_line(text, row, widths);
    return text;
}

}  // namespace cli
