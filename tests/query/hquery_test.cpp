// The cursor, through the DLL: the order of rows, what is read of them, failures.

#include "query/query_fixture.h"

using namespace test;

namespace {

using Lines = std::vector<std::wstring>;

constexpr wchar_t move_next_label[] = L"HQuery (Tessera)|Public Sub 'MoveNext'";

// Three levels: rows with and without nested queries, an empty nested query between them, one
// query nested in the last row of its parent, and one that is wider than the first of its level.
std::shared_ptr<test::Query> plant() {
    const auto top = test::query(L"Top", {L"t1", L"t2"},
                                 {{L"a", L"A"}, {L"b", L"-"}, {L"c", L"C"}, {L"d", L"D"}});
    const auto first = test::query(L"First", {L"f1"}, {{L"e"}, {L"f"}});
    first->row(1).nested = test::query(L"Deep", {L"d1", L"d2"}, {{L"g", L"G"}, {L"-", L"H"}});
    const auto last = test::query(L"Last", {L"l1", L"l2"}, {{L"i", L"I"}});
    last->row(1).nested = test::query(L"End", {L"e1"}, {{L"j"}});
    top->row(1).nested = first;
    top->row(2).nested = test::query(L"Empty", {L"x1"});
    top->row(4).nested = last;
    return top;
}

}  // namespace

TEST_CASE_FIXTURE(QueryFixture, "rows of nested queries follow the row that they are nested in") {
    open(plant());
    CHECK(columns() == L"t1 t2 f1 d1 d2 ");
    const Lines expected = {
        L"Top 1 +0: a A - - -",    //
        L"First 1 +2: - - e - -",  //
        L"Deep 1 +3: - - - g G",   //
        L"Deep 2 +3: - - - - H",   //
        L"First 2 +2: - - f - -",  //
        L"Top 2 +0: b - - - -",    //
        L"Top 3 +0: c C - - -",    //
        L"Top 4 +0: d D - - -",    //
        L"Last 1 +2: - - i I -",   //
        L"End 1 +4: - - - - j",
    };
    CHECK(rows() == expected);
    CHECK(at_end());
    cursor->MoveFirst();
    CHECK(rows() == expected);
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "columns beyond the counted ones belong to wider nested queries") {
    const auto top = test::query(L"Top", {L"t"}, {{L"a"}, {L"b"}});
    top->row(2).nested = test::query(L"Wide", {L"w1", L"w2"}, {{L"c", L"d"}});
    open(top);
    CHECK(columns() == L"t ");
    cursor->MoveNext();
    cursor->MoveNext();
    CHECK(row() == L"Wide 1 +1: -");
    CHECK(text(2) == L"c");
    CHECK(text(3) == L"d");
    // Columns that nobody has are empty, and not asked for.
    log_calls();
    for (const int column : {-32768, -1, 0, 4, 32767}) {
        CHECK(text(static_cast<short>(column)) == L"");
        CHECK(text(static_cast<short>(column)) == L"");
    }
    CHECK(calls({L"ResultTable"}) == L"\n");
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "queries may be nested 20 deep") {
    open(deep_query(20));
    move(20);
    CHECK(row() == L"Q0 1 +20: - - - - - - - - - - - - - - - - - - - - Q0");
    cursor->MoveNext();
    CHECK(at_end());
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "a 21st level is reported, and the cursor goes on") {
    const auto top = deep_query(21);
    top->rows.push_back(top->rows.front());
    top->rows.back().nested = nullptr;
    top->rows.back().cells.front().text = L"after";
    open(top);
    move(20);
    CHECK(error_count() == 0);
    const std::wstring deepest = row();
    CHECK(deepest.starts_with(L"Q1 1 +20: "));

    CHECK(cursor->MoveNext() == S_OK);
    CHECK(error_count() == 1);
    CHECK(error(1) == move_next_label);
    CHECK(row() == deepest);
    cursor->MoveNext();
    CHECK(row().starts_with(L"Q21 2 +0: after"));
    cursor->MoveNext();
    CHECK(at_end());
    CHECK(error_count() == 1);
    cursor->MoveFirst();
    CHECK(row().starts_with(L"Q21 1 +0: Q21"));
}

