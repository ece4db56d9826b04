' The examples of docs/reference: one for every class, made from here. They run as one script; what a
' line prints stands behind it.
' == *
Set Kit = CreateObject("Kelos.HostKit")
Set WorkSet = Kit.Open("samples\plant.xml")
' == Tessera
Set Content = CreateObject("Tessera.Tessera")
Content.Document.Pointer = "Blatt!B7"
WScript.Echo Content.XMLNode(Nothing).nodeName  ' Content
' == KelosObject
Set Record = CreateObject("Tessera.Tessera").KelosObject
Set Record.Object = Kit.Object("A10|U12|P101A")
WScript.Echo Record.PathFullName  ' A10|U12|P101A
' == Property
Set Record = CreateObject("Tessera.Tessera").Property
Record.GetName = "Description"
WScript.Echo Record.SetName  ' Description
' == Value
Set Record = CreateObject("Tessera.Tessera").Value
Record.KelosValue(1) = "a" & vbCrLf & "b"
WScript.Echo Len(Record.KelosValue(2))  ' 3
' == Document
Set Record = CreateObject("Tessera.Tessera").Document
Record.Pointer = "Blatt!B7"
WScript.Echo Record.Pointer  ' Blatt!B7
' == ValueItems
Set Items = CreateObject("Tessera.ValueItems")
Items.AddNew 1, "on"
For Each Item In Items : WScript.Echo Item.DisplayValue(0) : Next  ' on
' == ValueItem
Set Item = CreateObject("Tessera.ValueItem")
Item.DisplayValue(1) = "in operation"
WScript.Echo Item.DisplayValue(1)  ' in operation
' == SCGlobal
Set Globals = CreateObject("Tessera.SCGlobal")
WScript.Echo Globals.ExcelABC(703)  ' AAA
WScript.Echo CStr(Globals.Project Is Nothing)  ' True
' == VexScript
Set Runner = CreateObject("Tessera.VexScript")
Set Runner.Document = Kit.Document("Anlagenliste")
WScript.Echo Runner.Execute(Runner.GetVexScript(Runner.Document)).documentElement.nodeName  ' Contents
' == HQuery
Set Query = Kit.Query("Pumpenliste") : Query.Run
Set Cursor = CreateObject("Tessera.HQuery") : Set Cursor.Query = Query
WScript.Echo CStr(Cursor.ColumnCount > 0 And Not Cursor.EOF)  ' True
' == QContent
Set Query = Kit.Query("Pumpenliste") : Query.Run
Set Rows = CreateObject("Tessera.QContent") : Set Rows.HQuery.Query = Query
WScript.Echo Rows.XMLRow.documentElement.nodeName  ' Row
' == GFunctions
Set Functions = CreateObject("Tessera.GFunctions")
WScript.Echo Functions.UUEncode("Cat")  ' #0V%T
WScript.Echo Functions.Decode(Functions.Encode("Cat"))  ' Cat
' == Progress
Set Progress = CreateObject("Tessera.Progress")
Progress.Percentage = 0
WScript.Echo Progress.State : Progress.Percentage = 100  ' 2
' == OptionMappingTable
WScript.Echo CStr(TypeName(CreateObject("Tessera.OptionMappingTable")) <> "")  ' True
' == SpecOptToCollConverter
WScript.Echo CStr(TypeName(CreateObject("Tessera.SpecOptToCollConverter")) <> "")  ' True
' == XMLOptions
WScript.Echo CStr(TypeName(CreateObject("Tessera.XMLOptions")) <> "")  ' True
' == HostKit
Set Runner = CreateObject("Tessera.VexScript")
Set Runner.WorkSet = Kit.WorkSet
WScript.Echo Kit.Document("Anlagenliste").Name  ' Anlagenliste
' == Service
Set Service = CreateObject("Kelos.Service")
Service.ShowMessage "Done", 64, "Export"
WScript.Echo Service.Messages.Item(Service.Messages.Count).Title  ' Export
' == ScriptEngine
Set Engine = CreateObject("KelosScript.Engine")
Engine.AddModule "Sums", "Function Sum(A, B) : Sum = A + B : End Function", Nothing, False
WScript.Echo Engine.Evaluate("Sum(1, 2)", "Sums")  ' 3
' == QColumnDef
Set Column = CreateObject("KelosQuery.QColumnDef") : Column.InitNew 0 : Column.InitEvaluator 0
Column.PropertyConstant = 2
Set Values = Column.Evaluator.Evaluate(Kit.Object("A10|U12|P101A"))
WScript.Echo Values(1).Value  ' P101A
' == PropertyConstant
Set Constant = CreateObject("KelosQuery.PropertyConstant")
Constant.Constant = 32
WScript.Echo Constant.Name  ' Value
' == ByteCompressor
Set Encoder = CreateObject("Kelos.ByteTextEncoder")
Packed = CreateObject("Kelos.ByteCompressor").Compress(Encoder.DecodeText("QUFBQQ=="))
WScript.Echo Encoder.EncodeBytes(CreateObject("Kelos.ByteCompressor").Expand(Packed))  ' QUFBQQ==
' == ByteTextEncoder
Set Encoder = CreateObject("Kelos.ByteTextEncoder")
Bytes = Encoder.DecodeText("QUFB")
WScript.Echo Encoder.EncodeBytes(Bytes)  ' QUFB
' == StandardControls
Set Box = CreateObject("Kelos.StandardControls")
On Error Resume Next : Box.CreateLabel 0, 0, 0, 80, 20, 10, "run"
WScript.Echo CStr(Err.Number <> 0) : On Error GoTo 0  ' True
' == WpfBridge
Set Bridge = CreateObject("Kelos.WpfBridge")
Bridge.Move 10, 20, 300, 60
WScript.Echo Bridge.Width  ' 300
' == TextBox
Set Editor = CreateObject("Kelos.TextBox")
Editor.Text = "Sub DoVex()" : Editor.SelStart = 4 : Editor.SelLength = 5
WScript.Echo Mid(Editor.Text, Editor.SelStart + 1, Editor.SelLength)  ' DoVex
' == ScriptControl
Set Editor = CreateObject("Kelos.ScriptControl").Object
Editor.Text = "Sub DoVex()" & vbCrLf & "End Sub"
WScript.Echo Editor.LinePosition(2)  ' 12
' == HostKitWorkset
For Each Project In WorkSet.Projects
    WScript.Echo Project.SystemUID  ' PRJ-0815
