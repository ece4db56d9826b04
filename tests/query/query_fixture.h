// What the tests of the query classes start from: fake queries, and short texts to compare.
#pragma once

#include "query/fake_query.h"
#include "query/hquery.h"
#include "support/com_fixture.h"

namespace test {

class QueryFixture : public ComFixture {
  public:
    QueryFixture() { fake::calls() = {}; }
    ~QueryFixture() { fake::calls() = {}; }

    ComPtr<tessera::HQuery> cursor = automation::make<tessera::HQuery>();

    void open(const std::shared_ptr<fake::Query>& query) const {
        cursor->putref_Query(fake::make_query(query).get());
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
    // All rows from the current one on.
    std::vector<std::wstring> rows() const {
        std::vector<std::wstring> result;
        while (!at_end() && result.size() < 1000) {
            result.push_back(row());
            cursor->MoveNext();
        }
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

    // The progress forms that the host knows.
    ComPtr<IHostKitWindowService> windows() const {
        return get(get(service(), &IKelosService::get_Application),
                   &IKelosApplication::get_WindowService)
            .as<IHostKitWindowService>();
    }
    long open_forms() const {
        return get(get(windows(), &IHostKitWindowService::get_Forms), &IHostKitForms::get_Count);
    }
    ComPtr<IHostKitForm> form() const {
        return get(get(windows(), &IHostKitWindowService::get_Forms), &IHostKitForms::get_Item, 1L);
    }
    double bar() const {
        const auto form_object = get(form(), &IHostKitForm::get_Form).as<ITesseraPrgFrm>();
        return get(get(form_object, &ITesseraPrgFrm::get_PBar), &IKelosBar::get_Value);
    }
    // What the form's controller can do: the user's abort, and the percentages of others.
    ComPtr<ITesseraProgress> controller() const {
        return get(form(), &IHostKitForm::get_Controller).as<ITesseraProgress>();
    }
};

// A query with this many rows and one column, "1" to its number.
inline std::shared_ptr<fake::Query> long_query(int rows) {
    std::vector<std::vector<std::wstring>> texts;
    for (int i = 1; i <= rows; ++i)
        texts.push_back({std::to_wstring(i)});
    return fake::query(L"Q", {L"N"}, texts);
}

// A query of one row that nests a query of one row and so on, this many levels below the top.
inline std::shared_ptr<fake::Query> deep_query(int levels) {
    const std::wstring name = L"Q" + std::to_wstring(levels);
    auto query = fake::query(name.c_str(), {L"C"}, {{name}});
    if (levels > 0) fake::row(query, 1).nested = deep_query(levels - 1);
    return query;
}

}  // namespace test
