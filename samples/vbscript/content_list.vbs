Set Kit = CreateObject("Kelos.HostKit")
Set Runner = CreateObject("Tessera.VexScript")
Set Runner.WorkSet = Kit.Open("samples\plant.xml")
Set Runner.Document = Kit.Document("Anlagenliste")
Set Result = Runner.Execute(Runner.GetVexScript(Runner.Document))
For Each Node In Result.selectNodes("Contents/Content")
    Set Content = CreateObject("Tessera.Tessera")
    Set Content.XMLNode(Nothing) = Node
    WScript.Echo Content.Document.Pointer & "  " & Content.Property.GetName
Next