TEST_CASE_FIXTURE(QueryFixture, "a query without rows is at its end at once") {
    std::shared_ptr<test::Query> empty = test::query(L"Q", {L"a", L"b"});
    std::wstring expected_columns = L"a b ";
    SUBCASE("no rows") {}
    SUBCASE("no query") {
        empty = nullptr;
        expected_columns = L"";
    }
    open(long_query(3));
    cursor->putref_Query(empty ? host_query(*empty).get() : nullptr);
    CHECK(at_end());
    CHECK(columns() == expected_columns);
    cursor->MoveNext();
    CHECK(at_end());
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "a cursor without a query has no row, and says nothing about it") {
    CHECK(at_end());
    CHECK_FALSE(get(cursor, &ITesseraHQuery::get_Cell, short{1}));
    CHECK(text(1) == L"");
    CHECK_FALSE(get(cursor, &ITesseraHQuery::get_CurrentQuery));
    CHECK(get(cursor, &ITesseraHQuery::get_CurrentQueryRowIndex) == 0);
    CHECK(message_count() == 0);
    for (int i = 0; i < 60; ++i)
        cursor->MoveNext();
    CHECK(at_end());
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "every read at the end shows the message") {
    open(long_query(1));
    CHECK(text(1) == L"1");
    cursor->MoveNext();
    CHECK(message_count() == 0);
    for (int i = 0; i < 2; ++i) {
        CHECK_FALSE(get(cursor, &ITesseraHQuery::get_Cell, short{1}));
        CHECK(text(1) == L"");
        CHECK_FALSE(get(cursor, &ITesseraHQuery::get_CurrentQuery));
        CHECK(get(cursor, &ITesseraHQuery::get_CurrentQueryRowIndex) == 0);
        CHECK(get(cursor, &ITesseraHQuery::get_CurrentQueryColumnIndex, short{1}) == 0);
    }
    CHECK(message_count() == 10);
    for (long i = 1; i <= message_count(); ++i)
        CHECK(message(i) == L"HQuery (Tessera)|16|EOF");
    cursor->MoveNext();
    CHECK(at_end());
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "texts come in the form that is first asked for in a row") {
    const std::wstring given = L"a\r\nb\n\rc\rd";
    const auto query =
        test::query(L"Q", {L"1", L"2", L"3"},
                    {{evaluated, evaluated, evaluated}, {evaluated, evaluated, evaluated}});
    for (Column& column : query->columns)
        column.property = L"Description";
    for (Row& row : query->rows)
        for (Cell& cell : row.cells)
            cell.more += L" object='Pumpe'";
    open(query);
    describe_pump(given.c_str());
    CHECK(text(1, uccDefault) == given);
    CHECK(text(2, uccVBString) == given);
    CHECK(text(3, uccMSOfficeString) == L"a\nb\nc\rd");
    CHECK(text(1, uccMSOfficeString) == given);
    CHECK(text(3, uccDefault) == L"a\nb\nc\rd");
    cursor->MoveNext();
    CHECK(text(1, uccMSOfficeString) == L"a\nb\nc\rd");
    CHECK(text(3, uccDefault) == given);
}

TEST_CASE_FIXTURE(QueryFixture, "a cell is asked for once in a row, a missing one as well") {
    open(test::query(L"Q", {L"1", L"2"}, {{L"a", L"-"}, {L"b", L"c"}}));
    log_calls();
    const auto first = get(cursor, &ITesseraHQuery::get_Cell, short{1});
    CHECK(get(cursor, &ITesseraHQuery::get_Cell, short{1}) == first);
    for (int i = 0; i < 3; ++i) {
        CHECK(text(1) == L"a");
        CHECK(text(2) == L"");
    }
    CHECK(calls() ==
          L"\nResultTable.get_Cell 1, 1\nCellObject.get_Text\nResultTable.get_Cell 1, 2\n");
    cursor->MoveNext();
    CHECK(text(2) == L"c");
    CHECK(text(1) == L"b");
    cursor->MoveFirst();
    CHECK(text(1) == L"a");
    CHECK(calls({L"get_Cell", L"get_Text"}) ==
          L"\nResultTable.get_Cell 2, 2\nCellObject.get_Text\nResultTable.get_Cell 2, 1\n"
          L"CellObject.get_Text\nResultTable.get_Cell 1, 1\nCellObject.get_Text\n");
}

