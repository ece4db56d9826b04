// The cursor, through the DLL: the order of rows, what is read of them, failures.

#include "query/query_fixture.h"

using namespace test;

namespace {

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
    const wchar_t expected[] =
        LR"(
Top 1 +0: a A - - -
First 1 +2: - - e - -
Deep 1 +3: - - - g G
Deep 2 +3: - - - - H
First 2 +2: - - f - -
Top 2 +0: b - - - -
Top 3 +0: c C - - -
Top 4 +0: d D - - -
Last 1 +2: - - i I -
End 1 +4: - - - - j
)";
    CHECK(rows() == expected);
    CHECK(at_end());
    cursor->MoveFirst();
    move(2);  // two levels down
    cursor->MoveFirst();
    CHECK(rows() == expected);
    // Columns that nobody has are empty, and not asked for.
    cursor->MoveFirst();
    move(8);
    log_calls();
    for (const int column : {-32768, -1, 0, 6, 32767})
        CHECK(text(static_cast<short>(column)) == L"");
    CHECK(calls({L"ResultTable"}) == L"\n");
    // One beyond the counted ones belongs to a nested query that is wider than the first.
    const auto wide = test::query(L"T", {L"t"}, {{L"a"}, {L"b"}});
    wide->row(2).nested = test::query(L"Wide", {L"w1", L"w2"}, {{L"c", L"d"}});
    open(wide);
    move(2);
    CHECK(columns() == L"t ");
    CHECK(row() == L"Wide 1 +1: -");
    CHECK(text(2) + text(3) == L"cd");
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "queries may be nested 20 deep, another level is reported") {
    const auto top = deep_query(21);
    top->rows.push_back(top->rows.front());
    top->rows.back().nested = nullptr;
    top->rows.back().cells.front().text = L"after";
    open(top);
    move(20);
    CHECK(take_errors() == L"");
    const std::wstring deepest = row();
    CHECK(deepest.starts_with(L"Q1 1 +20: - - - - - - - - - - - - - - - - - - - - Q1"));
    CHECK(cursor->MoveNext() == S_OK);
    CHECK(take_errors() == L"HQuery (Tessera)|Public Sub 'MoveNext'\n");
    CHECK(row() == deepest);
    cursor->MoveNext();
    CHECK(row().starts_with(L"Q21 2 +0: after"));
    cursor->MoveNext();
    CHECK(at_end());
    cursor->MoveFirst();
    CHECK(row().starts_with(L"Q21 1 +0: Q21"));
    CHECK(take_errors() == L"");
}

TEST_CASE_FIXTURE(QueryFixture, "a read without a row gives nothing, at the end with a message") {
    const auto check_nothing_to_read = [&](const std::wstring& expected_columns, long messages) {
        CHECK(at_end());
        CHECK(columns() == expected_columns);
        CHECK_FALSE(get(cursor, &ITesseraHQuery::get_Cell, short{1}));
        CHECK(text(1) + text(1) == L"");
        CHECK_FALSE(get(cursor, &ITesseraHQuery::get_CurrentQuery));
        CHECK(get(cursor, &ITesseraHQuery::get_CurrentQueryRowIndex) == 0);
        CHECK(message_count() == messages);
        for (long i = 1; i <= message_count(); ++i)
            CHECK(message(i) == L"HQuery (Tessera)|16|EOF");
        move(60);
        CHECK(at_end());
        CHECK(take_errors() == L"");
    };
    check_nothing_to_read(L"", 0);
    open(test::query(L"Q", {L"a", L"b"}));
    check_nothing_to_read(L"a b ", 5);
    open(long_query(3));
    move(3);
    check_nothing_to_read(L"N ", 5);
    CHECK(get(cursor, &ITesseraHQuery::get_CurrentQueryColumnIndex, short{1}) == 0);
    CHECK(message_count() == 1);
    open(long_query(3));
    cursor->putref_Query(nullptr);
    CHECK(columns() == L"");
    CHECK(at_end());
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "a cell is asked for once in a row, a missing one as well") {
    open(test::query(L"Q", {L"1", L"2"}, {{L"a", L"-"}, {L"b", L"c"}}));
    log_calls();
    const auto first = get(cursor, &ITesseraHQuery::get_Cell, short{1});
    CHECK(get(cursor, &ITesseraHQuery::get_Cell, short{1}) == first);
    CHECK(test::reference_count(first.get()) == 2);
    for (int i = 0; i < 3; ++i) {
        CHECK(text(1) == L"a");
        CHECK(text(2) == L"");
    }
    CHECK(calls() ==
          LR"(
ResultTable.get_Cell 1, 1
CellObject.get_Text
ResultTable.get_Cell 1, 2
)");
    SUBCASE("again in the next row and after a new start") {
        cursor->MoveNext();
        CHECK(text(2) == L"c");
        CHECK(text(1) == L"b");
        cursor->MoveFirst();
        CHECK(text(1) == L"a");
        CHECK(calls({L"get_Cell", L"get_Text"}) ==
              LR"(
ResultTable.get_Cell 2, 2
CellObject.get_Text
ResultTable.get_Cell 2, 1
CellObject.get_Text
ResultTable.get_Cell 1, 1
CellObject.get_Text
)");
    }
    SUBCASE("a new start keeps nothing of the row") {
        cursor->MoveFirst();
    }
    SUBCASE("another query keeps nothing of the row") {
        open(long_query(1));
    }
    CHECK(test::reference_count(first.get()) == 1);
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

TEST_CASE_FIXTURE(QueryFixture, "columns that do not exist are reported") {
    const auto top = test::query(L"Q", {L"1", L"2"}, {{L"a", L"b"}});
    top->row(1).nested = test::query(L"N", {L"3"}, {{L"c"}});
    open(top);
    for (const int index : {-1, 0, 4, 32767}) {
        CHECK_FALSE(get(cursor, &ITesseraHQuery::get_ColumnItem, static_cast<short>(index)));
        CHECK(error_code(1) == DISP_E_BADINDEX);
        CHECK(take_errors() == L"HQuery (Tessera)|Public Property Get 'ColumnItem'\n");
    }
    // An index below the smallest of 16 bits.
    cursor->MoveNext();
    CHECK(get(cursor, &ITesseraHQuery::get_CurrentQueryColumnIndex, short{-32768}) == 0);
    CHECK(error_code(1) == DISP_E_OVERFLOW);
    CHECK(take_errors() == L"HQuery (Tessera)|Public Property Get 'CurrentQueryColumnIndex'\n");
    // More columns than 16 bits number.
    top->row(1).nested = test::query(L"N", std::vector<std::wstring>(32766, L"n"), {{L"c"}});
    open(top);
    CHECK(take_errors() == L"HQuery (Tessera)|Private Function 'GetAllColumns'\n");
    CHECK(get(cursor, &ITesseraHQuery::get_ColumnCount) == 32767);
    CHECK(text(2) == L"b");
}
