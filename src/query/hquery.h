// The query cursor: walks forward over the rows of a query and of the queries nested in them.
#pragma once

#include <array>

#include "automation/object.h"
#include "progress/progress.h"
#include "query/query_columns.h"
#include "query/query_frame.h"
#include "query/row_cache.h"
#include "tessera.h"

namespace tessera {

// A row that holds a query with rows is followed by that query's rows; the columns of all levels
// have one numbering, a nested level's following those of its parent. The result is taken as it
// stands: running the query is the caller's business, before it is set here.
//
// Workset and query are shared references. While rows are left, the cursor holds the result tables
// of the levels that it stands in and what was read of the current row, nothing of rows before.
//
// A move that fails leaves the cursor on its row; the next one then passes over the nested query
// that could not be entered, so that every walk ends.
class HQuery : public automation::Object<HQuery, ITesseraHQuery> {
  public:
    static constexpr CLSID class_id = __uuidof(::HQuery);

    // Ends its progress, whoever else holds that.
    ~HQuery();

    void set_query(IKelosQuery* query) noexcept;
    // The language of the column, or of the workset when there is no column.
    long lcid(IKelosQColumnDef* column) const noexcept;

    std::int16_t column_count() const noexcept { return columns_.count(); }
    // Columns of all levels count from 1.
    automation::ComPtr<IKelosQColumnDef> column(std::int16_t column) const noexcept;
    bool is_relevant(std::int16_t column) const noexcept { return columns_.is_relevant(column); }

    void move_first() noexcept;
    // False when the cursor is still on its row: after an abort or a failure.
    bool move_next() noexcept;
    bool is_at_end() const noexcept { return at_end_ || row_counter_ == 0 || !frame_.has_row(); }
    uceProgressState state() noexcept;

    // The current row. At the end each of these shows the message.
    automation::ComPtr<IKelosCell> cell(std::int16_t column) noexcept;
    // Within a row, the form in which a column's text is first asked for counts.
    automation::Bstr cell_text(std::int16_t column, uceDataType form) noexcept;
    automation::ComPtr<IKelosQuery> current_query() const noexcept;
    long current_row() const noexcept;
    std::int16_t current_column(std::int16_t column) const noexcept;

    STDMETHODIMP get_WorkSet(IKelosWorkset** Result) override;
    STDMETHODIMP put_WorkSet(IKelosWorkset* NewValue) override;
    STDMETHODIMP putref_WorkSet(IKelosWorkset* NewValue) override;
    STDMETHODIMP get_Query(IKelosQuery** Result) override;
    STDMETHODIMP put_Query(IKelosQuery* NewValue) override;
    STDMETHODIMP putref_Query(IKelosQuery* NewValue) override;
    STDMETHODIMP MoveFirst() override;
    STDMETHODIMP MoveNext() override;
    STDMETHODIMP get_EOF(VARIANT_BOOL* Result) override;
    STDMETHODIMP get_Cell(short ColIndex, IKelosCell** Result) override;
    STDMETHODIMP get_CellText(short ColIndex, uceDataType VType, BSTR* Result) override;
    STDMETHODIMP GetLCID(IKelosQColumnDef* ColDefI, long* Result) override;
    STDMETHODIMP get_ColumnCount(short* Result) override;
    STDMETHODIMP get_ColumnItem(short Index, IKelosQColumnDef** Result) override;
    STDMETHODIMP get_State(uceProgressState* Result) override;
    STDMETHODIMP get_CurrentQuery(IKelosQuery** Result) override;
    STDMETHODIMP get_CurrentQueryRowIndex(long* Result) override;
    STDMETHODIMP get_CurrentQueryColumnIndex(short ColIndex, short* Result) override;

  private:
    static constexpr std::size_t max_depth = 20;

    void GetAllColumns() noexcept;
    void go_to_first_row();
    void leave_row();
    bool enter_nested_query();
    void go_to_next_row();

    // Shows the message when the walk is at its end.
    bool show_at_end() const;

    Progress& progress();
    void show_beginning();
    void show_percentage();

    automation::ComPtr<IKelosWorkset> workset_;
    automation::ComPtr<IKelosQuery> query_;
    QueryColumns columns_;

    bool at_end_ = false;
    std::uint64_t walk_ = 0;  // a new one begins with every query
    long row_counter_ = 0;    // rows visited; 0 before the first walk
    QueryFrame frame_;
    std::array<QueryFrame, max_depth> parents_;
    std::size_t depth_ = 0;
    bool entering_ = false;  // a nested query; still set when that failed

    RowCache row_;
    automation::ComPtr<Progress> progress_;
    long total_rows_ = 0;  // 0 until it has been asked for
};

}  // namespace tessera
