// Exports a document of the sample project, saves the content document, reads it back and prints its
// cells; then walks a query. Every folder of samples\ does the same in its language.
//
//     cscript //nologo samples\jscript\export_and_query.js samples\plant.xml Kurzliste.content.xml
//
// Tessera.dll and KelosHostKit.dll have to be registered.
var uccDefault = 0;
var uccStateAbort = 3;

var kit = new ActiveXObject("Kelos.HostKit");
kit.Open(WScript.Arguments(0));
saveContents(exportDocument("Kurzliste"), WScript.Arguments(1));
printCells(WScript.Arguments(1));
printRows("Pumpenliste");

// The document's own script, or, when it has none, the one that maps the rows of its mapping table.
function exportDocument(name) {
    var runner = new ActiveXObject("Tessera.VexScript");
    runner.WorkSet = kit.WorkSet;
    runner.Document = kit.Document(name);
    var contents = runner.Execute(runner.GetVexScript(runner.Document));
    if (!contents)
        fail("There is no content document of " + name);
    return contents;
}

// A failing member raises no error: it reports to the host and returns what it has.
function fail(sentence) {
    WScript.Echo(sentence);
    var errors = new ActiveXObject("Kelos.Service").Errors;
    for (var i = 1; i <= errors.Count; ++i)
        WScript.Echo(errors.Item(i).Description);
    WScript.Quit(1);
}

// Without the declaration, which says UCS-2, the parser saves the document as UTF-8.
function saveContents(contents, path) {
    var copy = new ActiveXObject("Tessera.Tessera").CreateDOMDocument();
    copy.loadXML(contents.documentElement.xml);
    copy.save(path);
}

function printCells(path) {
    var contents = new ActiveXObject("Tessera.Tessera").CreateDOMDocument();
    contents.async = false;
    if (!contents.load(path))
        fail(path + " cannot be read: " + contents.parseError.reason);
    var nodes = contents.selectNodes("Contents/Content");
    for (var i = 0; i < nodes.length; ++i) {
        var content = new ActiveXObject("Tessera.Tessera");
        content.XMLNode(null) = nodes.item(i);
        WScript.Echo(content.Document.Pointer + "  " + content.KelosObject.PathFullName + "  " +
            content.Property.GetName + " = " + displayedValue(content));
    }
}

// Values of objects are items, the first one is the current value; fixed values have no items.
function displayedValue(content) {
    if (content.ValueItems.Count > 0)
        return content.ValueItems.Item(1).DisplayValue(uccDefault);
    return content.Value.KelosValue(uccDefault);
}

// The cursor shows the host's progress form while it walks; its button ends the walk.
function printRows(name) {
    var query = kit.Query(name);
    query.Run();
    var cursor = new ActiveXObject("Tessera.HQuery");
    cursor.WorkSet = kit.WorkSet;
    cursor.Query = query;
    cursor.MoveFirst();
    while (!cursor.EOF) {
        var cells = [];
        for (var i = 1; i <= cursor.ColumnCount; ++i)
            cells.push(cursor.ColumnItem(i).Heading + ": " + cursor.CellText(i, uccDefault));
        WScript.Echo(cells.join(", "));
        cursor.MoveNext();
        if (cursor.State == uccStateAbort)
            break;
    }
}
