// Through the DLL: a walk over three levels that the user ends at any of its rows.
#include "query/query_fixture.h"
#include "support/full_run.h"

using namespace test;

namespace {

// Ten rows, each with five nested ones, each with five of their own: 310 in all.
std::shared_ptr<test::Query> three_levels() {
    const auto rows = [](const wchar_t* name, int count) {
        std::vector<std::vector<std::wstring>> cells;
        for (int i = 1; i <= count; ++i)
            cells.push_back({std::to_wstring(i)});
        return test::query(name, {name}, cells);
    };
    const auto top = rows(L"A", 10);
    for (Row& row : top->rows) {
        row.nested = rows(L"B", 5);
        for (Row& inner : row.nested->rows)
            inner.nested = rows(L"C", 5);
    }
    return top;
}

}  // namespace

TEST_CASE_FIXTURE(QueryFixture,
                  "an abort at any row leaves the cursor there, and the form goes with it") {
    const auto query = host_query(*three_levels());
    const auto start = [&] { call(cursor, &ITesseraHQuery::putref_Query, query.get()); };
    std::vector<std::wstring> all;
    for (start(); !at_end(); move(1))
        all.push_back(row());
    REQUIRE(all.size() == 310);
    const std::size_t step = is_full_run() ? 1 : 13;
    for (std::size_t at = 0; at < all.size(); at += step) {
        CAPTURE(at);
        for (const bool clicked : {false, true}) {
            start();
            move(static_cast<int>(at));
            if (clicked)
                PostMessageW(form_control(L"Button"), BM_CLICK, 0, 0);
            else
                form_controller()->put_State(uccStateAbort);
            move(3);
            CHECK(state() == uccStateAbort);
            CHECK(row() == all[at]);
            form_controller()->put_Percentage(50);
            CHECK(form_count() == 0);
            CHECK(state() == uccStateAbort);
        }
    }
    tell_figure("rows aborted at", static_cast<long>(2 * (1 + (all.size() - 1) / step)));
    start();
    CHECK(row() == all[0]);
    CHECK(error_count() == 0);
}
