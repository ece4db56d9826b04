// A whole query as one content document.

#include "query/query_xml.h"
#include "support/content_text.h"

using automation::get;
using automation::Variant;
using fake::calls;
using test::ContentFixture;
using test::data;
using test::item;

namespace {

class CompleteFixture : public ContentFixture {
  public:
    std::vector<dom::Node> complete() const {
        return test::contents_of(get(content, &ITesseraQContent::XMLComplete));
    }
    // "pointer value" of every element, parted by ", ".
    static std::wstring overview(const std::vector<dom::Node>& contents) {
        std::wstring result;
        for (const auto& node : contents) {
            if (!result.empty()) result += L", ";
            result +=
                data(node, L"Document", L"Pointer") + L" " + data(node, L"Value", L"KelosValue");
        }
        return result;
    }
};

std::shared_ptr<fake::Query> nested() {
    const auto top = fake::query(L"T", {L"A", L"B"}, {{L"a", L"-"}, {L"b", L"c"}});
    fake::row(top, 1).nested = fake::query(L"N", {L"C"}, {{L"d"}});
    return top;
}

constexpr wchar_t headings[] = L"0;1 Heading\nA, 0;2 Heading\nB, 0;3 Heading\nC";

}  // namespace

TEST_CASE_FIXTURE(CompleteFixture, "headings stand in row 0, cells in the rows of the walk") {
    open(nested());
    CHECK(overview(complete()) == std::wstring(headings) + L", 1;1 a, 2;3 d, 3;1 b, 3;2 c");
    CHECK(at_end());
    // The cursor is not moved back.
    CHECK(overview(complete()) == headings);
    cursor->MoveFirst();
    cursor->MoveNext();
    CHECK(overview(complete()) == std::wstring(headings) + L", 1;3 d, 2;1 b, 2;2 c");
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(CompleteFixture, "a cell carries object, property, value and its text") {
    const auto query = fake::query(L"Q", {L"A", L"B"}, {{L"one\r\ntwo", L"2,5"}});
    query->columns[0].set_name = L"Put";
    query->columns[1].lcid = 1033;
    fake::row(query, 1).cells[0].object = fake::make_object(L"U", 3);
    fake::row(query, 1).cells[1].value = Variant(2.5);
    cursor->putref_WorkSet(fake::make_workset(1041).get());
    open(query);
    const auto all = complete();
    REQUIRE(all.size() == 4);
    CHECK(item(all[0], L"Value", L"LCID") == L"Integer:1041");
    CHECK(item(all[0], L"Property", L"GetName") == L"String:");
    CHECK(test::values(all[0]) == L"");

    const auto& first = all[2];
    CHECK(data(first, L"KelosObject", L"SystemUID") == L"U");
    CHECK(data(first, L"KelosObject", L"PathFullName") == L"3|U");
    CHECK(data(first, L"Property", L"GetName") == L"GetA");
    CHECK(data(first, L"Property", L"SetName") == L"Put");
    CHECK(item(first, L"Property", L"GetParameter") == L"Long:1");
    CHECK(item(first, L"Property", L"SetParameter") == L"Long:2");
    CHECK(item(first, L"Property", L"QDefProperty") == L"Long:30");
    CHECK(item(first, L"Value", L"LCID") == L"Integer:1041");
    CHECK(item(first, L"Value", L"KelosValue") == L"String:one\ntwo");
    CHECK(test::values(first) == L"1031 one\ntwo=one\ntwo");

    const auto& second = all[3];
    CHECK(data(second, L"KelosObject", L"SystemUID") == L"");
    // Without a name for writing back, the reading side's is kept.
    CHECK(data(second, L"Property", L"SetName") == L"GetB");
    CHECK(item(second, L"Property", L"SetParameter") == L"Long:1");
    CHECK(item(second, L"Value", L"KelosValue") == L"Double:2.5");
    CHECK(test::values(second) == L"1033 2.5=2,5");
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(CompleteFixture, "an object that no archive holds is represented by its text") {
    const auto query = fake::query(L"Q", {L"A", L"B"}, {{L"sink", L"pump"}});
    fake::row(query, 1).cells[0].value = Variant(static_cast<IDispatch*>(content.get()));
    const auto pump = fake::make_object(L"U", 3);
    fake::row(query, 1).cells[1].value = Variant(static_cast<IDispatch*>(pump.get()));
    open(query);
    const auto all = complete();
    CHECK(item(all[2], L"Value", L"KelosValue") == L"String:sink");
    CHECK(data(all[3], L"Value", L"KelosValue") == L"3::U");
    CHECK(test::values(all[3]) == L"1031 3::U=pump");
    CHECK(message_count() == 0);
    CHECK(error_count() == 0);
    // The fake would keep the writer that keeps it.
    query->rows.clear();
}

TEST_CASE_FIXTURE(CompleteFixture, "columns that are not relevant are in it, too") {
    const auto query = fake::query(L"Q", {L"A"}, {{L"a"}});
    query->columns[0].relevant = false;
    open(query);
    CHECK(overview(complete()) == L"0;1 Heading\nA, 1;1 a");
}

TEST_CASE_FIXTURE(CompleteFixture, "a query without rows has headings only, no query nothing") {
    CHECK(complete().empty());
    open(fake::query(L"Q", {L"A"}));
    CHECK(overview(complete()) == L"0;1 Heading\nA");
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(CompleteFixture, "an abort ends the walk") {
    open(nested());
    controller()->put_State(uccStateAbort);
    CHECK(overview(complete()) == headings);
    CHECK(text(1) == L"a");
}

TEST_CASE_FIXTURE(CompleteFixture, "no row comes twice when a move fails") {
    open(nested());
    calls().failing = "NestedQuery";
    CHECK(overview(complete()) == std::wstring(headings) + L", 1;1 a, 2;1 b, 2;2 c");
    CHECK(error_count() == 2);
    CHECK(error(1) == L"HQuery (Tessera)|Public Sub 'MoveNext'");
}

TEST_CASE_FIXTURE(CompleteFixture, "a failure ends the document where it happened") {
    open(nested());
    calls().failing = "SetName";
    CHECK(overview(complete()) == headings);
    CHECK(error_count() == 1);
    CHECK(error(1) == L"QContent (Tessera)|Public Function 'XMLComplete'");
    calls().failing = "Heading";
    CHECK(complete().empty());
    CHECK(error(2) == error(1));
}
