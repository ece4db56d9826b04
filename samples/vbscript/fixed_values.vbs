' Writes two fixed values of an open project into a content document and prints where they belong.
' Run it where the component and the host kit are registered: cscript fixed_values.vbs plant.xml
Set Kit = CreateObject("Kelos.HostKit")
Set Runner = CreateObject("Tessera.VexScript")
Set Runner.WorkSet = Kit.Open(WScript.Arguments(0))
Set Documents = Kit.Documents
Set Runner.Document = Documents.Item(1)
Set Result = Runner.Execute("Sub DoVex()" & vbCrLf & "ContentFix ""Cover!B2"", Project.Name" & vbCrLf & _
    "ContentFix ""Cover!B3"", ExcelABC(28)" & vbCrLf & "End Sub")
For Each Node In Result.selectNodes("Contents/Content")
    Set Content = CreateObject("Tessera.Tessera")
    Set Content.XMLNode(Nothing) = Node
    WScript.Echo Content.Document.Pointer & ": " & Content.Value.KelosValue(1)
Next
