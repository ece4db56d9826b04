#include "query/hquery.h"

#include <algorithm>
#include <limits>

#include "host/error_boundary.h"
#include "host/office_text.h"
#include "host/service.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;
using automation::get;

namespace {

constexpr wchar_t source[] = L"HQuery (Tessera)";

constexpr MemberName get_workset{source, L"Public Property Get 'WorkSet'"};
constexpr MemberName get_query{source, L"Public Property Get 'Query'"};
constexpr MemberName get_lcid{source, L"Public Function 'GetLCID'"};
constexpr MemberName get_all_columns{source, L"Private Function 'GetAllColumns'"};
constexpr MemberName get_column_count{source, L"Public Property Get 'ColumnCount'"};
constexpr MemberName get_column_item{source, L"Public Property Get 'ColumnItem'"};
constexpr MemberName move_first_row{source, L"Public Sub 'MoveFirst'"};
constexpr MemberName move_next_row{source, L"Public Sub 'MoveNext'"};
constexpr MemberName get_eof{source, L"Public Property Get 'EOF'"};
constexpr MemberName get_cell{source, L"Public Property Get 'Cell'"};
constexpr MemberName get_cell_text{source, L"Public Property Get 'CellText'"};
constexpr MemberName get_current_query{source, L"Public Property Get 'CurrentQuery'"};
constexpr MemberName get_row_index{source, L"Public Property Get 'CurrentQueryRowIndex'"};
constexpr MemberName get_column_index{source, L"Public Property Get 'CurrentQueryColumnIndex'"};
constexpr MemberName get_progress_state{source, L"Public Property Get 'State'"};

constexpr wchar_t key_reading[] = L"~018a0 Abfrage lesen...";
constexpr wchar_t message_at_end[] = L"EOF";
constexpr long any_lcid = -1;
constexpr long rows_per_percentage = 50;

}  // namespace

HQuery::~HQuery() {
    if (progress_) progress_->stop_process();
}

// ---------------------------------------------------------------------------------------------
// Workset, query and columns
// ---------------------------------------------------------------------------------------------

void HQuery::set_query(IKelosQuery* query) noexcept {
    query_ = query;
    total_rows_ = 0;
    GetAllColumns();
    move_first();
}

void HQuery::GetAllColumns() noexcept {
    // The host may set another query meanwhile; what was collected before a failure counts.
    QueryColumns columns;
    guarded(get_all_columns, [&] { columns.collect(query_); });
    columns_ = std::move(columns);
}

long HQuery::lcid(IKelosQColumnDef* column) const noexcept {
    return guarded_result<long>(get_lcid, [&](long& result) {
        if (column)
            result = get(column, &IKelosQColumnDef::get_LCID);
        else if (workset_)
            result = get(workset_, &IKelosWorkset::get_CurrentLCID);
    });
}

ComPtr<IKelosQColumnDef> HQuery::column(std::int16_t column) const noexcept {
    return guarded_result<ComPtr<IKelosQColumnDef>>(
        get_column_item, [&](auto& result) { result = columns_.item(column); });
}

// ---------------------------------------------------------------------------------------------
// Walk
// ---------------------------------------------------------------------------------------------

void HQuery::move_first() noexcept {
    guarded(move_first_row, [&] {
        go_to_first_row();
        if (!at_end_) show_beginning();
    });
}

void HQuery::go_to_first_row() {
    row_.clear();
    ++walk_;
    row_counter_ = 1;
    while (depth_ > 0)
        parents_[--depth_] = {};
    entering_ = false;
    at_end_ = true;
    frame_ = {};
    frame_ = QueryFrame(query_, 0);
    at_end_ = !frame_.has_row();
}

bool HQuery::move_next() noexcept {
    return guarded_result<bool>(move_next_row, [&](bool& moved) {
        row_.clear();
        if (progress().state() == uccStateAbort) return;
        if (row_counter_ < std::numeric_limits<long>::max()) ++row_counter_;
        if (row_counter_ > 1) leave_row();
        moved = true;
        if (!at_end_) show_percentage();
    });
}

void HQuery::leave_row() {
    const bool failed_before = std::exchange(entering_, true);
    if (failed_before || !enter_nested_query()) go_to_next_row();
    entering_ = false;
}

bool HQuery::enter_nested_query() {
    const std::uint64_t walk = walk_;
    auto nested = frame_.nested();
    // The host has set another query meanwhile: its first row is the next one.
    if (walk != walk_) return true;
    if (!nested) return false;
    if (depth_ == max_depth)
        automation::fail(automation::error_subscript_out_of_range,
                         L"Queries are nested more than 20 deep");
    parents_[depth_++] = std::exchange(frame_, *std::move(nested));
    return true;
}

void HQuery::go_to_next_row() {
    frame_.next_row();
    while (!frame_.has_row()) {
        if (depth_ == 0) {
            at_end_ = true;
            progress().stop_process();
            return;
        }
        frame_ = std::exchange(parents_[--depth_], {});
        frame_.next_row();
    }
}

// ---------------------------------------------------------------------------------------------
// Current row
// ---------------------------------------------------------------------------------------------

bool HQuery::show_at_end() const {
    if (at_end_) show_message(message_at_end, style_critical, source);
    return at_end_;
}

ComPtr<IKelosCell> HQuery::cell(std::int16_t column) noexcept {
    return guarded_result<ComPtr<IKelosCell>>(get_cell, [&](auto& result) {
        if (show_at_end() || row_counter_ == 0) return;
        if (const ComPtr<IKelosCell>* const kept = row_.cell(column)) {
            result = *kept;
            return;
        }
        result = frame_.cell(column);
        row_.keep_cell(column, result);
    });
}

