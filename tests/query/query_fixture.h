// What the tests of the query classes start from: a cursor of the component on queries of the kit,
// and short texts to compare.
#pragma once

#include "query/query_text.h"
#include "support/watched_host.h"

namespace test {

class QueryFixture : public WatchedKit {
  public:
    ComPtr<ITesseraHQuery> cursor = create<ITesseraHQuery>(L"Tessera.HQuery");
    ComPtr<IKelosWorkset> workset;

    // The query as the host has it after its run.
    ComPtr<IKelosQuery> host_query(const Query& query) {
        const TemporaryFile file(project_text(
            "<project name='Werk' type='project' uid='W' current='yes'>"
            "<object name='Pumpe' type='pump' uid='U&amp;1' description='Kreiselpumpe'/></project>",
            utf8(query.xml())));
        workset = get(kit, &IHostKit::Open, Bstr(file.path()).get());
        const auto result = get(kit, &IHostKit::get_Query, Bstr(query.name).get());
        call(result, &IKelosQuery::Run);
        return result;
    }
    // Texts with line ends come from the pump, to which a program gives any text.
    void describe_pump(const wchar_t* text) const {
        const auto pump = get(kit, &IHostKit::get_Object, Bstr(L"Pumpe").get());
        call(pump.as<IHostKitObject>(), &IHostKitObject::put_Description, Bstr(text).get());
    }
    void open(const std::shared_ptr<Query>& query) {
        call(cursor, &ITesseraHQuery::putref_Query, host_query(*query).get());
    }
    void move(int rows) const {
        for (int i = 0; i < rows; ++i)
            cursor->MoveNext();
    }
    bool at_end() const { return get(cursor, &ITesseraHQuery::get_EOF) != VARIANT_FALSE; }
    std::wstring text(short column, uceDataType type = uccDefault) const {
        return get(cursor, &ITesseraHQuery::get_CellText, column, type).str();
    }
    // "query row +offset: texts of all columns", without a message at the end.
    std::wstring row() const {
        if (at_end()) return L"end";
        const auto query = get(cursor, &ITesseraHQuery::get_CurrentQuery);
        const short first = get(cursor, &ITesseraHQuery::get_CurrentQueryColumnIndex, short{1});
        std::wstring result =
            get(query, &IKelosQuery::get_Name).str() + L" " +
            std::to_wstring(get(cursor, &ITesseraHQuery::get_CurrentQueryRowIndex)) + L" +" +
            std::to_wstring(1 - first) + L":";
        for (short i = 1; i <= get(cursor, &ITesseraHQuery::get_ColumnCount); ++i)
            result += L" " + (get(cursor, &ITesseraHQuery::get_Cell, i) ? text(i) : L"-");
        return result;
    }
    // All rows from the current one on, as a raw literal with one a line.
    std::wstring rows() const {
        std::wstring result = L"\n";
        for (int i = 0; i < 1000 && !at_end(); ++i, cursor->MoveNext())
            result += row() + L"\n";
        return result;
    }
    std::wstring columns() const {
        std::wstring result;
        for (short i = 1; i <= get(cursor, &ITesseraHQuery::get_ColumnCount); ++i)
            result +=
                get(get(cursor, &ITesseraHQuery::get_ColumnItem, i), &IKelosQColumnDef::get_Name)
                    .str() +
                L" ";
        return result;
    }
    uceProgressState state() const { return get(cursor, &ITesseraHQuery::get_State); }
    double bar() const {
        const auto shown = get(form(), &IHostKitForm::get_Form).as<ITesseraPrgFrm>();
        return get(get(shown, &ITesseraPrgFrm::get_PBar), &IKelosBar::get_Value);
    }
};

}  // namespace test
