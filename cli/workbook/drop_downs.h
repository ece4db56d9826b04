// The lists that cells of a workbook offer, each kept once however many cells offer it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cli/workbook/workbook_plan.h"

namespace cli {

// Lists that are short and plain stand where they are offered; all others on a sheet of their own,
// a column each, under a name.
class DropDowns {
  public:
    struct NamedList {
        std::u16string name;
        std::u16string range;  // without the sheet: "$A$1:$A$4"
        std::vector<std::u16string> texts;
    };

    // The names of a workbook that exists are not taken again.
    void avoid_names_in(std::string_view book);

    // The formula by which a cell offers the list.
    std::u16string formula_of(const std::vector<std::u16string>& texts);

    const std::vector<NamedList>& named_lists() const noexcept { return named_; }

  private:
    std::map<std::vector<std::u16string>, std::u16string> formulas_;
    std::vector<NamedList> named_;
    std::size_t last_name_ = 0;
};

// Input cells by the list that they offer; cells that stand below each other are one range.
std::map<std::vector<std::u16string>, std::u16string> offered_lists(const PlannedSheet& sheet);

}  // namespace cli
