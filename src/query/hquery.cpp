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

constexpr MemberName member(const wchar_t* label) {
    return {source, label};
}

constexpr wchar_t key_reading[] = L"~018a0 Abfrage lesen...";
constexpr wchar_t message_at_end[] = L"EOF";
constexpr long any_lcid = -1;
constexpr long rows_per_percentage = 50;

}  // namespace

// ---------------------------------------------------------------------------------------------
// Workset and query
// ---------------------------------------------------------------------------------------------

STDMETHODIMP HQuery::get_WorkSet(IKelosWorkset** Result) {
    return trapped(Result, member(L"Public Property Get 'WorkSet'"),
                   [&](auto& result) { result = workset_; });
}

STDMETHODIMP HQuery::put_WorkSet(IKelosWorkset* NewValue) {
    return trapped(member(L"Public Property Let 'WorkSet'"), [&] { workset_ = NewValue; });
}

STDMETHODIMP HQuery::putref_WorkSet(IKelosWorkset* NewValue) {
    return trapped(member(L"Public Property Set 'WorkSet'"), [&] { workset_ = NewValue; });
}

STDMETHODIMP HQuery::get_Query(IKelosQuery** Result) {
    return trapped(Result, member(L"Public Property Get 'Query'"),
                   [&](auto& result) { result = query_; });
}

STDMETHODIMP HQuery::put_Query(IKelosQuery* NewValue) {
    return trapped(member(L"Public Property Let 'Query'"), [&] { set_query(NewValue); });
}

STDMETHODIMP HQuery::putref_Query(IKelosQuery* NewValue) {
    return trapped(member(L"Public Property Set 'Query'"), [&] { set_query(NewValue); });
}

void HQuery::set_query(IKelosQuery* query) {
    query_ = query;
    total_rows_ = 0;
    GetAllColumns();
    MoveFirst();
}

STDMETHODIMP HQuery::GetLCID(IKelosQColumnDef* ColDefI, long* Result) {
    return trapped(Result, member(L"Public Function 'GetLCID'"), [&](long& result) {
        if (ColDefI)
            result = get(ColDefI, &IKelosQColumnDef::get_LCID);
        else if (workset_)
            result = get(workset_, &IKelosWorkset::get_CurrentLCID);
    });
}

// ---------------------------------------------------------------------------------------------
// Columns
// ---------------------------------------------------------------------------------------------

void HQuery::GetAllColumns() noexcept {
    guarded(member(L"Private Function 'GetAllColumns'"), [&] { columns_.collect(query_); });
}

STDMETHODIMP HQuery::get_ColumnCount(short* Result) {
    return trapped(Result, member(L"Public Property Get 'ColumnCount'"),
                   [&](short& result) { result = columns_.count(); });
}

STDMETHODIMP HQuery::get_ColumnItem(short Index, IKelosQColumnDef** Result) {
    return trapped(Result, member(L"Public Property Get 'ColumnItem'"),
                   [&](auto& result) { result = columns_.item(Index); });
}

// ---------------------------------------------------------------------------------------------
// Walk
// ---------------------------------------------------------------------------------------------

STDMETHODIMP HQuery::MoveFirst() {
    return trapped(member(L"Public Sub 'MoveFirst'"), [&] {
        go_to_first_row();
        if (!at_end_) show_beginning();
    });
}

STDMETHODIMP HQuery::MoveNext() {
    move_next();
    return S_OK;
}

void HQuery::go_to_first_row() {
    row_.clear();
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
    bool moved = false;
    guarded(member(L"Public Sub 'MoveNext'"), [&] {
        row_.clear();
        uceProgressState state = uccStateClosed;
        progress().get_State(&state);
        if (state == uccStateAbort) return;
        if (row_counter_ < std::numeric_limits<long>::max()) ++row_counter_;
        if (row_counter_ > 1) leave_row();
        moved = true;
        if (!at_end_) show_percentage();
    });
    return moved;
}

void HQuery::leave_row() {
    const bool failed_before = std::exchange(entering_, true);
    if (failed_before || !enter_nested_query()) go_to_next_row();
    entering_ = false;
}

