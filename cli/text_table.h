// A table of plain text with columns that fit what stands in them.
#pragma once

#include <string>
#include <vector>

namespace cli {

struct TextTable {
    std::vector<std::u16string> headings;
    std::vector<std::vector<std::u16string>> rows;  // each as long as the headings
};

// Headings, a line, the rows; every line ends with LF and is at most `width` columns wide, unless
// not even the headings fit. Where the width does not suffice, the widest columns are cut.
std::u16string format_table(const TextTable& table, std::size_t width);

}  // namespace cli
