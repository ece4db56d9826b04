#include "cli/nearest.h"

#include <doctest/doctest.h>

TEST_CASE("changes are counted letter by letter, a swap of neighbours is one") {
    const struct {
        const wchar_t* left;
        const wchar_t* right;
        std::size_t distance;
    } cases[] = {{L"", L"", 0},           {L"", L"abc", 3},          {L"query", L"QUERY", 0},
                 {L"diff", L"dif", 1},    {L"exprot", L"export", 1}, {L"chekc", L"check", 1},
                 {L"rows", L"colums", 4}, {L"kitten", L"sitting", 3}};
    for (const auto& pair : cases) {
        CHECK(cli::edit_distance(pair.left, pair.right) == pair.distance);
        CHECK(cli::edit_distance(pair.right, pair.left) == pair.distance);
    }
}

TEST_CASE("the nearest name is suggested, and none that is another word") {
    const std::vector<std::wstring> known{L"Pumpenliste", L"Prüfplan", L"Prüfplan 2", L"A"};
    CHECK(cli::suggestion(L"Pumpen", known) == L"; did you mean \"Pumpenliste\"?");
    CHECK(cli::suggestion(L"prufplan", known) == L"; did you mean \"Prüfplan\"?");
    CHECK(cli::suggestion(L"Prüfplan2", known) == L"; did you mean \"Prüfplan\"?");
    for (const wchar_t* other : {L"", L"B", L"Pu", L"Signalliste"})
        CHECK(cli::suggestion(other, known).empty());
}
