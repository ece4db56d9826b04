// The columns that a walk over a query shows.
#pragma once

#include <cstdint>
#include <vector>

#include "automation/call.h"
#include "kelos.h"

namespace tessera {

// The columns of a query, then those of the query nested in its first row, and so on. Indexes
// count from 1.
class QueryColumns {
  public:
    // For new objects: collects the columns; those of nothing are none.
    void collect(const automation::ComPtr<IKelosQuery>& top);

    std::int16_t count() const noexcept { return static_cast<std::int16_t>(definitions_.size()); }
    // Throws when there is no such column.
    const automation::ComPtr<IKelosQColumnDef>& item(std::int16_t index) const;
    // Nothing is relevant in a result without rows.
    bool is_relevant(std::int16_t index) const noexcept;

  private:
    void add(const automation::ComPtr<IKelosResultTable>& table);

    std::vector<automation::ComPtr<IKelosQColumnDef>> definitions_;
    std::vector<bool> relevant_;
};

}  // namespace tessera
