// Walks a query's cursor from its row to the end.
#pragma once

#include "cli/course.h"
#include "cli/findings.h"

namespace cli {

class RowWalk {
  public:
    // `total`: the rows that there are, for the course only.
    RowWalk(const automation::ComPtr<ITesseraHQuery>& cursor, Course& course, ErrorCounter errors,
            long total);

    // True while the cursor stands on a row and nobody wants to stop.
    bool is_on_row();
    void move_on();

    // True when the walk ended before the last row.
    bool is_broken_off() const noexcept { return is_broken_off_; }

  private:
    automation::ComPtr<ITesseraHQuery> cursor_;
    Course& course_;
    ErrorCounter errors_;
    long total_;
    long number_ = 1;
    bool is_broken_off_ = false;
};

}  // namespace cli