Next
' == HostKitProject
Set Project = WorkSet.CurrentProject
Project.CurrentLanguageNumber = 2
WScript.Echo Project.CurrentLanguage.LCID : Project.CurrentLanguageNumber = 1  ' 1033
' == HostKitObject
Set Pump = Kit.Object("A10|U12|P101A")
WScript.Echo Pump.Parent.Name  ' U12
WScript.Echo CStr(Pump.AttributeValue("Process.Flow") > 0)  ' True
' == HostKitMappingObject
Set Table = Kit.Document("Anlagenliste").Objects.Item(2).XObj
WScript.Echo CStr(Table.GetCount > 0)  ' True
WScript.Echo CStr(Table.Target(1) <> "")  ' True
' == HostKitDocument
Set Document = Kit.Document("Anlagenliste")
WScript.Echo Document.Owner.Name  ' A10
WScript.Echo Document.TypeText & Document.SubTypeText  ' L2
' == HostKitAttribute
Set Flow = Kit.Object("A10|U12|P101A").AttributeByFullName("Process.Flow")
Flow.Value(1) = 13
WScript.Echo Flow.Value(1) & " of " & Flow.ValueCount  ' 13 of 1
' == HostKitLanguages
For Each Language In WorkSet.CurrentProject.Languages
    If Language.LCID = 1033 Then WScript.Echo Language.Name  ' English
Next
' == HostKitUnitGroup
Set Flow = Kit.Object("A10|U12|P101A").AttributeByFullName("Process.Flow")
WScript.Echo CStr(Flow.Unit.Group.Count > 1)  ' True
' == HostKitAttributes
For Each Attribute In Kit.Object("A10|U12|P101A").Attributes
    If Attribute.FullName = "Process.Flow" Then WScript.Echo Attribute.Name  ' Flow
Next
' == HostKitObjects
For Each Document In Kit.Documents
    If Document.SystemUID = "DOC-3" Then WScript.Echo Document.Name  ' Kurzliste
Next
' == HostKitNamedEntries
Set Entries = Kit.Document("Anlagenliste").NamedEntries
WScript.Echo CStr(Entries("@Nobody") Is Nothing)  ' True
' == HostKitValueList
Set Column = CreateObject("KelosQuery.QColumnDef") : Column.InitNew 0 : Column.InitEvaluator 0
Column.PropertyConstant = 2
Set Values = Column.Evaluator.Evaluate(Kit.Object("A10|U12|P101A"))
For Each Entry In Values : WScript.Echo Entry.DisplayValue : Next  ' P101A
' == HostKitQColumnDefs
Set Query = Kit.Query("Pumpenliste") : Query.Run
For Each Column In Query.ResultTable.Columns : Last = Column.Name : Next
WScript.Echo CStr(Last <> "")  ' True
' == HostKitProjectLanguage
Set Language = WorkSet.CurrentProject.CurrentLanguage
WScript.Echo Language.Name & " " & Language.LCID  ' Deutsch 1031
' == HostKitUser
WScript.Echo WorkSet.CurrentUser.Login  ' planer
' == HostKitUnit
Set Unit = Kit.Object("A10|U12|P101A").AttributeByFullName("Process.Flow").Unit
WScript.Echo Left(Unit.UnitText, 5)  ' FLOW.
' == HostKitNamedEntry
For Each Entry In Kit.Document("Anlagenliste").NamedEntries
    WScript.Echo Entry.Name & ": " & Entry.Object.Name  ' @ReportObject: U12
