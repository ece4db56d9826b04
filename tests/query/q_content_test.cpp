// Through the DLL: columns and rows of queries as XML documents and as strings.

#include "query/query_xml.h"

using namespace test;

namespace {

constexpr wchar_t declaration[] = L"<?xml version=\"1.0\" encoding=\"ISO-10646-UCS-2\"?>";

std::wstring dom_doc_as_string(const ComPtr<ITesseraQContent>& content, IXMLDOMDocument* document) {
    return get(content, &ITesseraQContent::DOMDocAsString, document).str();
}

// Three columns, of which the second is not relevant, and two below them, which have no rows.
std::shared_ptr<test::Query> gap() {
    auto query = test::query(L"Q", {L"Tag", L"Hidden", L"Name"},
                             {{L"P-1", L"h", L"Pump"}, {L"-", L"h", L"-"}, {L"-", L"h", L"Fan"}});
    query->columns[1].relevant = false;
    query->row(1).nested = test::query(L"Below", {L"Off", L"Step"});
    query->row(1).nested->columns[0].relevant = false;
    return query;
}

}  // namespace

TEST_CASE_FIXTURE(ContentFixture, "columns keep their numbers where others are not relevant") {
    open(gap());
    const auto column = [](const std::wstring& name) {
        return L"<Column Name=\"" + name + L"\" Heading=\"Heading " + name +
               L"\" Property=\"DisplayValue\" PropertyConstant=\"30\" Parameter=\"\" Unit=\"\" "
               L"LCID=\"0\" Shown=\"True\"/>";
    };
    CHECK(columns_xml() == L"<?xml encoding=\"ISO-10646-UCS-2\"?><Columns Version=\"1\">" +
                               column(L"Tag") + column(L"Name") + column(L"Step") +
                               L"<ColumnsRelation F1=\"Tag\" F3=\"Name\" F5=\"Step\"/></Columns>");
    // Nothing is relevant in a result without rows.
    for (const auto& without_rows : {std::shared_ptr<test::Query>(), test::query(L"Q", {L"Tag"})}) {
        cursor->putref_Query(without_rows ? host_query(*without_rows).get() : nullptr);
        CHECK(columns_xml() ==
              L"<?xml encoding=\"ISO-10646-UCS-2\"?>"
              L"<Columns Version=\"1\"><ColumnsRelation/></Columns>");
    }
    CHECK(error_count() == 0);
    // What fails leaves what has been written.
    open(gap());
    fail(L"ColumnDefinition.WriteXML");
    CHECK(columns_xml() == L"<?xml encoding=\"ISO-10646-UCS-2\"?><Columns Version=\"1\"/>");
    CHECK(take_errors() == L"QContent (Tessera)|Public Function 'XMLColumns'\n");
}

TEST_CASE_FIXTURE(ContentFixture, "a row has its relevant cells, in the order of the columns") {
    open(gap());
    CHECK(row_xml() ==
          L"<Row Version=\"1\">"
          L"<Cell><Value Data=\"P-1\"/><Column Name=\"Tag\"/></Cell>"
          L"<Cell><Value Data=\"Pump\"/><Column Name=\"Name\"/></Cell></Row>");
    cursor->MoveNext();
    CHECK(row_xml() == L"nothing");
    cursor->MoveNext();
    CHECK(row_xml() ==
          L"<Row Version=\"1\"><Cell><Value Data=\"Fan\"/><Column Name=\"Name\"/></Cell></Row>");
    cursor->MoveNext();
    CHECK(row_xml() == L"nothing");
    CHECK(message_count() == 0);
    CHECK(error_count() == 0);
    // A cell that cannot be had is left out.
    cursor->MoveFirst();
    fail(L"ResultTable.get_Cell");
    CHECK(row_xml() == L"nothing");
    const std::wstring report = L"HQuery (Tessera)|Public Property Get 'Cell'\n";
    CHECK(take_errors() == report + report);
}

TEST_CASE_FIXTURE(ContentFixture, "a cell names its host object, its text has office breaks") {
    const auto query = test::query(L"Q", {L"C"}, {{evaluated}, {L"b"}});
    query->columns[0].property = L"Description";
    query->cell(1, 1).more = L" object='Pumpe'";
    // An object as value is just a value.
    query->cell(2, 1).more = L" value-object='Pumpe'";
    open(query);
    describe_pump(L"a\r\nb\n\rc\rd");
    CHECK(row_xml() ==
          L"<Row Version=\"1\"><Cell>"
          L"<KelosObject SystemUID=\"U&amp;1\" SystemType=\"120\" PathFullName=\"Pumpe\"/>"
          L"<Value Data=\"a&#10;b&#10;c&#13;d\"/><Column Name=\"C\"/></Cell></Row>");
    cursor->MoveNext();
    CHECK(row_xml() ==
          L"<Row Version=\"1\"><Cell><Value Data=\"b\"/><Column Name=\"C\"/></Cell></Row>");
    CHECK(error_count() == 0);
    CHECK(get(content, &ITesseraQContent::GetOfficeString, Bstr(L"a\r\n\rb\rc").get()).view() ==
          L"a\nb\rc");
}

