// Through the DLL: what a walk calls on its host, in order.

#include "query/query_xml.h"

using namespace test;

TEST_CASE_FIXTURE(ContentFixture, "a walk over two levels with its rows as documents") {
    const auto top = test::query(L"T", {L"Area", L"Hidden"}, {{L"A", L"h"}, {L"B", L"-"}});
    top->columns[1].relevant = false;
    top->cell(1, 1).more = L" object='Pumpe'";
    top->row(1).nested = test::query(L"N", {L"Tag"}, {{L"P"}});
    const auto query = host_query(*top);
    log_calls();
    cursor->putref_Query(query.get());
    // Opening the form is between its texts and its registration, as without a query.
    CHECK(calls({L"Query", L"Column", L"ResultTable", L"Abfrage", L"RegisterForm"}) ==
          LR"(
QueryObject.get_ResultTable
ResultTable.get_RowCount
ResultTable.get_ColumnCount
ResultTable.get_Columns
ColumnList.get_Item 1
ColumnList.get_Item 2
ResultTable.get_RowCount
ResultTable.get_NestedQuery 1
QueryObject.get_ResultTable
ResultTable.get_ColumnCount
ResultTable.get_Columns
ColumnList.get_Item 1
ResultTable.get_RowCount
ResultTable.get_NestedQuery 1
ColumnDefinition.get_Relevant
ColumnDefinition.get_Relevant
ColumnDefinition.get_Relevant
QueryObject.get_ResultTable
ResultTable.get_RowCount
ResultTable.get_ColumnCount
Service.TranslateText "~018a0 Abfrage lesen..."
WindowService.RegisterForm ITesseraPrgFrm, 0, Nothing, ITesseraProgress
)");
    columns_xml();
    CHECK(calls() ==
          LR"(
ColumnDefinition.WriteXML IXMLDOMElement
ColumnDefinition.get_Name
ColumnDefinition.WriteXML IXMLDOMElement
ColumnDefinition.get_Name
)");
    row_xml();
    CHECK(calls() ==
          LR"(
ResultTable.get_Cell 1, 1
CellObject.get_Value
CellObject.get_Object
PlainObject.get_SystemUID "Pumpe"
PlainObject.get_SystemType "Pumpe"
PlainObject.get_Project "Pumpe"
PlainObject.get_PathFullName "Pumpe", IHostKitProject
CellObject.get_Text
ColumnDefinition.get_Name
)");
    cursor->MoveNext();
    CHECK(calls() ==
          LR"(
ResultTable.get_NestedQuery 1
QueryObject.get_ResultTable
ResultTable.get_RowCount
ResultTable.get_ColumnCount
QueryObject.get_ResultTable
ResultTable.get_TotalRowCount
)");
    row_string(true);
    CHECK(calls() ==
          LR"(
ResultTable.get_Cell 1, 1
CellObject.get_Value
CellObject.get_Object
CellObject.get_Text
ColumnDefinition.get_Name
new Kelos.ByteCompressor
new Kelos.ByteTextEncoder
ByteCompressor.Compress
ByteTextEncoder.EncodeBytes
)");
    row_string(true);  // with the same pair
    CHECK(calls({L"new"}) == L"\n");
    move(2);
    CHECK(at_end());
    CHECK(calls() ==
          LR"(
ResultTable.get_NestedQuery 1
ResultTable.get_NestedQuery 2
Service.get_Application
Application.get_WindowService
WindowService.UnregisterForm ITesseraPrgFrm
)");
    text(1);
    CHECK(calls() == L"\nService.ShowMessage \"EOF\", 16, \"HQuery (Tessera)\"\n");
}
