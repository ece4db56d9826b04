#include "query/query_columns.h"

#include <limits>

#include "query/query_frame.h"

namespace tessera {

using automation::ComPtr;
using automation::get;

namespace {

// Columns have indexes of 16 bits. The limit also ends the chain of a query that nests itself.
constexpr std::size_t max_columns = std::numeric_limits<std::int16_t>::max();

bool has_rows(const ComPtr<IKelosResultTable>& table) {
    return table && get(table, &IKelosResultTable::get_RowCount) > 0;
}

}  // namespace

void QueryColumns::collect(const ComPtr<IKelosQuery>& top) {
    auto table = result_table(top);
    const bool top_has_rows = has_rows(table);
    while (table) {
        add(table);
        if (!has_rows(table)) break;
        table = result_table(get(table, &IKelosResultTable::get_NestedQuery, 1L));
    }
    if (!top_has_rows) return;
    relevant_.resize(definitions_.size());
    for (std::size_t i = 0; i < definitions_.size(); ++i)
        relevant_[i] = get(definitions_[i], &IKelosQColumnDef::get_Relevant) != VARIANT_FALSE;
}

void QueryColumns::add(const ComPtr<IKelosResultTable>& table) {
    const long count = get(table, &IKelosResultTable::get_ColumnCount);
    if (count < 1) return;
    const auto definitions = get(table, &IKelosResultTable::get_Columns);
    for (long i = 1; i <= count; ++i) {
        if (definitions_.size() == max_columns) automation::fail(automation::error_overflow);
        definitions_.push_back(get(definitions, &IKelosQColumnDefs::get_Item, i));
    }
}

const ComPtr<IKelosQColumnDef>& QueryColumns::item(std::int16_t index) const {
    if (index < 1 || index > count()) automation::fail(automation::error_subscript_out_of_range);
    return definitions_[static_cast<std::size_t>(index - 1)];
}

bool QueryColumns::is_relevant(std::int16_t index) const noexcept {
    return 1 <= index && static_cast<std::size_t>(index) <= relevant_.size() &&
           relevant_[static_cast<std::size_t>(index - 1)];
}

}  // namespace tessera
