// Through the DLL: a whole query as one content document.

#include "query/query_xml.h"
#include "support/call_hook.h"
#include "support/content_text.h"

using namespace test;

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

std::shared_ptr<test::Query> nested() {
    const auto top = test::query(L"T", {L"A", L"B"}, {{L"a", L"-"}, {L"b", L"c"}});
    top->row(1).nested = test::query(L"N", {L"C"}, {{L"d"}});
    return top;
}

constexpr wchar_t headings[] = L"0;1 Heading A, 0;2 Heading B, 0;3 Heading C";

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
    const auto query =
        test::query(L"Q", {L"A", L"B"}, {{test::evaluated, L"2,5"}, {L"pump", L"-"}});
    query->columns[0].property = L"Description";
    query->columns[1].property = L"FullLabel";
    query->columns[1].lcid = 1033;
    query->cell(1, 1).more = L" object='Pumpe'";
    query->cell(1, 2).more = L" value='2.5' type='double'";
    query->cell(2, 1).more = L" value-object='Pumpe'";
    open(query);
    describe_pump(L"one\r\ntwo");
    cursor->putref_WorkSet(workset.get());
    const auto all = complete();
    REQUIRE(all.size() == 5);
    CHECK(item(all[0], L"Value", L"LCID") == L"Integer:1031");
    CHECK(item(all[0], L"Property", L"GetName") == L"String:");
    CHECK(test::values(all[0]) == L"");

    const auto& first = all[2];
    CHECK(data(first, L"KelosObject", L"SystemUID") == L"U&1");
    CHECK(data(first, L"KelosObject", L"PathFullName") == L"Pumpe");
    CHECK(data(first, L"Property", L"GetName") == L"Description");
    CHECK(data(first, L"Property", L"SetName") == L"Description");
    CHECK(item(first, L"Property", L"QDefProperty") == L"Long:1");
    CHECK(item(first, L"Value", L"KelosValue") == L"String:one\ntwo");
    CHECK(test::values(first) == L"1031 one\ntwo=one\ntwo");

    const auto& second = all[3];
    CHECK(data(second, L"KelosObject", L"SystemUID") == L"");
    // Without a name for writing back, the reading side's is kept.
    CHECK(data(second, L"Property", L"SetName") == L"FullLabel");
    CHECK(item(second, L"Value", L"KelosValue") == L"Double:2.5");
    CHECK(test::values(second) == L"1033 2.5=2,5");
    // An object as value is represented by its reference.
    CHECK(data(all[4], L"Value", L"KelosValue") == L"120::U&1");
    CHECK(test::values(all[4]) == L"1031 120::U&1=pump");
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(CompleteFixture, "what ends a walk or breaks it leaves what has been written") {
    CHECK(complete().empty());
    open(test::query(L"Q", {L"A"}));
    CHECK(overview(complete()) == L"0;1 Heading A");
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);

    open(nested());
    form_controller()->put_State(uccStateAbort);
    CHECK(overview(complete()) == headings);
    CHECK(text(1) == L"a");
    // A click behind more messages than a row's looks at the queue take.
    open(nested());
    for (int i = 0; i < 600; ++i)
        PostMessageW(form_window(), WM_NULL, 0, 0);
    PostMessageW(form_control(L"Button"), BM_CLICK, 0, 0);
    CHECK(overview(complete()) == std::wstring(headings) + L", 1;1 a");
    CHECK(text(3) == L"d");

    open(nested());
    fail(L"ColumnDefinition.get_SetName");
    CHECK(overview(complete()) == headings);
    CHECK(take_errors() == L"QContent (Tessera)|Public Function 'XMLComplete'\n");
    fail(L"ColumnDefinition.get_Heading");
    CHECK(complete().empty());
    CHECK(take_errors() == L"QContent (Tessera)|Public Function 'XMLComplete'\n");

    // No row comes twice when a move fails.
    fail_nothing();
    open(nested());
    fail(L"ResultTable.get_NestedQuery");
    CHECK(overview(complete()) == std::wstring(headings) + L", 1;1 a, 2;1 b, 2;2 c");
    const std::wstring report = L"HQuery (Tessera)|Public Sub 'MoveNext'\n";
    CHECK(take_errors() == report + report);
}

TEST_CASE_FIXTURE(CompleteFixture, "a host may change the query from inside every call of a walk") {
    open(nested());
    const auto first = get(cursor, &ITesseraHQuery::get_Query);
    for (const auto& next : {ComPtr<IKelosQuery>(), first}) {
        CallHook hook(kit);
        for (long n = 1; n == 1 || hook.has_acted(); ++n) {
            CAPTURE(n);
            call(cursor, &ITesseraHQuery::putref_Query, first.get());
            hook.arm(n, [&] { call(cursor, &ITesseraHQuery::putref_Query, next.get()); });
            complete();
            CHECK(at_end());
        }
        call(service(), &IHostKitService::Clear);
    }
    cursor->MoveFirst();
    CHECK(overview(complete()) == std::wstring(headings) + L", 1;1 a, 2;3 d, 3;1 b, 3;2 c");
    CHECK(error_count() == 0);
}