Next
' == HostKitValueEntry
Set Column = CreateObject("KelosQuery.QColumnDef") : Column.InitNew 0 : Column.InitEvaluator 0
Column.PropertyConstant = 2
Set Values = Column.Evaluator.Evaluate(Kit.Object("A10|U12|P101A"))
WScript.Echo Values(1).Value  ' P101A
' == HostKitValueEvaluator
Set Column = CreateObject("KelosQuery.QColumnDef") : Column.InitNew 0 : Column.InitEvaluator 0
Column.PropertyConstant = 1
Set Evaluator = Column.Evaluator
WScript.Echo Evaluator.Evaluate(Kit.Object("A10|U12|P101A")).Count  ' 1
' == HostKitCell
Set Query = Kit.Query("Pumpenliste") : Query.Run
Set Cell = Query.ResultTable.Cell(1, 1)
WScript.Echo CStr(Cell.Text <> "")  ' True
' == HostKitResultTable
Set Query = Kit.Query("Pumpenliste") : Query.Run
Set Table = Query.ResultTable
WScript.Echo CStr(Table.TotalRowCount >= Table.RowCount)  ' True
' == HostKitQuery
Set Query = Kit.Query("Pumpenliste")
Query.Run
WScript.Echo Query.Name  ' Pumpenliste
' == HostKitUndoState
WScript.Echo CStr(WorkSet.CurrentUndoState.Name <> "")  ' True
' == HostKitQueryContainer
Set Container = Kit.Document("Abfrage Pumpen").QueryContainer
WScript.Echo Container.TopQuery.Name  ' Pumpenliste
' == HostKitMessage
Set Service = CreateObject("Kelos.Service") : Service.ShowMessage "Done", 64, "Export"
Set Message = Service.Messages.Item(Service.Messages.Count)
WScript.Echo Message.Text & " " & Message.Style  ' Done 64
' == HostKitMessages
Set Service = CreateObject("Kelos.Service")
Service.Clear
WScript.Echo Service.Messages.Count  ' 0
' == HostKitError
Set Service = CreateObject("Kelos.Service") : Service.ReportError 5, "Failed", "Class", "Member"
Set Report = Service.Errors.Item(Service.Errors.Count)
WScript.Echo Report.Source & ", " & Report.Label  ' Class, Member
' == HostKitErrors
Set Service = CreateObject("Kelos.Service") : Service.Clear
Service.ReportError 5, "Failed", "Class", "Member"
For Each Report In Service.Errors : WScript.Echo Report.Description : Next  ' Failed
' == HostKitTraces
Set Service = CreateObject("Kelos.Service") : Service.Clear
Service.Trace "begun"
For Each Line In Service.Traces : WScript.Echo Line : Next  ' begun
' == HostKitScriptError
Set Engine = CreateObject("KelosScript.Engine")
On Error Resume Next : Engine.AddModule "Bad", "X = 1 / 0", Nothing, False : On Error GoTo 0
WScript.Echo CreateObject("Kelos.Service").ScriptErrors.Item(1).LineNr  ' 1
' == HostKitScriptErrors
Set Service = CreateObject("Kelos.Service") : Service.Clear
Set Engine = CreateObject("KelosScript.Engine")
On Error Resume Next : Engine.AddModule "Bad", "X = 1 / 0", Nothing, False : On Error GoTo 0
For Each Failure In Service.ScriptErrors : WScript.Echo Failure.Item : Next  ' Bad
' == HostKitForm
Set Progress = CreateObject("Tessera.Progress") : Progress.StartProcess
Set Form = CreateObject("Kelos.Service").Application.WindowService.Forms.Item(1)
WScript.Echo Form.Number : Progress.StopProcess  ' 0
' == HostKitForms
Set Forms = CreateObject("Kelos.Service").Application.WindowService.Forms : Before = Forms.Count
Set Progress = CreateObject("Tessera.Progress") : Progress.StartProcess
WScript.Echo Forms.Count - Before : Progress.StopProcess  ' 1
' == HostKitWindowService
Set Windows = CreateObject("Kelos.Service").Application.WindowService
WScript.Echo CStr(Windows.RegisteredCount = Windows.UnregisteredCount)  ' True
' == HostKitUIService
Set Presentation = CreateObject("Kelos.Service").UIService
WScript.Echo Presentation.ConnectedCount  ' 0
' == HostKitMessageBox
Set Engine = CreateObject("KelosScript.Engine")
Engine.AddModule "Asks", "", Nothing, False
WScript.Echo Engine.Evaluate("MsgBox(""Go on?"")", "Asks")  ' 1
