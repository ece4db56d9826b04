' A late-bound client of the component, as engineers write them. Every check that fails is printed;
' the exit code is the number of failed checks.
Option Explicit
Dim Failures, Service, Kit, WS
Failures = 0
Set Service = CreateObject("Kelos.Service")
Service.Clear
Set Kit = CreateObject("Kelos.HostKit")
Set WS = Kit.Open(WScript.Arguments(0))

Sub Check(What, Actual, Expected)
    If CStr(Actual) <> CStr(Expected) Then
        WScript.Echo What & ": is '" & Actual & "', should be '" & Expected & "'"
        Failures = Failures + 1
    End If
End Sub

' Records, indexed properties, let and set, omitted arguments.
Dim Content, Items, Item
Set Content = CreateObject("Tessera.Tessera")
Content.WorkSet = WS
Set Content.WorkSet = WS
Content.Document.Pointer = "Blatt!B7"
Content.Property.GetName = "Label"
Check "paired name", Content.Property.SetName, "Label"
Content.Property.PhysUnit = 12
Check "unit as text", Content.Property.PhysUnit, "12"
Content.Value.LCID = "1031"
Check "coerced locale", Content.Value.LCID, 1031
Content.Value.KelosValue(1) = "a" & vbCrLf & "b"
Check "office form", Content.Value.KelosValue(0), "a" & vbLf & "b"
Set Content.KelosObject.Object = Kit.Object("Anlage|Pumpe")
Check "path", Content.KelosObject.PathFullName, "Anlage|Pumpe"
Set Items = Content.ValueItems
Check "item added", Items.AddNew(1, "eins").LCID, 0
Set Item = CreateObject("Tessera.ValueItem")
Set Item.Value(0) = WS
Check "position", Items.Add(Item), 2
Check "front", Items.Add(Item, 0), 1
Check "removed", TypeName(Items.Remove("2")) <> "Nothing", True
Check "count", Items.Count, 2
Set Item.Value(0) = Nothing
Item.Value(0) = "x"
Check "no item", Items.Item(7) Is Nothing, True
Check "element", Content.XMLNode(Nothing).baseName, "Content"

' The global object and the runner.
Dim Globals, Runner, Result
Set Globals = CreateObject("Tessera.SCGlobal")
Check "letters", Globals.ExcelABC(703), "AAA"
Check "no project", Globals.Project Is Nothing, True
Globals.Content "", Kit.Object("Anlage|Pumpe"), "Name", "", "", ""
Set Runner = CreateObject("Tessera.VexScript.1")
Runner.WorkSet = WS
Set Runner.Document = Kit.Document("Datenblatt")
Check "nothing to run", Runner.Execute() Is Nothing, True
Set Result = Runner.Execute(Runner.GetVexScript(Kit.Document("Datenblatt")))
Check "rows", Result.documentElement.selectNodes("Content").length, 4
Check "options", Result.documentElement.lastChild.baseName, "Options"

' A variable receives a row's text whatever it held before; nothing may be given as Null or Empty.
Dim Rows, Query, Text, Held
Set Query = Kit.Query("Pumpen")
Query.Run
Set Rows = CreateObject("Tessera.QContent")
Rows.HQuery.WorkSet = Null
Set Rows.HQuery.Query = Query
Rows.HQuery.MoveFirst
For Each Held In Array("", "old", 12, Empty)
    Text = Held
    Check "row written", Rows.XMLRowAsString(Text, False), True
    Check "row text", Left(Text, 5), "<?xml"
Next
Text = "old"
Rows.HQuery.Query = Empty
Check "no row written", Rows.XMLRowAsString(Text, False), False
Check "emptied text", Text, ""
Check "no document", Rows.DOMDocAsString(Null), ""

' Options have no members, and arguments that cannot be coerced are the platform's errors.
Dim Options
Set Options = CreateObject("Tessera.XMLOptions")
On Error Resume Next
Content.Value.LCID = "no number"
Check "type mismatch", Err.Number <> 0, True
Err.Clear
Set Content.KelosObject.Object = Items
Check "foreign object", Err.Number <> 0, True
Err.Clear
Options.CreateDOMDocument
Check "internal member", Err.Number <> 0, True
Err.Clear
On Error GoTo 0

' Every collection gives For Each what it gives by position.
Sub CheckWalk(What, List)
    Dim Walked, Entry
    Walked = 0
    For Each Entry In List
        Walked = Walked + 1
    Next
    Check What & " walked", Walked, List.Count
    Check What & " are some", Walked > 0, True
End Sub
Dim Pump, Trace
Set Pump = Kit.Object("Anlage|Pumpe")
CheckWalk "value items", Items
CheckWalk "documents", Kit.Documents
CheckWalk "projects", WS.Projects
CheckWalk "languages", WS.CurrentProject.Languages
CheckWalk "children", Pump.Parent.Children
CheckWalk "attributes", Pump.Attributes
CheckWalk "columns", Query.ResultTable.Columns
CheckWalk "traces", Service.Traces
For Each Trace In Service.Traces
    Check "trace", Trace, Service.Traces(1)
    Exit For
Next
For Each Held In Pump.Attributes
    Check "attribute", Held.Name, Pump.Attributes(1).Name
    Exit For
Next

Check "reports", Service.Errors.Count, 0
Check "messages", Service.Messages.Count, 0
If Failures = 0 Then WScript.Echo "all checks hold"
WScript.Quit Failures
