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
    CHECK(calls() ==
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
new Kelos.Service
Service.TranslateText "~018a0 Abfrage lesen..."
Service.get_Application
Service.Trace "ZUL: Form_Initialize"
Application.get_CurrentWorkset
Service.Trace "ZUL: getting the undo state"
WorksetObject.get_CurrentUndoState
WorksetObject.get_OuterUndoState
new Kelos.StandardControls
StandardControls.CreateLabel 10, "run"
StandardControls.CreateProgressBar
StandardControls.CreateButton 10, "Abort"
Button.putref_Events IKelosButtonEvents
Service.get_UIService
UIService.get_FormSetting
FormSetting.Apply ITesseraPrgFrm
Service.TranslateText "~00811 Bitte warten..."
Label.put_Caption "Bitte warten..."
Service.TranslateText "~001d4 Abbrechen"
Button.put_Caption "Abbrechen"
Service.get_Application
Application.get_WindowService
WindowService.RegisterForm ITesseraPrgFrm, 0, Nothing, ITesseraProgress
Service.get_ControlWrapper IKelosButton
ControlWrapper.Activate
WorksetObject.putref_CurrentUndoState IHostKitUndoState
WorksetObject.putref_OuterUndoState IHostKitUndoState
Service.Trace "ZUL: CurrentUndoState was set back succesfull"
ProgressBar.get_Bar
Bar.put_Value 0
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
    cursor->MoveNext();
    cursor->MoveNext();
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
