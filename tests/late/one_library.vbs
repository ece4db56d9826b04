' A client of one registered DLL alone. Its members have parameters and results of the host
' contract's and the parser's types, which late-bound calls look up in the registered libraries.
Option Explicit
Dim Failures
Failures = 0

Sub Check(What, Actual, Expected)
    If CStr(Actual) <> CStr(Expected) Then
        WScript.Echo WScript.Arguments(0) & " alone: " & What & ": is '" & Actual & "', should be '" & Expected & "'"
        Failures = Failures + 1
    End If
End Sub

If WScript.Arguments(0) = "Tessera" Then
    Dim Items, Content, Root
    Set Items = CreateObject("Tessera.ValueItems")
    Items.Presentation = 2
    Check "the contract's enumeration", Items.Presentation, 2
    Set Content = CreateObject("Tessera.Tessera")
    Check "the contract's object", Content.WorkSet Is Nothing, True
    ' Wine's script host cannot create the parser's documents itself.
    Set Root = Content.CreateContentsRoot(Nothing)
    Check "the parser's node", Content.XMLNode(Root).parentNode.nodeName, "Contents"
Else
    Dim Kit
    Set Kit = CreateObject("Kelos.HostKit")
    Kit.Open WScript.Arguments(1)
    Check "the contract's object", Kit.Object("Anlage|Pumpe").PathFullName(Nothing), "Werk|Anlage|Pumpe"
End If
If Failures = 0 Then WScript.Echo "all checks hold"
WScript.Quit Failures
