#include "query/query_frame.h"

#include "automation/conversion.h"

namespace tessera {

using automation::ComPtr;
using automation::get;
using automation::Variant;

ComPtr<IKelosResultTable> result_table(const ComPtr<IKelosQuery>& query) {
    return query ? get(query, &IKelosQuery::get_ResultTable) : ComPtr<IKelosResultTable>();
}

QueryFrame::QueryFrame(ComPtr<IKelosQuery> query, std::int16_t column_offset)
    : query_(std::move(query)), table_(result_table(query_)), column_offset_(column_offset) {
    if (!table_) return;
    row_count_ = get(table_, &IKelosResultTable::get_RowCount);
    column_count_ = get(table_, &IKelosResultTable::get_ColumnCount);
}

std::int16_t QueryFrame::column_index(std::int16_t column) const {
    return automation::to_short(Variant(static_cast<long>(column) - column_offset_));
}

std::optional<QueryFrame> QueryFrame::nested() const {
    if (!has_row()) return std::nullopt;
    auto query = get(table_, &IKelosResultTable::get_NestedQuery, row_);
    if (!query) return std::nullopt;
    const long offset = column_offset_ + column_count_;
    QueryFrame frame(std::move(query), automation::to_short(Variant(offset)));
    if (!frame.has_row()) return std::nullopt;
    return frame;
}

ComPtr<IKelosCell> QueryFrame::cell(std::int16_t column) const {
    const long index = static_cast<long>(column) - column_offset_;
    if (!has_row() || index < 1 || index > column_count_) return {};
    return get(table_, &IKelosResultTable::get_Cell, row_, index);
}

}  // namespace tessera