TEST_CASE_FIXTURE(ContentFixture, "row strings begin with one declaration") {
    open(gap());
    const std::wstring row =
        get(get(content, &ITesseraQContent::XMLRow), &IXMLDOMDocument::get_xml).str();
    CHECK(row.starts_with(L"<Row "));
    CHECK(row_string() == L"True: " + (declaration + row));
    CHECK(row_string() == L"True: " + (declaration + row));  // the cursor was not moved
    cursor->MoveNext();
    CHECK(row_string() == L"False: ");
    cursor->MoveNext();
    cursor->MoveNext();
    CHECK(row_string() == L"False: ");
    CHECK(row_string(true) == L"False: ");
    CHECK(error_count() == 0);
    VARIANT_BOOL is_written = VARIANT_TRUE;
    CHECK(content->XMLRowAsString(nullptr, VARIANT_FALSE, &is_written) == S_OK);
    CHECK(is_written == VARIANT_FALSE);
    CHECK(take_errors() == L"QContent (Tessera)|Public Function 'XMLRowAsString'\n");
}

TEST_CASE_FIXTURE(ContentFixture, "encoded row strings decode to the plain ones") {
    const auto query = gap();
    query->cell(3, 3).text = L"\u4e16\U0001F600 \u00e4";
    open(query);
    const auto functions = test::create<ITesseraGFunctions>(L"Tessera.GFunctions");
    int rows = 0;
    for (; !at_end(); cursor->MoveNext()) {
        const std::wstring plain = row_string();
        const std::wstring encoded = row_string(true);
        if (plain == L"False: ") continue;
        ++rows;
        CHECK(encoded.starts_with(L"True: @@UU@@C@@"));
        const Bstr text(encoded.substr(6));
        CHECK(get(functions, &ITesseraGFunctions::Decode, text.get()).str() == plain.substr(6));
    }
    CHECK(rows == 2);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ContentFixture, "documents as strings keep a declaration of their own") {
    CHECK(dom_doc_as_string(content, nullptr) == L"");
    open(gap());
    const auto columns = get(content, &ITesseraQContent::XMLColumns);
    const std::wstring text = dom_doc_as_string(content, columns.get());
    CHECK(text == declaration + get(columns, &IXMLDOMDocument::get_xml).str());
    CHECK(text.starts_with(std::wstring(declaration) + L"<?xml encoding=\"ISO-10646-UCS-2\"?>"));
    CHECK(dom_doc_as_string(content, dom::create_document().get()) == declaration);
}

TEST_CASE_FIXTURE(ContentFixture,
                  "a row that fails gives nothing, and the report names the builder") {
    const auto query = test::query(L"Q", {L"C"}, {{L"a"}});
    query->cell(1, 1).more = L" object='Pumpe'";
    open(query);
    for (const wchar_t* const member :
         {L"CellObject.get_Text", L"CellObject.get_Value", L"CellObject.get_Object",
          L"ColumnDefinition.get_Name", L"PlainObject.get_SystemUID",
          L"PlainObject.get_PathFullName"}) {
        CAPTURE(member);
        cursor->MoveFirst();
        fail(member);
        CHECK(row_xml() == L"nothing");
        CHECK(row_string() == L"False: ");
        const std::wstring report = L"QContent (Tessera)|Private Function 'internalXMLRow'\n";
        CHECK(take_errors() == report + report);
    }
}

TEST_CASE_FIXTURE(ContentFixture, "a row that cannot be encoded stays plain") {
    open(gap());
    const std::wstring plain = row_string();
    for (const wchar_t* const member : {L"new Kelos.ByteCompressor", L"ByteCompressor.Compress",
                                        L"ByteTextEncoder.EncodeBytes"}) {
        fail(member);
        CHECK(row_string(true) == plain);
        CHECK(take_errors() == L"QContent (Tessera)|Private sub 'Encode'\n");
    }
    fail_nothing();
    CHECK(row_string(true).starts_with(L"True: @@UU@@C@@"));
}
