// Exports a document of the sample project, saves the content document, reads it back and prints its
// cells; then walks a query. Every folder of samples does the same in its language.
//
//     dotnet run --project samples\csharp -- samples\plant.xml Kurzliste.content.xml
//
// Tessera.dll and KelosHostKit.dll have to be registered in the bitness that the project file names.
//
// NOT RUN by the project's tests: there is no .NET with COM where they run. It was only compiled.
using System;
using System.Collections.Generic;
using System.IO;

static class ExportAndQuery
{
    const int UccDefault = 0;
    const int UccStateAbort = 3;

    // The classes live in single-threaded apartments: without the attribute every call would go
    // through a proxy to a thread of its own.
    [STAThread]
    static int Main(string[] arguments)
    {
        if (arguments.Length != 2)
        {
            Console.Error.WriteLine("usage: ExportAndQuery PROJECT CONTENT_FILE");
            return 2;
        }
        try
        {
            Run(Path.GetFullPath(arguments[0]), Path.GetFullPath(arguments[1]));
            return 0;
        }
        catch (Exception exception)
        {
            Console.Error.WriteLine(exception.Message);
            return 1;
        }
        finally
        {
            // Here nothing refers to the objects any more: they are released in their apartment,
            // before it ends.
            GC.Collect();
            GC.WaitForPendingFinalizers();
        }
    }

    static void Run(string project, string contentFile)
    {
        dynamic kit = Create("Kelos.HostKit");
        kit.Open(project);
        SaveContents(ExportDocument(kit, "Kurzliste"), contentFile);
        PrintCells(contentFile);
        PrintRows(kit, "Pumpenliste");
    }

    static dynamic Create(string programName)
    {
        return Activator.CreateInstance(Type.GetTypeFromProgID(programName, true));
    }

    // The document's own script, or, when it has none, the one that maps the rows of its mapping table.
    static dynamic ExportDocument(dynamic kit, string name)
    {
        dynamic runner = Create("Tessera.VexScript");
        dynamic document = kit.Document(name);
        runner.WorkSet = kit.WorkSet;
        runner.Document = document;
        dynamic contents = runner.Execute(runner.GetVexScript(document));
        if (contents == null)
            throw Failure("There is no content document of " + name);
        return contents;
    }

    // A failing member raises no error: it reports to the host and returns what it has.
    static Exception Failure(string sentence)
    {
        dynamic errors = Create("Kelos.Service").Errors;
        for (int i = 1; i <= (int)errors.Count; ++i)
            sentence += Environment.NewLine + errors.Item(i).Description;
        return new InvalidOperationException(sentence);
    }

    static dynamic EmptyDocument()
    {
        dynamic document = Create("Tessera.Tessera").CreateDOMDocument();
        document.async = false;
        return document;
    }

    // Without the declaration, which says UCS-2, the parser saves the document as UTF-8.
    static void SaveContents(dynamic contents, string path)
    {
        dynamic copy = EmptyDocument();
        copy.loadXML((string)contents.documentElement.xml);
        copy.save(path);
    }

    static void PrintCells(string path)
    {
        dynamic contents = EmptyDocument();
        if (!(bool)contents.load(path))
            throw new InvalidDataException(path + " cannot be read: " + contents.parseError.reason);
        dynamic nodes = contents.selectNodes("Contents/Content");
        for (int i = 0; i < (int)nodes.length; ++i)
        {
            dynamic content = Create("Tessera.Tessera");
            content.XMLNode[null] = nodes.item(i);
            Console.WriteLine("{0}  {1}  {2} = {3}", (string)content.Document.Pointer,
                (string)content.KelosObject.PathFullName, (string)content.Property.GetName,
                (object)DisplayedValue(content));
        }
    }

    // Values of objects are items, the first one is the current value; fixed values have no items.
    static dynamic DisplayedValue(dynamic content)
    {
        return (int)content.ValueItems.Count > 0
            ? content.ValueItems.Item(1).DisplayValue(UccDefault)
            : content.Value.KelosValue(UccDefault);
    }

    // The cursor shows the host's progress form while it walks; its button ends the walk.
    static void PrintRows(dynamic kit, string name)
    {
        dynamic query = kit.Query(name);
        if (query == null)
            throw new InvalidOperationException("There is no query " + name);
        query.Run();
        dynamic cursor = Create("Tessera.HQuery");
        cursor.WorkSet = kit.WorkSet;
        cursor.Query = query;
        cursor.MoveFirst();
        while (!(bool)cursor.EOF)
        {
            var cells = new List<string>();
            for (short i = 1; i <= (short)cursor.ColumnCount; ++i)
                cells.Add(cursor.ColumnItem(i).Heading + ": " + cursor.CellText(i, UccDefault));
            Console.WriteLine(string.Join(", ", cells));
            cursor.MoveNext();
            if ((int)cursor.State == UccStateAbort)
                break;
        }
    }
}
