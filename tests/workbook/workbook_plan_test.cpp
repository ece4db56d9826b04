// Which cells a workbook gets, what they hold and how sheets are laid out.

#include "cli/workbook/workbook_plan.h"

#include <doctest/doctest.h>

#include "cli/workbook/drop_downs.h"
#include "cli/workbook/sheet_layout.h"

using namespace cli;
using namespace std::string_literals;

namespace {

ContentRecord record(std::u16string_view pointer, const ArchivedValue& value,
                     std::u16string_view property = u"Value",
                     std::u16string_view direction = u"IO") {
    ContentRecord result;
    result.pointer = parse_pointer(pointer);
    result.value = value;
    result.property.name = property;
    result.direction = direction;
    return result;
}

ContentRecord text_at(std::u16string_view pointer, std::u16string_view text = u"text") {
    return record(pointer, {u"String", std::u16string(text)});
}

ContentRecord heading(std::u16string_view pointer, std::u16string_view text = u"text") {
    return record(pointer, {u"String", std::u16string(text)}, {}, u"O");
}

WorkbookPlan plan_of(ContentRecords& records) {
    for (std::size_t i = 0; i < records.contents.size(); ++i)
        records.contents[i].number = i + 1;
    return plan_workbook(records, [](const ContentRecord&) { return std::u16string(); });
}

ContentRecord list(std::vector<ListItem> items) {
    ContentRecord result = record(u"S!A1", {});
    result.items = std::move(items);
    result.presentation = 1;
    return result;
}

ListItem item(std::u16string_view value, std::u16string_view display) {
    return {1031, {u"Long", std::u16string(value)}, {u"String", std::u16string(display)}};
}

}  // namespace

TEST_CASE("a cell holds what the type and the flags of its value say") {
    using Kind = CellContent::Kind;
    const struct {
        ArchivedValue value;
        Kind kind;
        double number;
        bool is_numeric = false;
        long lcid = 1031;
    } cases[] = {
        {{u"Double", u"12.5"}, Kind::number, 12.5},
        {{u"Double", u"12,5"}, Kind::number, 12.5},
        {{u"Double", u"-1.5E+17"}, Kind::number, -1.5e17},
        {{u"Double", u"INF"}, Kind::text, 0},
        {{u"Boolean", u"-1"}, Kind::boolean, 1},
        {{u"Boolean", u"0"}, Kind::boolean, 0},
        {{u"Empty", u""}, Kind::blank, 0},
        {{u"String", u""}, Kind::blank, 0},
        {{u"String", u"12.5"}, Kind::text, 0},
        {{u"String", u"12,5"}, Kind::number, 12.5, true},
        {{u"String", u"12.5"}, Kind::text, 0, true},
        {{u"String", u"12.5"}, Kind::number, 12.5, true, 1033},
        {{u"String", u"1.234,5"}, Kind::text, 0, true},
        {{u"String", u"12 m"}, Kind::text, 0, true},
        {{u"Date", u"3/1/1900"}, Kind::date, 61},
        {{u"Date", u"2/28/1900"}, Kind::date, 59},
        {{u"Date", u"11/21/2026 6:00:00 AM"}, Kind::date, 46347.25},
        {{u"Date", u"12:00:00 PM"}, Kind::date, 0.5},
        {{u"Date", u"12/31/1899"}, Kind::text, 0},
    };
    for (const auto& [value, kind, number, is_numeric, lcid] : cases) {
        ContentRecord content = record(u"S!A1", value);
        content.all_values_numeric = is_numeric;
        content.lcid = lcid;
        const CellContent cell = cell_content(content);
        CAPTURE(std::string(value.text.begin(), value.text.end()));
        CHECK(cell.kind == kind);
        CHECK(cell.number == number);
        if (kind == Kind::text) CHECK(cell.text == value.text);
    }
}

TEST_CASE("the document value comes before the project's, and lists show what they are read as") {
    ContentRecord both = text_at(u"S!A1", u"project");
    both.document_value = {u"String", u"document"};
    CHECK(cell_content(both).text == u"document");

    ContentRecord states = list({item(u"10", u"ten"), item(u"9", u"nine"), item(u"7", u"")});
    CHECK(cell_content(states).text == u"ten");
    CHECK(list_texts(states) == std::vector<std::u16string>{u"7", u"nine", u"ten"});
    states.document_value = {u"Long", u"9"};
    CHECK(cell_content(states).text == u"nine");
}

TEST_CASE("cells are open when their values can go back") {
    const struct {
        std::u16string_view property;
        std::u16string_view direction;
        CellRole role;
    } cases[] = {
        {u"Value", u"IO", CellRole::input},       {u"description", u"I", CellRole::input},
        {u"Value", u"O", CellRole::output},       {u"FullLabel", u"IO", CellRole::output},
        {u"fullname", u"IO", CellRole::output},   {u"11", u"IO", CellRole::output},
        {u"32", u"IO", CellRole::input},          {u"Parent.Name", u"", CellRole::output},
        {u"Parent.Name", u"IO", CellRole::input}, {u"", u"O", CellRole::heading},
    };
    for (const auto& [property, direction, role] : cases)
        CHECK(cell_role(record(u"S!A1", {}, property, direction)) == role);
}

