// What the user sees of a walk, and how an abort ends it.

#include "query/query_fixture.h"

using automation::Bstr;
using automation::get;
using fake::calls;
using test::long_query;
using test::QueryFixture;

namespace {

std::wstring title_of(const automation::ComPtr<IHostKitForm>& form) {
    wchar_t text[64] = L"";
    GetWindowTextW(static_cast<HWND>(LongToHandle(get(form, &IHostKitForm::get_Window))), text, 64);
    return text;
}

void move(const automation::ComPtr<tessera::HQuery>& cursor, int rows) {
    for (int i = 0; i < rows; ++i)
        cursor->MoveNext();
}

}  // namespace

TEST_CASE_FIXTURE(QueryFixture, "a walk shows its form from the first row to the end") {
    CHECK(state() == uccStateClosed);
    open(fake::query(L"Q", {L"N"}));
    CHECK(open_forms() == 0);
    open(long_query(120));
    CHECK(open_forms() == 1);
    CHECK(title_of(form()) == L"Abfrage lesen...");
    CHECK(get(controller(), &ITesseraProgress::get_Where) == uccKelosToBox);
    CHECK(state() == uccStateOpen);
    // Every 50th row: 50 * 100 / 120, 100 * 100 / 120.
    move(cursor, 48);
    CHECK(state() == uccStateOpen);
    move(cursor, 1);
    CHECK(state() == uccStateExecuting);
    CHECK(bar() == 41);
    move(cursor, 49);
    CHECK(bar() == 41);
    move(cursor, 1);
    CHECK(bar() == 83);
    move(cursor, 20);
    CHECK_FALSE(at_end());
    CHECK(open_forms() == 1);
    move(cursor, 1);
    CHECK(at_end());
    CHECK(open_forms() == 0);
    CHECK(calls().count("TotalRowCount") == 1);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "the percentage counts the rows of nested queries") {
    const auto query = long_query(50);
    fake::row(query, 1).nested = long_query(150);
    open(query);
    move(cursor, 49);
    CHECK(row() == L"Q 49 +1: - 49");
    CHECK(bar() == 25);
    // Another query has another total.
    open(long_query(100));
    move(cursor, 49);
    CHECK(bar() == 50);
}

TEST_CASE_FIXTURE(QueryFixture, "the caption speaks the user's language") {
    call(service(), &IHostKitService::put_Language, hklEnglish);
    open(long_query(1));
    CHECK(title_of(form()) != L"Abfrage lesen...");
    CHECK_FALSE(title_of(form()).empty());
}

TEST_CASE_FIXTURE(QueryFixture, "an abort leaves the cursor on its row") {
    open(long_query(200));
    move(cursor, 59);
    CHECK(text(1) == L"60");
    controller()->put_State(uccStateAbort);
    move(cursor, 100);
    CHECK(state() == uccStateAbort);
    CHECK(row() == L"Q 60 +0: 60");
    CHECK_FALSE(at_end());

    SUBCASE("the next percentage closes the form") {
        controller()->put_Percentage(40);
        CHECK(open_forms() == 0);
        CHECK(state() == uccStateAbort);
        cursor->MoveNext();
        CHECK(text(1) == L"60");
    }
    SUBCASE("a new start is a new walk") {
        cursor->MoveFirst();
        CHECK(state() == uccStateOpen);
        move(cursor, 99);
        CHECK(text(1) == L"100");
        CHECK(bar() == 50);
    }
    SUBCASE("letting go of the cursor closes the form") {
        cursor.reset();
        CHECK(open_forms() == 0);
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(QueryFixture, "a click that waits in the form's queue is seen by the next move") {
    open(long_query(10));
    const auto window = static_cast<HWND>(LongToHandle(get(form(), &IHostKitForm::get_Window)));
    const HWND button = FindWindowExW(window, nullptr, L"Button", nullptr);
    REQUIRE(button);
    PostMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    PostMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    cursor->MoveNext();
    CHECK(state() == uccStateAbort);
    CHECK(text(1) == L"1");
}

TEST_CASE_FIXTURE(QueryFixture, "a walk goes on without a form") {
    call(service(), &IHostKitService::put_OffersApplication, VARIANT_FALSE);
    open(long_query(300));
    CHECK(error_count() == 1);
    CHECK(error(1) == L"Tessera.Progress|Private Sub 'StartProcess'");
    move(cursor, 299);
    CHECK(row() == L"Q 300 +0: 300");
    CHECK(error_count() == 1);
    call(service(), &IHostKitService::put_OffersApplication, VARIANT_TRUE);
}

TEST_CASE_FIXTURE(QueryFixture, "a host that cannot count its rows is asked again, without a bar") {
    const auto query = long_query(100);
    open(query);
    calls().failing = "TotalRowCount";
    move(cursor, 98);
    CHECK(row() == L"Q 99 +0: 99");
    CHECK(error_count() == 98);
    CHECK(bar() == 0);
    calls().failing.clear();
    move(cursor, 1);
    CHECK(open_forms() == 0);  // 100 %
    CHECK(error_count() == 98);
}
