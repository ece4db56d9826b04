' A mapping script: descriptions of the areas in every language of the project, side by side, and
' the same pump list as a query gives it.
'
'     tessera export plant.xml --document Pumpendatenblatt --script mapping_languages.vbs
Sub DoVex()
    Set Languages = Project.Languages
    ContentFix "Bereiche!A1", "Bereich"
    For L = 1 To Languages.Count
        Set Language = Languages.Item(L)
        ContentFix "Bereiche!" & ExcelABC(L + 1) & "1", Language.Name
    Next

    Row = 1
    Set Areas = Project.Children
    For I = 1 To Areas.Count
        Set Area = Areas.Item(I)
        If Area.SystemTypeName = "area" Then
            Row = Row + 1
            Content "Bereiche!A" & Row, Area, "Label", "", "", "O"
            For L = 1 To Languages.Count
                Content "Bereiche!" & ExcelABC(L + 1) & Row, Area, "GetInternationalDescription", L, "", "IO"
            Next
        End If
    Next

    ' A query document fills a block of cells from the given one on.
    Set Pumps = Project.FindByPathFullName("Dokumente|Abfrage Pumpen")
    Content "Pumpen!A1", Pumps, "Name", "", "", "O"
End Sub
