#include "text/leading_number.h"

#include <limits>

#include "doctest/doctest.h"

using tessera::leading_number;

TEST_CASE("the number at the start of a text is read as far as it goes") {
    struct Row {
        std::u16string_view text;
        double number;
    };
    constexpr Row rows[] = {
        {u"", 0},        {u"abc", 0},    {u"2", 2},        {u" 2 x", 2},    {u"2;3", 2},
        {u"-1", -1},     {u"+3", 3},     {u"+-3", 0},      {u"1.5mm", 1.5}, {u"1,5", 1},
        {u"1e2", 100},   {u"1e", 1},     {u"12 34", 1234}, {u".5", 0.5},    {u"--1", 0},
        {u"\t7\r\n", 7}, {u"1e-999", 0},
    };
    for (const Row& row : rows)
        CHECK(leading_number(row.text) == row.number);
    CHECK(leading_number(u"1e999") == std::numeric_limits<double>::max());
    CHECK(leading_number(u"-1e999") == -std::numeric_limits<double>::max());
}
