// Columns and rows of fake queries as XML documents and as strings.

#include "functions/gfunctions.h"
#include "query/query_xml.h"

using automation::Bstr;
using automation::ComPtr;
using automation::get;
using automation::Variant;
using fake::calls;
using test::ContentFixture;
using test::flat;

namespace {

constexpr wchar_t declaration[] = L"<?xml version=\"1.0\" encoding=\"ISO-10646-UCS-2\"?>";

std::wstring dom_doc_as_string(const ComPtr<tessera::QContent>& content,
                               IXMLDOMDocument* document) {
    return get(content, &ITesseraQContent::DOMDocAsString, document).str();
}

// Three columns, of which the second is not relevant.
std::shared_ptr<fake::Query> gap() {
    auto query = fake::query(L"Q", {L"Tag", L"Hidden", L"Name"},
                             {{L"P-1", L"h", L"Pump"}, {L"-", L"h", L"-"}, {L"-", L"h", L"Fan"}});
    query->columns[1].relevant = false;
    return query;
}

}  // namespace

TEST_CASE_FIXTURE(ContentFixture, "columns keep their numbers where others are not relevant") {
    open(gap());
    CHECK(columns_xml() ==
          L"<?xml encoding=\"ISO-10646-UCS-2\"?>"
          L"<Columns Version=\"1\"><Description Of=\"Tag\"/><Description Of=\"Name\"/>"
          L"<ColumnsRelation F1=\"Tag\" F3=\"Name\"/></Columns>");
    CHECK(calls().count("WriteXML") == 2);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ContentFixture, "nothing is relevant in a result without rows") {
    const std::wstring none =
        L"<?xml encoding=\"ISO-10646-UCS-2\"?>"
        L"<Columns Version=\"1\"><ColumnsRelation/></Columns>";
    CHECK(columns_xml() == none);
    open(fake::query(L"Q", {L"Tag"}));
    CHECK(columns_xml() == none);
    CHECK(error_count() == 0);
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
}

TEST_CASE_FIXTURE(ContentFixture, "cells of nested queries stand under their own columns") {
    const auto top = fake::query(L"T", {L"Area"}, {{L"A"}});
    fake::row(top, 1).nested = fake::query(L"N", {L"Tag"}, {{L"P"}});
    open(top);
    CHECK(row_xml() ==
          L"<Row Version=\"1\"><Cell><Value Data=\"A\"/><Column Name=\"Area\"/></Cell></Row>");
    cursor->MoveNext();
    CHECK(row_xml() ==
          L"<Row Version=\"1\"><Cell><Value Data=\"P\"/><Column Name=\"Tag\"/></Cell></Row>");
}

