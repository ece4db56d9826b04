' Exports a document of the sample project, saves the content document, reads it back and prints its
' cells; then walks a query. Every folder of samples\ does the same in its language.
'
'     cscript //nologo samples\vbscript\export_and_query.vbs samples\plant.xml Kurzliste.content.xml
'
' Tessera.dll and KelosHostKit.dll have to be registered.
Option Explicit

Const uccDefault = 0
Const uccStateAbort = 3

Dim kit
Set kit = CreateObject("Kelos.HostKit")
kit.Open WScript.Arguments(0)
SaveContents ExportDocument("Kurzliste"), WScript.Arguments(1)
PrintCells WScript.Arguments(1)
PrintRows "Pumpenliste"

' The document's own script, or, when it has none, the one that maps the rows of its mapping table.
Function ExportDocument(name)
    Dim runner
    Set runner = CreateObject("Tessera.VexScript")
    Set runner.WorkSet = kit.WorkSet
    Set runner.Document = kit.Document(name)
    Set ExportDocument = runner.Execute(runner.GetVexScript(runner.Document))
    If ExportDocument Is Nothing Then Fail "There is no content document of " & name
End Function

' A failing member raises no error: it reports to the host and returns what it has.
Sub Fail(sentence)
    Dim service, i
    WScript.Echo sentence
    Set service = CreateObject("Kelos.Service")
    For i = 1 To service.Errors.Count
        WScript.Echo service.Errors.Item(i).Description
    Next
    WScript.Quit 1
End Sub

' Without the declaration, which says UCS-2, the parser saves the document as UTF-8. CStr makes a value
' of the path: not every parser looks into a variable.
Sub SaveContents(contents, path)
    Dim copy
    Set copy = CreateObject("Tessera.Tessera").CreateDOMDocument()
    copy.loadXML contents.documentElement.xml
    copy.save CStr(path)
End Sub

Sub PrintCells(path)
    Dim contents, node, content
    Set contents = CreateObject("Tessera.Tessera").CreateDOMDocument()
    contents.async = False
    If Not contents.load(CStr(path)) Then Fail path & " cannot be read: " & contents.parseError.reason
    For Each node In contents.selectNodes("Contents/Content")
        Set content = CreateObject("Tessera.Tessera")
        Set content.XMLNode(Nothing) = node
        WScript.Echo content.Document.Pointer & "  " & content.KelosObject.PathFullName & "  " & _
            content.Property.GetName & " = " & DisplayedValue(content)
    Next
End Sub

' Values of objects are items, the first one is the current value; fixed values have no items.
Function DisplayedValue(content)
    If content.ValueItems.Count > 0 Then
        DisplayedValue = content.ValueItems.Item(1).DisplayValue(uccDefault)
    Else
        DisplayedValue = content.Value.KelosValue(uccDefault)
    End If
End Function

' The cursor shows the host's progress form while it walks; its button ends the walk.
Sub PrintRows(name)
    Dim query, cursor, row, i
    Set query = kit.Query(name)
    query.Run
    Set cursor = CreateObject("Tessera.HQuery")
    Set cursor.WorkSet = kit.WorkSet
    Set cursor.Query = query
    cursor.MoveFirst
    Do Until cursor.EOF
        row = ""
        For i = 1 To cursor.ColumnCount
            If i > 1 Then row = row & ", "
            row = row & cursor.ColumnItem(i).Heading & ": " & cursor.CellText(i, uccDefault)
        Next
        WScript.Echo row
        cursor.MoveNext
        If cursor.State = uccStateAbort Then Exit Do
    Loop
End Sub
