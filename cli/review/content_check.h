// The rules that need nothing but the content document.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "cli/records/content_records.h"
#include "cli/review/rules.h"

namespace cli {

class ContentCheck {
  public:
    explicit ContentCheck(const std::vector<ContentRecord>& contents) : contents_(contents) {}

    // To be called for every record, in their order.
    void check(std::size_t record, std::vector<Finding>& findings);

  private:
    void check_cell(std::size_t record, std::vector<Finding>& findings);

    const std::vector<ContentRecord>& contents_;
    // The first record of each cell; sheets are told apart as workbooks do, in any case.
    std::map<std::pair<std::u16string, CellAddress>, std::size_t> taken_cells_;
};

}  // namespace cli