TEST_CASE_FIXTURE(QueryFixture, "the cursor keeps nothing of the rows before") {
    open(long_query(2));
    const auto cell = get(cursor, &ITesseraHQuery::get_Cell, short{1});
    CHECK(test::reference_count(cell.get()) == 2);
    SUBCASE("after the next") {
        cursor->MoveNext();
    }
    SUBCASE("after a new start") {
        cursor->MoveFirst();
    }
    SUBCASE("with another query") {
        open(long_query(1));
    }
    CHECK(test::reference_count(cell.get()) == 1);
}

TEST_CASE_FIXTURE(QueryFixture, "languages are the column's or the workset's") {
    const auto query = test::query(L"Q", {L"1"}, {{L"a"}});
    query->columns[0].lcid = 1033;
    open(query);
    const auto column = get(cursor, &ITesseraHQuery::get_ColumnItem, short{1});
    CHECK(get(cursor, &ITesseraHQuery::GetLCID, column.get()) == 1033);
    CHECK(get(cursor, &ITesseraHQuery::GetLCID, nullptr) == 0);
    cursor->putref_WorkSet(workset.get());
    CHECK(get(cursor, &ITesseraHQuery::GetLCID, nullptr) == 1031);
    CHECK(get(cursor, &ITesseraHQuery::GetLCID, column.get()) == 1033);
    cursor->put_WorkSet(nullptr);
    CHECK(get(cursor, &ITesseraHQuery::GetLCID, nullptr) == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "columns that do not exist are reported") {
    open(long_query(1));
    for (const int index : {-1, 0, 2, 32767})
        CHECK_FALSE(get(cursor, &ITesseraHQuery::get_ColumnItem, static_cast<short>(index)));
    CHECK(error_count() == 4);
    CHECK(error(4) == L"HQuery (Tessera)|Public Property Get 'ColumnItem'");
    CHECK(error_code(4) == DISP_E_BADINDEX);
    // An index below the smallest of 16 bits.
    cursor->MoveNext();
    const auto top = test::query(L"Q", {L"1"}, {{L"a"}});
    top->row(1).nested = test::query(L"N", {L"2"}, {{L"b"}});
    open(top);
    cursor->MoveNext();
    CHECK(get(cursor, &ITesseraHQuery::get_CurrentQueryColumnIndex, short{-32768}) == 0);
    CHECK(error(5) == L"HQuery (Tessera)|Public Property Get 'CurrentQueryColumnIndex'");
    CHECK(error_code(5) == DISP_E_OVERFLOW);
}

TEST_CASE_FIXTURE(QueryFixture, "more columns than 16 bits number are an error") {
    const auto query = test::query(L"Q", {L"1", L"2"}, {{L"a", L"b"}});
    query->row(1).nested = test::query(L"N", std::vector<std::wstring>(32766, L"n"), {{L"c"}});
    open(query);
    CHECK(error_count() == 1);
    CHECK(error(1) == L"HQuery (Tessera)|Private Function 'GetAllColumns'");
    CHECK(get(cursor, &ITesseraHQuery::get_ColumnCount) == 32767);
    CHECK(text(2) == L"b");
}

TEST_CASE_FIXTURE(QueryFixture, "failures of the host are reported by the member they happen in") {
    struct Failure {
        const wchar_t* member;
        std::vector<const wchar_t*> labels;
    };
    const wchar_t all_columns[] = L"Private Function 'GetAllColumns'";
    const wchar_t move_first[] = L"Public Sub 'MoveFirst'";
    const wchar_t move_next[] = L"Public Sub 'MoveNext'";
    const wchar_t cell[] = L"Public Property Get 'Cell'";
    const wchar_t language[] = L"Public Function 'GetLCID'";
    const Failure failures[] = {
        {L"QueryObject.get_ResultTable", {all_columns, move_first}},
        {L"ResultTable.get_RowCount", {all_columns, move_first}},
        {L"ColumnList.get_Item", {all_columns}},
        {L"ColumnDefinition.get_Relevant", {all_columns}},
        {L"ResultTable.get_Cell", {cell, cell}},
        {L"CellObject.get_Text", {L"Public Property Get 'CellText'"}},
        {L"ResultTable.get_NestedQuery", {all_columns, move_next}},
        {L"ResultTable.get_TotalRowCount", {move_next}},
        {L"ColumnDefinition.get_LCID", {language}},
        {L"WorksetObject.get_CurrentLCID", {language}},
    };
    const auto query = host_query(*long_query(2));
    cursor->putref_WorkSet(workset.get());
    cursor->putref_Query(query.get());
    const auto column = get(cursor, &ITesseraHQuery::get_ColumnItem, short{1});
    for (const Failure& failure : failures) {
        CAPTURE(failure.member);
        fail(failure.member);
        cursor->putref_Query(query.get());
        // At the end already when the rows could not be counted; the message is not of interest.
        get(cursor, &ITesseraHQuery::get_Cell, short{1});
        text(1);
        cursor->MoveNext();
        get(cursor, &ITesseraHQuery::GetLCID, column.get());
        get(cursor, &ITesseraHQuery::GetLCID, nullptr);
        std::wstring reports;
        for (const wchar_t* const label : failure.labels)
            reports.append(L"HQuery (Tessera)|").append(label).append(L"\n");
        CHECK(take_errors() == reports);
    }
    // Afterwards the cursor works as ever.
    fail_nothing();
    cursor->putref_Query(query.get());
    CHECK(rows() == Lines{L"Q 1 +0: 1", L"Q 2 +0: 2"});
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "a walk ends although no nested query can be entered") {
    const auto query = plant();
    open(query);
    fail(L"ResultTable.get_NestedQuery");
    std::vector<std::wstring> visited;
    for (int i = 0; i < 100 && !at_end(); ++i) {
        if (visited.empty() || visited.back() != row()) visited.push_back(row());
        cursor->MoveNext();
    }
    CHECK(at_end());
    CHECK(visited == Lines{L"Top 1 +0: a A - - -", L"Top 2 +0: b - - - -", L"Top 3 +0: c C - - -",
                           L"Top 4 +0: d D - - -"});
    CHECK(error_count() == 4);
}

TEST_CASE_FIXTURE(QueryFixture, "workset and query are handed back, and let go with the cursor") {
    const auto query = host_query(*plant());
    const ULONG workset_references = test::reference_count(workset.get());
    cursor->put_WorkSet(workset.get());
    cursor->put_Query(query.get());
    CHECK(get(cursor, &ITesseraHQuery::get_WorkSet) == workset);
    CHECK(get(cursor, &ITesseraHQuery::get_Query) == query);
    move(3);
    text(4);
    cursor.reset();
    CHECK(test::reference_count(workset.get()) == workset_references);
    CHECK(test::reference_count(query.get()) == 1);
}

TEST_CASE_FIXTURE(QueryFixture, "a missing place for the result is reported, not a crash") {
    open(long_query(1));
    CHECK(cursor->get_EOF(nullptr) == S_OK);
    CHECK(cursor->get_Cell(1, nullptr) == S_OK);
    CHECK(cursor->get_CellText(1, uccDefault, nullptr) == S_OK);
    CHECK(cursor->GetLCID(nullptr, nullptr) == S_OK);
    CHECK(cursor->get_ColumnCount(nullptr) == S_OK);
    CHECK(cursor->get_State(nullptr) == S_OK);
    CHECK(error_count() == 6);
    CHECK(error(6) == L"HQuery (Tessera)|Public Property Get 'State'");
    CHECK(error_code(6) == E_POINTER);
}
