' Walks over a query of a project and writes its rows, one line each, the columns parted by tabs.
'
'     cscript //nologo query_walk.vbs PROJECT QUERY
'
' Rows of nested queries follow the row that they are nested in; the columns of all levels have one
' numbering. Tessera.dll and KelosHostKit.dll have to be registered (regsvr32).
Option Explicit

Const uccDefault = 0
Const uccStateAbort = 3

Dim kit, query, cursor
Set kit = CreateObject("Kelos.HostKit")
kit.Open WScript.Arguments(0)
Set query = kit.Query(WScript.Arguments(1))
If query Is Nothing Then
    WScript.Echo "There is no query " & WScript.Arguments(1)
    WScript.Quit 1
End If
query.Run

Set cursor = CreateObject("Tessera.HQuery")
Set cursor.WorkSet = kit.WorkSet
Set cursor.Query = query
WScript.Echo Headings()
cursor.MoveFirst
Do Until cursor.EOF
    WScript.Echo Row()
    cursor.MoveNext
    ' The abort button leaves the cursor on its row.
    If cursor.State = uccStateAbort Then Exit Do
Loop

Function Headings()
    Dim i
    For i = 1 To cursor.ColumnCount
        If i > 1 Then Headings = Headings & vbTab
        Headings = Headings & cursor.ColumnItem(i).Heading
    Next
End Function

Function Row()
    Dim i
    For i = 1 To cursor.ColumnCount
        If i > 1 Then Row = Row & vbTab
        Row = Row & cursor.CellText(i, uccDefault)
    Next
End Function