TEST_CASE("values that find no place are told with the reason, and the others keep theirs") {
    ContentRecords records;
    const std::u16string long_name(32, u'x');
    for (const std::u16string& pointer :
         {u"S!B2"s, u"S!A2"s, u"s!a10"s, u"S!A2"s, u"nowhere"s, u"!A1"s, u"S!XFE1"s, u"S!A1048577"s,
          u"a/b!A1"s, u"'q!A1"s, u"HISTORY!A1"s, long_name + u"!A1", u"Ü!A1"s, u"ü!A2"s})
        records.contents.push_back(text_at(pointer));
    records.contents.push_back(text_at(u"S!C1", std::u16string(32768, u'x')));
    const WorkbookPlan plan = plan_of(records);

    REQUIRE(plan.sheets.size() == 2);
    CHECK(plan.sheets[0].name == u"S");
    CHECK(plan.sheets[1].cells.size() == 2);
    std::u16string cells;
    for (const PlannedCell& cell : plan.sheets[0].cells)
        cells += cell_name(cell.at) + u" ";
    CHECK(cells == u"A2 B2 A10 ");
    CHECK(plan.cells == 5);

    const std::wstring reasons[] = {
        L"sheet and cell",
        L"name of its sheet is empty",
        L"end at XFD1048576",
        L"end at XFD1048576",
        L"\"/\"",
        L"apostrophe",
        L"keep for themselves",
        L"more than 31 characters",
        L"32768 characters",
        L"that of content 2, and this is content 4",
    };
    REQUIRE(plan.unwritten.size() == std::size(reasons));
    for (std::size_t i = 0; i < std::size(reasons); ++i)
        CHECK(plan.unwritten[i].reason.find(reasons[i]) != std::wstring::npos);
}

TEST_CASE("lists that are short and plain stand in place, others under a name, each once") {
    DropDowns lists;
    CHECK(lists.formula_of({u"a", u"b c"}) == u"\"a,b c\"");
    CHECK(lists.formula_of({u"a,b", u"c"}) == u"TesseraList1");
    CHECK(lists.formula_of({std::u16string(200, u'x'), std::u16string(60, u'y')}) ==
          u"TesseraList2");
    CHECK(lists.formula_of({u"a,b", u"c"}) == u"TesseraList1");
    REQUIRE(lists.named_lists().size() == 2);
    CHECK(lists.named_lists()[1].range == u"$B$1:$B$2");
}

TEST_CASE("cells that offer the same list are one range for each run down a column") {
    ContentRecords records;
    for (const char16_t* pointer : {u"S!A1", u"S!B1", u"S!A2", u"S!A4", u"S!B2"}) {
        records.contents.push_back(list({item(u"1", u"one"), item(u"2", u"two")}));
        records.contents.back().pointer = parse_pointer(pointer);
    }
    records.contents.push_back(list({item(u"1", u"one")}));
    records.contents.back().pointer = parse_pointer(u"S!C1");
    records.contents.back().direction = u"O";
    const WorkbookPlan plan = plan_of(records);
    const auto offered = offered_lists(plan.sheets[0]);
    REQUIRE(offered.size() == 1);
    CHECK(offered.begin()->second == u"A1:A2 A4 B1:B2");
}

TEST_CASE("headings above the values stay in view, wide sheets keep their first column") {
    const struct {
        std::vector<ContentRecord> contents;
        std::int32_t rows;
        std::int32_t columns;
    } cases[] = {
        {{heading(u"S!A1"), text_at(u"S!A3")}, 2, 0},
        {{text_at(u"S!A1"), heading(u"S!B1")}, 0, 0},
        {{heading(u"S!A1"), text_at(u"S!A30")}, 0, 0},
        {{heading(u"S!A1")}, 0, 0},
        {{heading(u"S!A1"), text_at(u"S!A2"), text_at(u"S!I2")}, 1, 1},
        {{heading(u"S!A1"), text_at(u"S!B2"), text_at(u"S!H2")}, 1, 0},
        {{text_at(u"S!B2"), text_at(u"S!Z2")}, 0, 0},
    };
    for (const auto& [contents, rows, columns] : cases) {
        ContentRecords records{contents, false};
        const WorkbookPlan plan = plan_of(records);
        const SheetLayout layout = layout_of(plan.sheets[0]);
        CHECK(layout.header_rows == rows);
        CHECK(layout.header_columns == columns);
    }
}

TEST_CASE("columns are as wide as what they show, and headings run over empty cells") {
    ContentRecords records;
    records.contents = {heading(u"S!A1", std::u16string(40, u'x')),
                        text_at(u"S!A2", u"short\n" + std::u16string(20, u'x')),
                        text_at(u"S!B2", std::u16string(500, u'x')),
                        heading(u"S!C3", std::u16string(30, u'x')), text_at(u"S!D3")};
    const WorkbookPlan plan = plan_of(records);
    const SheetLayout layout = layout_of(plan.sheets[0]);
    CHECK(layout.width_of(1) == 24);
    CHECK(layout.width_of(2) == 64);
    CHECK(layout.width_of(3) == 34);
    CHECK(layout.width_of(4) == layout.width_of(5));
}
