// The rules that need nothing but the content document.
#pragma once

#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "cli/records/content_records.h"
#include "cli/review/rules.h"

namespace cli {

// How the platform reads texts.
struct TextReading {
    std::function<bool(std::u16string_view)> is_numeric;
    // Whether the text is one of the value's type.
    std::function<bool(const ArchivedValue&)> is_readable;
};

class ContentCheck {
  public:
    ContentCheck(const std::vector<ContentRecord>& contents, TextReading reading);

    // To be called for every record, in their order.
    void check(std::size_t record, std::vector<Finding>& findings);

  private:
    void check_cell(std::size_t record, std::vector<Finding>& findings);

    const std::vector<ContentRecord>& contents_;
    TextReading reading_;
    // The first record of each cell; sheets are told apart as workbooks do, in any case.
    std::map<std::pair<std::u16string, CellAddress>, std::size_t> taken_cells_;
};

}  // namespace cli