bool HQuery::enter_nested_query() {
    auto nested = frame_.nested();
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
            progress().StopProcess();
            return;
        }
        frame_ = std::exchange(parents_[--depth_], {});
        frame_.next_row();
    }
}

STDMETHODIMP HQuery::get_EOF(VARIANT_BOOL* Result) {
    return trapped(Result, member(L"Public Property Get 'EOF'"),
                   [&](VARIANT_BOOL& result) { result = as_variant_bool(!has_row()); });
}

// ---------------------------------------------------------------------------------------------
// Current row
// ---------------------------------------------------------------------------------------------

bool HQuery::show_at_end() const {
    if (at_end_) show_message(message_at_end, style_critical, source);
    return at_end_;
}

STDMETHODIMP HQuery::get_Cell(short ColIndex, IKelosCell** Result) {
    return trapped(Result, member(L"Public Property Get 'Cell'"), [&](auto& result) {
        if (show_at_end() || row_counter_ == 0) return;
        if (const ComPtr<IKelosCell>* const kept = row_.cell(ColIndex)) {
            result = *kept;
            return;
        }
        result = frame_.cell(ColIndex);
        row_.keep_cell(ColIndex, result);
    });
}

STDMETHODIMP HQuery::get_CellText(short ColIndex, uceDataType VType, BSTR* Result) {
    return trapped(Result, member(L"Public Property Get 'CellText'"), [&](Bstr& result) {
        if (const Bstr* const kept = row_.text(ColIndex)) {
            result = *kept;
            return;
        }
        ComPtr<IKelosCell> cell;
        get_Cell(ColIndex, cell.put());
        if (cell) result = get(cell, &IKelosCell::get_Text);
        if (VType == uccMSOfficeString) result = GetOfficeString(result.view(), any_lcid);
        // At the end every read shows the message.
        if (has_row()) row_.keep_text(ColIndex, result);
    });
}

STDMETHODIMP HQuery::get_CurrentQuery(IKelosQuery** Result) {
    return trapped(Result, member(L"Public Property Get 'CurrentQuery'"), [&](auto& result) {
        if (!show_at_end()) result = frame_.query();
    });
}

STDMETHODIMP HQuery::get_CurrentQueryRowIndex(long* Result) {
    return trapped(Result, member(L"Public Property Get 'CurrentQueryRowIndex'"),
                   [&](long& result) {
                       if (!show_at_end() && has_row()) result = frame_.row();
                   });
}

STDMETHODIMP HQuery::get_CurrentQueryColumnIndex(short ColIndex, short* Result) {
    return trapped(Result, member(L"Public Property Get 'CurrentQueryColumnIndex'"),
                   [&](short& result) {
                       if (!show_at_end()) result = frame_.column_index(ColIndex);
                   });
}

// ---------------------------------------------------------------------------------------------
// Progress
// ---------------------------------------------------------------------------------------------

STDMETHODIMP HQuery::get_State(uceProgressState* Result) {
    return trapped(Result, member(L"Public Property Get 'State'"),
                   [&](auto& result) { progress().get_State(&result); });
}

Progress& HQuery::progress() {
    if (!progress_) progress_ = automation::make<Progress>();
    return *progress_;
}

void HQuery::show_beginning() {
    const Bstr caption = translate(key_reading);
    progress().put_Caption(caption.get());
    progress().put_Where(uccKelosToBox);
    progress().put_Percentage(0);
}

void HQuery::show_percentage() {
    if (total_rows_ == 0)
        if (const auto table = result_table(query_))
            total_rows_ = get(table, &IKelosResultTable::get_TotalRowCount);
    if (row_counter_ % rows_per_percentage != 0 || total_rows_ < 1) return;
    // A total that is too small for the rows there are gives percentages beyond 100, which are all
    // the same.
    const std::int64_t percentage = std::int64_t{row_counter_} * 100 / total_rows_;
    progress().put_Percentage(
        static_cast<short>(std::min<std::int64_t>(percentage, std::numeric_limits<short>::max())));
}

}  // namespace tessera
