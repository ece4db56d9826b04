// Running queries on the plain model.
//
// A nested query is run when it is asked for, so that a large result costs only what is looked at.
#pragma once

#include <optional>

#include "hostkit/model/query_data.h"

namespace hostkit {

void run_query(QueryState& state);
// No rows before the run.
long row_count(const QueryState& state) noexcept;
// With all nested rows; the largest number when there are more.
long total_row_count(const QueryState& state);

// The query nested in the row (from 1), already run; nothing when there is none.
std::optional<QueryState> nested_query(const QueryState& state, long row);

struct CellContent {
    Element* object = nullptr;
    std::wstring text;
    automation::Variant value;
    const CellDefinition* translated = nullptr;  // the value is a translate object
    Element* value_object = nullptr;
};

// Row and column from 1. Nothing when the row has no such cell, as where callers count on through
// the columns of a nested query.
std::optional<CellContent> cell_at(const QueryState& state, long row, long column);

}  // namespace hostkit
