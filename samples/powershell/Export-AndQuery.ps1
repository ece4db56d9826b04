# Exports a document of the sample project, saves the content document, reads it back and prints its
# cells; then walks a query. Every folder of samples does the same in its language.
#
#     powershell -ExecutionPolicy Bypass -File samples\powershell\Export-AndQuery.ps1 samples\plant.xml Kurzliste.content.xml
#
# Tessera.dll and KelosHostKit.dll have to be registered, in the bitness of the PowerShell that runs.
#
# NOT RUN by the project's tests: there is no PowerShell with COM where they run.
param(
    [Parameter(Mandatory)] [string] $Project,
    [Parameter(Mandatory)] [string] $ContentFile
)
Set-StrictMode -Version 2.0
$ErrorActionPreference = 'Stop'

$uccDefault = 0
$uccStateAbort = 3

# COM does not know PowerShell's current folder.
function Get-FullPath([string] $Path) {
    $ExecutionContext.SessionState.Path.GetUnresolvedProviderPathFromPSPath($Path)
}

# A failing member raises no error: it reports to the host and returns what it has.
function Stop-WithReport([string] $Sentence) {
    $errors = (New-Object -ComObject Kelos.Service).Errors
    $reports = for ($i = 1; $i -le $errors.Count; ++$i) { $errors.Item($i).Description }
    throw (@($Sentence) + @($reports) -join "`n")
}

# The document's own script, or, when it has none, the one that maps the rows of its mapping table.
function Export-Document($Kit, [string] $Name) {
    $runner = New-Object -ComObject Tessera.VexScript
    $document = $Kit.Document($Name)
    $runner.WorkSet = $Kit.WorkSet
    $runner.Document = $document
    $contents = $runner.Execute($runner.GetVexScript($document, $false))
    if ($null -eq $contents) { Stop-WithReport "There is no content document of $Name" }
    $contents
}

function New-Document {
    $document = (New-Object -ComObject Tessera.Tessera).CreateDOMDocument()
    $document.async = $false
    $document
}

# Without the declaration, which says UCS-2, the parser saves the document as UTF-8.
function Save-Contents($Contents, [string] $Path) {
    $copy = New-Document
    [void] $copy.loadXML($Contents.documentElement.xml)
    $copy.save($Path)
}

# Values of objects are items, the first one is the current value; fixed values have no items.
function Get-DisplayedValue($Content) {
    if ($Content.ValueItems.Count -gt 0) {
        $Content.ValueItems.Item(1).DisplayValue($uccDefault)
    } else {
        $Content.Value.KelosValue($uccDefault)
    }
}

function Show-Cells([string] $Path) {
    $contents = New-Document
    if (-not $contents.load($Path)) { throw "$Path cannot be read: $($contents.parseError.reason)" }
    $nodes = $contents.selectNodes('Contents/Content')
    for ($i = 0; $i -lt $nodes.length; ++$i) {
        $content = New-Object -ComObject Tessera.Tessera
        $content.XMLNode($null) = $nodes.item($i)
        '{0}  {1}  {2} = {3}' -f $content.Document.Pointer, $content.KelosObject.PathFullName,
            $content.Property.GetName, (Get-DisplayedValue $content)
    }
}

# The cursor shows the host's progress form while it walks; its button ends the walk.
function Show-Rows($Kit, [string] $Name) {
    $query = $Kit.Query($Name)
    if ($null -eq $query) { throw "There is no query $Name" }
    $query.Run()
    $cursor = New-Object -ComObject Tessera.HQuery
    $cursor.WorkSet = $Kit.WorkSet
    $cursor.Query = $query
    $cursor.MoveFirst()
    while (-not $cursor.EOF) {
        $cells = for ($i = 1; $i -le $cursor.ColumnCount; ++$i) {
            '{0}: {1}' -f $cursor.ColumnItem($i).Heading, $cursor.CellText($i, $uccDefault)
        }
        $cells -join ', '
        $cursor.MoveNext()
        if ($cursor.State -eq $uccStateAbort) { break }
    }
}

$kit = New-Object -ComObject Kelos.HostKit
$path = Get-FullPath $ContentFile
try {
    [void] $kit.Open((Get-FullPath $Project))
    Save-Contents (Export-Document $kit 'Kurzliste') $path
    Show-Cells $path
    Show-Rows $kit 'Pumpenliste'
} finally {
    # The objects go with the collector: in the apartment that made them, before the process ends.
    Remove-Variable kit
    [GC]::Collect()
    [GC]::WaitForPendingFinalizers()
}
