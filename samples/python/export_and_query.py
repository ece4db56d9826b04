"""Exports a document of the sample project, saves the content document, reads it back and prints its
cells; then walks a query. Every folder of samples does the same in its language.

    pip install pywin32
    python samples\\python\\export_and_query.py samples\\plant.xml Kurzliste.content.xml

Tessera.dll and KelosHostKit.dll have to be registered, in the bitness of the Python that runs.

NOT RUN by the project's tests: there is no Python with win32com where they run.
"""

import os
import sys

# EnsureDispatch makes Python classes of the type library, once. It is needed here: only they have a
# way to set a property that takes an argument (SetXMLNode).
from win32com.client.gencache import EnsureDispatch

UCC_DEFAULT = 0
UCC_STATE_ABORT = 3


def failure(sentence):
    """A failing member raises no error: it reports to the host and returns what it has."""
    errors = EnsureDispatch("Kelos.Service").Errors
    reports = [errors.Item(i).Description for i in range(1, errors.Count + 1)]
    return RuntimeError("\n".join([sentence, *reports]))


def export_document(kit, name):
    """Runs the document's own script, or the one that maps the rows of its mapping table."""
    runner = EnsureDispatch("Tessera.VexScript")
    document = kit.Document(name)
    runner.WorkSet = kit.WorkSet
    runner.Document = document
    contents = runner.Execute(runner.GetVexScript(document))
    if contents is None:
        raise failure(f"There is no content document of {name}")
    return contents


def empty_document():
    document = EnsureDispatch("Tessera.Tessera").CreateDOMDocument()
    # "async" is a word of Python's own.
    setattr(document, "async", False)
    return document


def save_contents(contents, path):
    """Saves as UTF-8: without the declaration, which says UCS-2."""
    copy = empty_document()
    copy.loadXML(contents.documentElement.xml)
    copy.save(path)


def displayed_value(content):
    """Values of objects are items, the first one is the current value; fixed values have none."""
    if content.ValueItems.Count > 0:
        return content.ValueItems.Item(1).DisplayValue(UCC_DEFAULT)
    return content.Value.KelosValue(UCC_DEFAULT)


def print_cells(path):
    contents = empty_document()
    if not contents.load(path):
        raise RuntimeError(f"{path} cannot be read: {contents.parseError.reason}")
    nodes = contents.selectNodes("Contents/Content")
    for i in range(nodes.length):
        content = EnsureDispatch("Tessera.Tessera")
        content.SetXMLNode(None, nodes.item(i))
        print(f"{content.Document.Pointer}  {content.KelosObject.PathFullName}  "
              f"{content.Property.GetName} = {displayed_value(content)}")


def print_rows(kit, name):
    """Walks a query. The cursor shows the host's progress form; its button ends the walk."""
    query = kit.Query(name)
    if query is None:
        raise RuntimeError(f"There is no query {name}")
    query.Run()
    cursor = EnsureDispatch("Tessera.HQuery")
    cursor.WorkSet = kit.WorkSet
    cursor.Query = query
    cursor.MoveFirst()
    while not cursor.EOF:
        print(", ".join(f"{cursor.ColumnItem(i).Heading}: {cursor.CellText(i, UCC_DEFAULT)}"
                        for i in range(1, cursor.ColumnCount + 1)))
        cursor.MoveNext()
        if cursor.State == UCC_STATE_ABORT:
            break


def main(project, content_file):
    kit = EnsureDispatch("Kelos.HostKit")
    kit.Open(os.path.abspath(project))
    content_file = os.path.abspath(content_file)
    save_contents(export_document(kit, "Kurzliste"), content_file)
    print_cells(content_file)
    print_rows(kit, "Pumpenliste")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("usage: export_and_query.py PROJECT CONTENT_FILE")
    main(*sys.argv[1:])
