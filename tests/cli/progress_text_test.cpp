#include "cli/progress_text.h"

#include "doctest/doctest.h"

TEST_CASE("Progress tells the rate and the remaining time once a second has shown them") {
    const struct {
        cli::WorkDone done;
        std::wstring_view text;
    } cases[] = {
        {{0, 20000, 0, 5000}, L""},
        {{7, 0, 7, 20}, L"row 7"},
        {{500, 20000, 500, 999}, L"row 500 of 20000"},
        {{500, 20000, 500, 1000}, L"row 500 of 20000, 500 rows/s, 39 s left"},
        {{1500, 0, 1000, 4000}, L"row 1500, 250 rows/s"},
        {{5, 100, 5, 10000}, L"row 5 of 100, 0.5 rows/s, 3:10 min left"},
        {{100, 20000, 99, 10000}, L"row 100 of 20000, 9.9 rows/s, 33:30 min left"},
        {{1, 7300, 1, 1000}, L"row 1 of 7300, 1.0 rows/s, 2:01 h left"},
        {{20000, 20000, 20000, 2000}, L"row 20000 of 20000, 10000 rows/s"},
    };
    for (const auto& [done, text] : cases)
        CHECK((cli::progress_text(done) == text));
}
