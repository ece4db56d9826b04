// Through the DLL: what the user sees of a walk, and how an abort ends it.

#include "query/query_fixture.h"

using namespace test;

TEST_CASE_FIXTURE(QueryFixture, "a walk shows its form from the first row to the end") {
    CHECK(state() == uccStateClosed);
    open(test::query(L"Q", {L"N"}));
    CHECK(form_count() == 0);
    log_calls();
    call(service(), &IHostKitService::put_Language, hklEnglish);
    open(long_query(120));
    CHECK(form_count() == 1);
    wchar_t title[64] = L"";
    GetWindowTextW(form_window(), title, 64);
    CHECK(std::wstring(title) == L"Reading query...");
    CHECK(get(form_controller(), &ITesseraProgress::get_Where) == uccKelosToBox);
    CHECK(state() == uccStateOpen);
    // Every 50th row: 50 * 100 / 120, 100 * 100 / 120.
    std::wstring seen;
    for (; !at_end(); move(1))
        if (const std::wstring shown =
                std::to_wstring(state()) + L": " + std::to_wstring(int(bar()));
            !seen.ends_with(shown + L"\n"))
            seen += text(1) + L" " + shown + L"\n";
    CHECK(seen == L"1 2: 0\n50 1: 41\n100 1: 83\n");
    CHECK(form_count() == 0);
    CHECK(state() == uccStateExecuting);
    CHECK(calls({L"TotalRowCount"}) == L"\nResultTable.get_TotalRowCount\n");
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "the percentage counts the rows of nested queries") {
    const auto query = long_query(50);
    query->row(1).nested = long_query(150);
    open(query);
    move(49);
    CHECK(row() == L"Q 49 +1: - 49");
    CHECK(bar() == 25);
    // Another query has another total.
    open(long_query(100));
    move(49);
    CHECK(bar() == 50);
}

TEST_CASE_FIXTURE(QueryFixture, "an abort leaves the cursor on its row") {
    open(long_query(6000));
    move(5059);
    CHECK(text(1) == L"5060");
    form_controller()->put_State(uccStateAbort);
    log_calls();
    move(100);
    CHECK(state() == uccStateAbort);
    CHECK(row() == L"Q 5060 +0: 5060");
    CHECK(calls({L"get_Cell"}) == L"\nResultTable.get_Cell 5060, 1\n");  // it is read again
    CHECK_FALSE(at_end());

    SUBCASE("a new start is a new walk") {
        cursor->MoveFirst();
        CHECK(state() == uccStateOpen);
        move(99);
        CHECK(text(1) == L"100");
        CHECK(bar() == 1);
    }
    SUBCASE("letting go of the cursor closes the form") {
        cursor.reset();
        CHECK(form_count() == 0);
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "a host that cannot count its rows is asked again, without a bar") {
    const auto query = long_query(100);
    open(query);
    fail(L"ResultTable.get_TotalRowCount");
    move(98);
    CHECK(row() == L"Q 99 +0: 99");
    CHECK(error_count() == 98);
    CHECK(bar() == 0);
    fail_nothing();
    move(1);
    CHECK(form_count() == 0);  // 100 %
    CHECK(error_count() == 98);
}
