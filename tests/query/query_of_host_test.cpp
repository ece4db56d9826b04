// Through the DLL: the query classes on the host kit's queries, end to end.

#include <functional>

#include "query/query_xml.h"
#include "support/content_text.h"
#include "support/heap.h"

using namespace test;

namespace {

class HostFixture : public test::ProjectFixture {
  public:
    ComPtr<ITesseraQContent> content = create<ITesseraQContent>(L"Tessera.QContent");
    ComPtr<ITesseraHQuery> cursor = get(content, &ITesseraQContent::get_HQuery);

    ComPtr<IKelosQuery> run_query(const wchar_t* name) const {
        const auto query = get(kit, &IHostKit::get_Query, Bstr(name).get());
        call(query, &IKelosQuery::Run);
        return query;
    }
    void open(const wchar_t* name) const {
        cursor->putref_WorkSet(workset.get());
        cursor->putref_Query(run_query(name).get());
    }
    bool at_end() const { return get(cursor, &ITesseraHQuery::get_EOF) != VARIANT_FALSE; }
    std::wstring text(short column) const {
        return get(cursor, &ITesseraHQuery::get_CellText, column, uccDefault).str();
    }
};

}  // namespace

TEST_CASE_FIXTURE(HostFixture, "a cell in translation names its object and what is translated") {
    open(L"Plan");
    std::wstring rows;
    for (; !at_end(); cursor->MoveNext())
        rows += flat(get(content, &ITesseraQContent::XMLRow)) + L"\n";
    CHECK(rows.find(L"\n<Row Version=\"1\"><Cell><KelosObject SystemUID=\"A1\" SystemType=\"3\" "
                    L"PathFullName=\"Anlage\" Property=\"Description\" SubObjectType=\"110\" "
                    L"SubObjectKey=\"K-7\"/><Value Data=\"South plant\"/><Column Name=\"Text\"/>"
                    L"</Cell></Row>\n") != rows.npos);
}

TEST_CASE_FIXTURE(HostFixture, "a query of the host as one content document") {
    open(L"Plan");
    std::wstring overview;
    const auto contents = test::contents_of(get(content, &ITesseraQContent::XMLComplete));
    for (const auto& node : contents)
        overview += test::data(node, L"Document", L"Pointer") + L" " +
                    test::item(node, L"Value", L"KelosValue") + L"|" + test::values(node) + L"\n";
    CHECK(overview ==
          L"0;1 String:Objekt|\n"
          L"0;2 String:Internal|\n"
          L"0;3 String:Text (englisch)|\n"
          L"0;4 String:Step|\n"
          L"0;5 String:Limit|\n"
          L"1;1 String:Pumpe|1031 Pumpe=Pumpe\n"
          L"1;2 String:Pumpe|1031 Pumpe=Pumpe\n"
          L"1;3 String:Centrifugal pump|1033 Centrifugal pump=Centrifugal pump\n"
          L"2;4 Long:1|1031 1=fill\n"
          L"3;5 Double:0.5|1031 0.5=0,5\n"
          L"5;4 String:drain|1031 drain=drain\n"
          L"6;2 String:hidden|1031 hidden=hidden\n"
          L"6;3 String:South plant|1033 South plant=South plant\n"
          L"7;1 String:Anlage|1031 Anlage=Anlage\n"
          L"7;2 String:Anlage|1031 Anlage=Anlage\n"
          L"7;3 String:South plant|1033 South plant=South plant\n"
          L"8;4 String:last|1031 last=last\n");
    CHECK(test::item(contents.back(), L"Value", L"LCID") == L"Integer:1031");
    CHECK(test::data(contents[12], L"KelosObject", L"SystemUID") == L"A1");  // in translation
    CHECK(test::data(contents[9], L"Property", L"GetParameter") == L"p");
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(HostFixture,
                  "a walk over any query of the sample visits all rows that it counts") {
    get(kit, &IHostKit::Open, Bstr(test::sample(L"plant.xml")).get());
    for (long i = 1; i <= get(kit, &IHostKit::get_QueryCount); ++i) {
        const std::wstring name = get(kit, &IHostKit::get_QueryName, i).str();
        CAPTURE(name);
        const auto query = run_query(name.c_str());
        cursor->putref_Query(query.get());
        long visited = 0;
        for (; !at_end(); cursor->MoveNext())
            ++visited;
        const auto table = get(query, &IKelosQuery::get_ResultTable);
        CHECK(visited == get(table, &IKelosResultTable::get_TotalRowCount));
        CHECK(visited > 0);
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(HostFixture, "a long walk keeps its memory and its number of calls per row") {
    call(service(), &IHostKitService::put_TraceLimit, 0L);
    std::function<void()> read;
    int rows = 0;
    const wchar_t* last = L"";
    SUBCASE("texts") {
        open(L"Long");
        rows = 100000;
        last = L"Channel 100000";
        read = [&] { text(1); };
    }
    SUBCASE("nested rows as encoded strings") {
        open(L"LongNested");
        rows = 10000;
        last = L"Slot 9";
        read = [&] {
            Bstr row;
            VARIANT_BOOL written = VARIANT_FALSE;
            content->XMLRowAsString(row.put(), VARIANT_TRUE, &written);
            REQUIRE(written != VARIANT_FALSE);
        };
    }
    const auto walk = [&](int count) {
        call(kit, &IHostKit::FailCall, 0L, S_OK);
        for (int i = 0; i < count; ++i, cursor->MoveNext())
            read();
        return get(kit, &IHostKit::get_CountedCalls);
    };
    const long first_calls = walk(rows / 10);
    const std::size_t first_bytes = busy_bytes();
    CHECK(walk(rows / 10 * 9 - 1) < first_calls * 9 + 10);
    CHECK(text(2) == last);
    CHECK(busy_bytes() < first_bytes + 1000);
    walk(1);
    CHECK(at_end());
    CHECK(error_count() == 0);
}