TEST_CASE_FIXTURE(ContentFixture, "a cell names its host object") {
    const auto query = fake::query(L"Q", {L"C"}, {{L"a"}, {L"b"}, {L"c"}});
    const auto pump = fake::make_object(L"U&1", 3);
    fake::row(query, 1).cells[0].object = pump;
    // An object as value is just a value.
    fake::row(query, 2).cells[0].value = Variant(static_cast<IDispatch*>(pump.get()));
    fake::row(query, 3).cells[0].value = Variant(static_cast<IDispatch*>(nullptr));
    open(query);
    CHECK(row_xml() ==
          L"<Row Version=\"1\"><Cell>"
          L"<KelosObject SystemUID=\"U&amp;1\" SystemType=\"3\" PathFullName=\"3|U&amp;1\"/>"
          L"<Value Data=\"a\"/><Column Name=\"C\"/></Cell></Row>");
    for (const wchar_t* const text : {L"b", L"c"}) {
        cursor->MoveNext();
        CHECK(row_xml() == std::wstring(L"<Row Version=\"1\"><Cell><Value Data=\"") + text +
                               L"\"/><Column Name=\"C\"/></Cell></Row>");
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ContentFixture, "texts of rows have office line breaks") {
    open(fake::query(L"Q", {L"C"}, {{L"a\r\nb\n\rc\rd"}}));
    CHECK(row_xml() ==
          L"<Row Version=\"1\"><Cell><Value Data=\"a&#10;b&#10;c&#13;d\"/><Column Name=\"C\"/>"
          L"</Cell></Row>");
    struct Case {
        const wchar_t* given;
        const wchar_t* expected;
    };
    const Case cases[] = {{L"", L""},           {L"a\r\nb", L"a\nb"},
                          {L"a\n\rb", L"a\nb"}, {L"a\r\n\rb", L"a\nb"},
                          {L"a\rb", L"a\rb"},   {L"\r\n\n\r", L"\n\n"}};
    for (const Case& one : cases)
        CHECK(get(content, &ITesseraQContent::GetOfficeString, Bstr(one.given).get()).view() ==
              one.expected);
    CHECK(get(content, &ITesseraQContent::GetOfficeString, nullptr).empty());
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
}

TEST_CASE_FIXTURE(ContentFixture, "encoded row strings decode to the plain ones") {
    const auto query = gap();
    fake::row(query, 3).cells[2].text = L"\u4e16\U0001F600 \u00e4";
    open(query);
    const auto functions = automation::make<tessera::GFunctions>();
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
    for (const char* const call :
         {"Cell.Text", "Cell.Value", "Cell.Object", "Name", "SystemUID", "PathFullName"}) {
        CAPTURE(call);
        const auto query = fake::query(L"Q", {L"C"}, {{L"a"}});
        fake::row(query, 1).cells[0].object = fake::make_object(L"U", 3);
        open(query);
        calls().failing = call;
        CHECK(row_xml() == L"nothing");
        CHECK(row_string() == L"False: ");
        calls().failing.clear();
        CHECK(error_count() == 2);
        CHECK(error(1) == L"QContent (Tessera)|Private Function 'internalXMLRow'");
        CHECK(error(2) == error(1));
        CHECK(error_code(1) == fake::failure);
        automation::call(service(), &IHostKitService::Clear);
    }
}

TEST_CASE_FIXTURE(ContentFixture, "a row goes on without a cell that cannot be had") {
    open(gap());
    calls().failing = "Cell";
    CHECK(row_xml() == L"nothing");
    CHECK(error_count() == 2);
    CHECK(error(2) == L"HQuery (Tessera)|Public Property Get 'Cell'");
}

TEST_CASE_FIXTURE(ContentFixture, "columns that fail leave what has been written") {
    open(gap());
    calls().failing = "WriteXML";
    CHECK(columns_xml() == L"<?xml encoding=\"ISO-10646-UCS-2\"?><Columns Version=\"1\"/>");
    CHECK(error_count() == 1);
    CHECK(error(1) == L"QContent (Tessera)|Public Function 'XMLColumns'");
}

TEST_CASE_FIXTURE(ContentFixture, "a row that cannot be encoded stays plain") {
    open(gap());
    const std::wstring plain = row_string();
    const auto kit = test::create<IHostKit>(L"Kelos.HostKit");
    // The fakes are no part of the kit: its next call is the compressor's, the one after it the
    // encoder's.
    for (const long failing_call : {1L, 2L}) {
        call(kit, &IHostKit::FailCall, failing_call, E_ACCESSDENIED);
        CHECK(row_string(true) == plain);
        call(kit, &IHostKit::FailCall, 0L, S_OK);
        CHECK(error(failing_call) == L"QContent (Tessera)|Private sub 'Encode'");
        CHECK(error_code(failing_call) == E_ACCESSDENIED);
    }
    CHECK(row_string(true).starts_with(L"True: @@UU@@C@@"));
    CHECK(error_count() == 2);
}

TEST_CASE_FIXTURE(ContentFixture, "the writer keeps its cursor") {
    const auto first = get(content, &ITesseraQContent::get_HQuery);
    CHECK(get(content, &ITesseraQContent::get_HQuery) == first);
    content.reset();
    CHECK(test::reference_count(first.get()) == 2);
}

TEST_CASE_FIXTURE(ContentFixture,
                  "a missing place for a writer's result is reported, not a crash") {
    open(gap());
    CHECK(content->get_HQuery(nullptr) == S_OK);
    CHECK(content->XMLColumns(nullptr) == S_OK);
    CHECK(content->XMLRow(nullptr) == S_OK);
    CHECK(content->XMLComplete(nullptr) == S_OK);
    CHECK(content->GetOfficeString(nullptr, nullptr) == S_OK);
    VARIANT_BOOL written = VARIANT_TRUE;
    CHECK(content->XMLRowAsString(nullptr, VARIANT_FALSE, &written) == S_OK);
    CHECK(written == VARIANT_FALSE);
    CHECK(content->DOMDocAsString(nullptr, nullptr) == S_OK);
    CHECK(error_count() == 7);
    CHECK(error(6) == L"QContent (Tessera)|Public Function 'XMLRowAsString'");
}