Bstr HQuery::cell_text(std::int16_t column, uceDataType form) noexcept {
    return guarded_result<Bstr>(get_cell_text, [&](Bstr& result) {
        if (const Bstr* const kept = row_.text(column)) {
            result = *kept;
            return;
        }
        if (const auto found = cell(column)) result = get(found, &IKelosCell::get_Text);
        if (form == uccMSOfficeString) result = GetOfficeString(result.view(), any_lcid);
        // At the end every read shows the message.
        if (!is_at_end()) row_.keep_text(column, result);
    });
}

ComPtr<IKelosQuery> HQuery::current_query() const noexcept {
    return guarded_result<ComPtr<IKelosQuery>>(get_current_query, [&](auto& result) {
        if (!show_at_end()) result = frame_.query();
    });
}

long HQuery::current_row() const noexcept {
    return guarded_result<long>(get_row_index, [&](long& result) {
        if (!show_at_end() && !is_at_end()) result = frame_.row();
    });
}

std::int16_t HQuery::current_column(std::int16_t column) const noexcept {
    return guarded_result<std::int16_t>(get_column_index, [&](auto& result) {
        if (!show_at_end()) result = frame_.column_index(column);
    });
}

// ---------------------------------------------------------------------------------------------
// Progress
// ---------------------------------------------------------------------------------------------

uceProgressState HQuery::state() noexcept {
    return guarded_result<uceProgressState>(get_progress_state,
                                            [&](auto& result) { result = progress().state(); });
}

Progress& HQuery::progress() {
    if (!progress_) progress_ = automation::make<Progress>();
    return *progress_;
}

void HQuery::show_beginning() {
    progress().set_caption(translate(key_reading).view());
    progress().set_where(uccKelosToBox);
    progress().set_percentage(0);
}

void HQuery::show_percentage() {
    if (total_rows_ == 0)
        if (const auto table = result_table(query_))
            total_rows_ = get(table, &IKelosResultTable::get_TotalRowCount);
    if (row_counter_ % rows_per_percentage != 0 || total_rows_ < 1) return;
    // A total that is too small for the rows there are gives percentages beyond 100, which are all
    // the same.
    const std::int64_t percentage = std::int64_t{row_counter_} * 100 / total_rows_;
    progress().set_percentage(static_cast<std::int16_t>(
        std::min<std::int64_t>(percentage, std::numeric_limits<std::int16_t>::max())));
}

// ---------------------------------------------------------------------------------------------
// Automation
// ---------------------------------------------------------------------------------------------

STDMETHODIMP HQuery::get_WorkSet(IKelosWorkset** Result) {
    return give(Result, workset_, get_workset);
}

STDMETHODIMP HQuery::put_WorkSet(IKelosWorkset* NewValue) {
    return keep(workset_, NewValue);
}

STDMETHODIMP HQuery::putref_WorkSet(IKelosWorkset* NewValue) {
    return keep(workset_, NewValue);
}

STDMETHODIMP HQuery::get_Query(IKelosQuery** Result) {
    return give(Result, query_, get_query);
}

STDMETHODIMP HQuery::put_Query(IKelosQuery* NewValue) {
    set_query(NewValue);
    return S_OK;
}

STDMETHODIMP HQuery::putref_Query(IKelosQuery* NewValue) {
    set_query(NewValue);
    return S_OK;
}

STDMETHODIMP HQuery::GetLCID(IKelosQColumnDef* ColDefI, long* Result) {
    return answer(Result, get_lcid, [&] { return lcid(ColDefI); });
}

STDMETHODIMP HQuery::get_ColumnCount(short* Result) {
    return answer(Result, get_column_count, [&] { return column_count(); });
}

STDMETHODIMP HQuery::get_ColumnItem(short Index, IKelosQColumnDef** Result) {
    return answer(Result, get_column_item, [&] { return column(Index); });
}

STDMETHODIMP HQuery::MoveFirst() {
    move_first();
    return S_OK;
}

STDMETHODIMP HQuery::MoveNext() {
    move_next();
    return S_OK;
}

STDMETHODIMP HQuery::get_EOF(VARIANT_BOOL* Result) {
    return answer(Result, get_eof, [&] { return is_at_end(); });
}

STDMETHODIMP HQuery::get_Cell(short ColIndex, IKelosCell** Result) {
    return answer(Result, get_cell, [&] { return cell(ColIndex); });
}

STDMETHODIMP HQuery::get_CellText(short ColIndex, uceDataType VType, BSTR* Result) {
    return answer(Result, get_cell_text, [&] { return cell_text(ColIndex, VType); });
}

STDMETHODIMP HQuery::get_State(uceProgressState* Result) {
    return answer(Result, get_progress_state, [&] { return state(); });
}

STDMETHODIMP HQuery::get_CurrentQuery(IKelosQuery** Result) {
    return answer(Result, get_current_query, [&] { return current_query(); });
}

STDMETHODIMP HQuery::get_CurrentQueryRowIndex(long* Result) {
    return answer(Result, get_row_index, [&] { return current_row(); });
}

STDMETHODIMP HQuery::get_CurrentQueryColumnIndex(short ColIndex, short* Result) {
    return answer(Result, get_column_index, [&] { return current_column(ColIndex); });
}

}  // namespace tessera
