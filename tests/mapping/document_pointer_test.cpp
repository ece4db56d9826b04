// Tests of internals: document pointers taken apart.

#include "mapping/document_pointer.h"

#include "support/com_fixture.h"

using tessera::SplitExDocP;
using test::ComFixture;

TEST_CASE_FIXTURE(ComFixture, "a pointer is split into sheet, column and row") {
    struct Row {
        const wchar_t* pointer;
        const wchar_t* sheet;
        long column;
        long row;
    };
    constexpr Row rows[] = {
        {L"Sheet1!A1", L"Sheet1", 1, 1},
        {L"Data!aa10", L"Data", 27, 10},
        {L"S!ZZ3", L"S", 702, 3},
        {L"S!AAA3", L"S", 703, 3},
        {L"!C4", L"", 3, 4},
        {L"S!B2!X", L"S", 2, 2},
        {L"S!12", L"S", 0, 12},
        {L"S!A 5", L"S", 1, 5},
        {L"S!B2.5", L"S", 2, 2},
        {L"S!B-3", L"S", 2, -3},
        {L"S!$A$1", L"S", -28 * 26 + 1, 1},
    };
    for (const Row& row : rows) {
        std::wstring sheet;
        long column = 0;
        long line = 0;
        CAPTURE(std::wstring(row.pointer));
        CHECK(SplitExDocP(row.pointer, sheet, column, line));
        CHECK(sheet == row.sheet);
        CHECK(column == row.column);
        CHECK(line == row.row);
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ComFixture, "the column is added to what the caller has") {
    std::wstring sheet;
    long column = 10;
    long row = 0;
    CHECK(SplitExDocP(L"S!B2", sheet, column, row));
    CHECK(column == 12);
}

TEST_CASE_FIXTURE(ComFixture, "what is no pointer is reported") {
    struct Row {
        const wchar_t* pointer;
        HRESULT code;
    };
    constexpr Row rows[] = {
        {L"A1", DISP_E_BADINDEX},
        {L"", DISP_E_BADINDEX},
        {L"S!AB", CTL_E_ILLEGALFUNCTIONCALL},
        {L"S!", CTL_E_ILLEGALFUNCTIONCALL},
        {L"S!A99999999999", DISP_E_OVERFLOW},
        {L"S!ZZZZZZZZ1", DISP_E_OVERFLOW},
    };
    long reports = 0;
    for (const Row& row : rows) {
        std::wstring sheet;
        long column = 0;
        long line = 0;
        CHECK_FALSE(SplitExDocP(row.pointer, sheet, column, line));
        CHECK(error(++reports) == L"Tessera.SCGlobal|Private Function 'SplitExDocP'");
        CHECK(error_code(reports) == row.code);
    }
}
