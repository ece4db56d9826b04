// The text of the workbook itself: which sheets it has, in which order, and what ranges are called.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

struct AddedSheet {
    std::u16string name;
    std::u16string relationship;
    std::u16string_view state;  // "hidden"; empty for a sheet that is seen
    std::u16string print_titles;
};

struct AddedName {
    std::u16string name;
    std::u16string range;
};

// The text with the sheets behind those that it has. `recalculates`: cells have changed on which
// formulas may depend.
std::string with_sheets(std::string text, const std::vector<AddedSheet>& sheets,
                        const std::vector<AddedName>& names, bool recalculates);

// A sheet's name as formulas have it, with the sign that follows it.
std::u16string quoted_sheet(std::u16string_view name);

}  // namespace cli
