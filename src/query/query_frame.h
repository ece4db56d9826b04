// One level of a walk over a query and the queries nested in its rows.
#pragma once

#include <cstdint>
#include <optional>

#include "automation/call.h"
#include "kelos.h"

namespace tessera {

// The result table of the query, or nothing: a query without one counts as without rows and
// columns.
automation::ComPtr<IKelosResultTable> result_table(const automation::ComPtr<IKelosQuery>& query);

// A query, and the row of its result that the walk stands on. What the result table says of its
// size is asked for once, when the level is entered. Rows and columns count from 1.
class QueryFrame {
  public:
    // No query: no rows, no columns.
    QueryFrame() = default;
    // Stands on the first row. The offset is the number of columns of the levels above.
    QueryFrame(automation::ComPtr<IKelosQuery> query, std::int16_t column_offset);

    const automation::ComPtr<IKelosQuery>& query() const noexcept { return query_; }
    long row() const noexcept { return row_; }
    // The query's own index of a column that all levels number together.
    std::int16_t column_index(std::int16_t column) const;

    bool has_row() const noexcept { return row_ <= row_count_; }
    void next_row() noexcept {
        if (has_row()) ++row_;
    }

    // The level below: the query nested in the current row, if it has rows.
    std::optional<QueryFrame> nested() const;
    // The cell of the current row; nothing where the row has none, as in the columns of other
    // levels.
    automation::ComPtr<IKelosCell> cell(std::int16_t column) const;

  private:
    automation::ComPtr<IKelosQuery> query_;
    automation::ComPtr<IKelosResultTable> table_;
    long row_ = 1;
    long row_count_ = 0;
    long column_count_ = 0;
    std::int16_t column_offset_ = 0;
};

}  // namespace tessera
