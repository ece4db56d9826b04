"""tessera.exe as a user runs it, and content documents for it."""

import os
import pathlib
import subprocess
import tempfile
import unittest
import zipfile
from xml.sax.saxutils import quoteattr

import openpyxl
from lxml import etree

ROOT = pathlib.Path(os.environ["TESSERA_ROOT"])
SAMPLE = ROOT / "samples" / "plant.xml"
CONTENT_DOCUMENTS = etree.XMLSchema(file=ROOT / "docs" / "content-document.xsd")


class Workplace(unittest.TestCase):
    """A test in a folder of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.addCleanup(self.check_content_documents)

    def check_content_documents(self):
        """What was written and read here as content documents, also inside of workbooks, are such."""
        texts = {file.name: file.read_bytes() for file in self.folder.glob("*.xml")}
        for file in self.folder.glob("*.xlsx"):
            if zipfile.is_zipfile(file) and "customXml/item1.xml" in zipfile.ZipFile(file).namelist():
                texts[file.name] = self.part("customXml/item1.xml", file.name)
        for name, text in texts.items():
            try:
                document = etree.fromstring(text)
            except etree.XMLSyntaxError:
                continue
            if document.tag == "Contents":
                self.assertTrue(CONTENT_DOCUMENTS.validate(document), f"{name}: {CONTENT_DOCUMENTS.error_log}")

    def run_tessera(self, *arguments, code=0):
        """Runs the program in the folder; answers what it says on standard error."""
        program = os.environ["TESSERA"].split()
        result = subprocess.run([*program, *map(str, arguments)], cwd=self.folder,
                                capture_output=True, text=True, encoding="utf-8", check=False)
        self.assertEqual(result.returncode, code, result.stdout + result.stderr)
        self.assertFalse(list(self.folder.glob("tessera-*")), "a temporary file was left")
        return result.stderr

    def workbook_of(self, *contents, code=0, options=()):
        """The workbook of these contents, opened; what was said is in self.said."""
        (self.folder / "c.xml").write_text(document(*contents), encoding="utf-8")
        self.said = self.run_tessera("spreadsheet", "c.xml", "--out", "w.xlsx", *options, code=code)
        return openpyxl.load_workbook(self.folder / "w.xlsx")

    def part(self, name, workbook="w.xlsx"):
        with zipfile.ZipFile(self.folder / workbook) as package:
            return package.read(name)


def item(name, value):
    kind, text = value
    return f"<{name} Type={quoteattr(kind)} Data={attribute(text)}/>"


def attribute(text):
    return quoteattr(text, {"\n": "&#10;", "\t": "&#9;", "\r": "&#13;"})


def content(pointer, value=("Empty", ""), name="Value", direction="IO", path="P1", unit="",
            values=(), presentation=0, numeric=False, lcid=1031):
    """A "Content" element; `values` are the pairs of value and display text of its items."""
    fixed = name == ""
    items = "".join(f'<ValueItem Version="1">{item("LCID", ("Integer", str(lcid)))}'
                    f'{item("Value", each)}{item("DisplayValue", ("String", display))}</ValueItem>'
                    for each, display in values)
    return f"""<Content Version="1">
<KelosObject Version="1">{item("SystemUID", ("String", "" if fixed else "U1"))}
{item("SystemType", ("Long", "0" if fixed else "120"))}
{item("PathFullName", ("String", "" if fixed else path))}</KelosObject>
<Property Version="2">{item("GetName", ("String", name))}{item("SetName", ("String", name))}
{item("GetParameter", ("Empty", ""))}{item("SetParameter", ("Empty", ""))}
{item("PhysUnit", ("String", unit))}{item("QDefProperty", ("Long", "32"))}</Property>
<Value Version="1">{item("LCID", ("Integer", str(lcid)))}{item("KelosValue", value)}
{item("DocumentValue", ("Empty", ""))}{item("IOMode", ("String", direction))}
{item("AllValuesNumeric", ("Boolean", "-1" if numeric else "0"))}
{item("EmptyNumericValueStayEmpty", ("Boolean", "0"))}</Value>
<Document Version="1">{item("Pointer", ("String", pointer))}</Document>
<ValueItems Version="1">{items}</ValueItems>{item("Presentation", ("Long", str(presentation)))}
</Content>"""


def heading(pointer, text):
    return content(pointer, ("String", text), name="", direction="O")


def document(*contents):
    return f'<?xml version="1.0" encoding="UTF-8"?><Contents Version="1">{"".join(contents)}</Contents>'
