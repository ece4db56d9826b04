' A mapping script: one line for every pump of the plant, its values in the units of the sheet.
'
'     tessera export plant.xml --document Pumpendatenblatt --script mapping_pumps.vbs
'
' Content maps a property of an object to a cell, ContentFix a value that is no object's.
Dim Line

Sub DoVex()
    ContentFix "Pumpen!A1", "Pumpen – " & Project.Description
    ContentFix "Pumpen!A2", "Kennzeichen"
    ContentFix "Pumpen!B2", "Benennung"
    ContentFix "Pumpen!C2", "Förderstrom in l/min"
    ContentFix "Pumpen!D2", "Förderhöhe in m"
    ContentFix "Pumpen!E2", "Betriebszustand"
    Line = 2
    MapBelow Project
End Sub

Sub MapBelow(Parent)
    Set Children = Parent.Children
    For I = 1 To Children.Count
        Set Child = Children.Item(I)
        If Child.SystemTypeName = "pump" Then MapPump Child
        MapBelow Child
    Next
End Sub

Sub MapPump(Pump)
    Line = Line + 1
    Content "Pumpen!A" & Line, Pump, "FullLabel", "", "", "O"
    Content "Pumpen!B" & Line, Pump, "Description", "", "", "IO"
    Content "Pumpen!C" & Line, Pump.AttributeByFullName("Process.Flow"), "Value", "", "l/min", "IO", True
    Content "Pumpen!D" & Line, Pump.AttributeByFullName("Process.Head"), "Value", "", "m", "IO", True
    Content "Pumpen!E" & Line, Pump.AttributeByFullName("Operation.State"), "DisplayValue", "", "", "IO"
End Sub
