#include "mapping/number_system.h"

#include <stdexcept>

#include "doctest/doctest.h"
#include "support/text_output.h"

using namespace tessera;

TEST_CASE("column letters count without a zero") {
    struct Row {
        std::int32_t number;
        std::u16string_view letters;
    };
    constexpr Row rows[] = {{1, u"A"},     {26, u"Z"},      {27, u"AA"},
                            {52, u"AZ"},   {53, u"BA"},     {702, u"ZZ"},
                            {703, u"AAA"}, {16384, u"XFD"}, {18279, u"AAAA"},
                            {0, u""},      {-3, u""},       {2147483647, u"FXSHRXW"}};
    for (const Row& row : rows) {
        CAPTURE(row.number);
        CHECK(NumericSystem(column_letters, {}, row.number) == row.letters);
    }
}

TEST_CASE("a zero digit makes the system positional") {
    CHECK(NumericSystem(u"123456789", u"0", 10) == u"10");
    CHECK(NumericSystem(u"123456789", u"0", 2147483647) == u"2147483647");
    CHECK(NumericSystem(u"1", u"0", 5) == u"101");
    CHECK(NumericSystem(u"1", {}, 3) == u"111");  // one digit without zero: strokes
    CHECK_THROWS_AS(NumericSystem({}, {}, 1), std::invalid_argument);
}

TEST_CASE("letters give back the number that they were made from") {
    for (std::int32_t number = 1; number < 20000; number += 7) {
        std::int32_t column = 0;
        add_column_letters(NumericSystem(column_letters, {}, number), column);
        CHECK(column == number);
    }
}

TEST_CASE("letters are not checked, but their sum must fit") {
    std::int32_t column = 0;
    add_column_letters(u"$A$", column);
    CHECK(column == -28 * 26 * 26 + 26 - 28);
    column = 5;
    add_column_letters({}, column);
    CHECK(column == 5);
    column = 0;
    CHECK_THROWS_AS(add_column_letters(u"FXSHRXX", column), std::overflow_error);
    CHECK_THROWS_AS(add_column_letters(std::u16string(400, u'Z'), column), std::overflow_error);
}

TEST_CASE("a cell's pointer is its sheet, column letters and row") {
    CHECK(cell_pointer(u"Sheet1", 28, 7) == u"Sheet1!AB7");
    CHECK(cell_pointer(u"", 0, -1) == u"!-1");
}
