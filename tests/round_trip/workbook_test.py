"""What openpyxl finds in workbooks that tessera.exe wrote."""

import base64
import datetime
import re
import unittest
import zipfile
import zlib

import openpyxl

from tessera import SAMPLE, Workplace, content, document, heading

STATES = [(("Long", "1"), "in operation"), (("Long", "0"), "out of service")]


class Cells(Workplace):
    def test_values_have_their_type_and_format(self):
        number = ("Double", "109.908136483")
        cases = [
            (dict(values=[(("Double", "12.5"), "12,5")], unit="FLOW.M3H"), 12.5, 'General" M3H"'),
            (dict(values=[(number, "109,9")], unit="LENGTH.M"), 109.908136483, '0.0" M"'),
            (dict(values=[(("Currency", "18450.5"), "18450,50")]), 18450.5, "0.00"),
            (dict(value=("Long", "6")), 6, "General"),
            (dict(value=("Boolean", "-1")), True, '"TRUE";"TRUE";"FALSE"'),
            (dict(value=("Date", "11/21/2026")), datetime.datetime(2026, 11, 21), "mm-dd-yy"),
            (dict(value=("Date", "1/31/1900 6:30:00 PM")), datetime.datetime(1900, 1, 31, 18, 30),
             "m/d/yy h:mm"),
            (dict(value=("String", "3,5"), numeric=True), 3.5, "General"),
            (dict(value=("String", "3,5")), "3,5", "@"),
            (dict(value=("String", "=1+1")), "=1+1", "@"),
            (dict(value=("String", "007")), "007", "@"),
            (dict(value=("String", " two\nlines\t ")), " two\nlines\t ", "@"),
            (dict(value=("String", "x" * 32767)), "x" * 32767, "General"),
            (dict(value=("String", "")), None, "@"),
            (dict(values=[(("Double", ""), "")], unit="FLOW.M3H"), None, 'General" M3H"'),
        ]
        contents = [content(f"S!A{row}", **what) for row, (what, _, _) in enumerate(cases, 1)]
        sheet = self.workbook_of(*contents)["S"]
        for row, (_, value, number_format) in enumerate(cases, 1):
            cell = sheet.cell(row, 1)
            with self.subTest(cell=cell.coordinate, value=str(value)[:20]):
                self.assertEqual(cell.value, value)
                self.assertEqual(type(cell.value), type(value))
                self.assertNotEqual(cell.data_type, "f")
                self.assertEqual(cell.number_format, number_format)
        self.assertTrue(sheet["A10"].quotePrefix)
        self.assertIn(b'xml:space="preserve"> two', self.part("xl/worksheets/sheet1.xml"))
        self.assertTrue(sheet["A12"].alignment.wrap_text)
        self.assertFalse(sheet["A9"].alignment.wrap_text)

    def test_only_what_can_go_back_is_open(self):
        sheet = self.workbook_of(heading("S!A1", "Pumps"), content("S!A2", name="Value"),
                                 content("S!B2", name="Value", direction="O"),
                                 content("S!C2", name="FullLabel"),
                                 content("S!D2", name="Parent.Name", direction=""))["S"]
        self.assertTrue(sheet.protection.sheet)
        self.assertIsNone(sheet.protection.password)
        locked = [sheet[cell].protection.locked for cell in ("A1", "A2", "B2", "C2", "D2")]
        self.assertEqual(locked, [True, False, True, True, True])
        fills = [sheet[cell].fill.fill_type for cell in ("A1", "A2", "B2", "C2", "D2")]
        self.assertEqual(fills, ["solid", None, "solid", "solid", "solid"])

    def test_notes_tell_object_property_unit_and_direction(self):
        sheet = self.workbook_of(
            heading("S!A1", "Pumps"),
            content("S!B2", path="A10|<P101>", unit="FLOW.M3H", direction="O"),
            content("S!C2", name="Description", direction="I"))["S"]
        self.assertIsNone(sheet["A1"].comment)
        self.assertEqual(sheet["B2"].comment.text,
                         "Object: A10|<P101>\nProperty: Value\nUnit: M3H (FLOW.M3H)\n"
                         "Direction: out of the project only")
        self.assertEqual(sheet["C2"].comment.text,
                         "Object: P1\nProperty: Description\nDirection: into the project")
        shapes = self.part("xl/drawings/tesseraNotes1.vml").decode()
        self.assertEqual(shapes.count("<v:shape "), 2)
        self.assertEqual(re.findall("<x:Row>(.)</x:Row><x:Column>(.)</x:Column>", shapes),
                         [("1", "1"), ("1", "2")])

    def test_lists_are_chosen_from_their_texts(self):
        awkward = [(("String", "a"), "first, second"), (("String", "b"), 'say "so"')]
        book = self.workbook_of(
            content("S!A1", values=STATES, presentation=1),
            content("S!A2", values=STATES[::-1], presentation=1),
            content("S!B1", values=STATES, presentation=1, direction="O"),
            content("S!C1", values=awkward, presentation=2))
        sheet = book["S"]
        self.assertEqual([sheet[cell].value for cell in ("A1", "A2", "C1")],
                         ["in operation", "out of service", "first, second"])
        offered = {str(rule.sqref): (rule.type, rule.formula1)
                   for rule in sheet.data_validations.dataValidation}
        self.assertEqual(offered, {"A1:A2": ("list", '"out of service,in operation"'),
                                   "C1": ("list", "TesseraList1")})
        name = book.defined_names["TesseraList1"]
        (title, cells), = name.destinations
        self.assertEqual([row[0].value for row in book[title][cells]], ['first, second', 'say "so"'])
        self.assertEqual(book[title].sheet_state, "hidden")

    def test_units_have_the_labels_that_users_read(self):
        self.run_tessera("export", SAMPLE, "--document", "Anlagenliste", "--out", "w.xlsx")
        book = openpyxl.load_workbook(self.folder / "w.xlsx")
        self.assertEqual(book.sheetnames[:3], ["Pumpen", "Behälter", "Messstellen"])
        self.assertEqual(book["Pumpen"]["K3"].number_format, 'General" l/min"')
        self.assertIn("Unit: l/min (FLOW.LMIN)", book["Pumpen"]["K3"].comment.text)
        self.assertEqual(book["Pumpen"]["L3"].number_format, 'General" m³/h"')


class Sheets(Workplace):
    def test_a_sheet_is_readable_at_once(self):
        columns = [content(f"Bob's!{letter}3", ("String", "w" * 30)) for letter in "ABCDEFGHIJ"]
        sheet = self.workbook_of(heading("Bob's!A1", "Title"), *columns)["Bob's"]
        self.assertEqual(sheet.freeze_panes, "B3")
        self.assertEqual(sheet.print_title_rows, "$1:$2")
        self.assertEqual(sheet.print_title_cols, "$A:$A")
        self.assertGreaterEqual(sheet.column_dimensions["J"].width, 30)
        self.assertEqual(sheet.page_setup.orientation, "landscape")
        self.assertTrue(sheet.sheet_properties.pageSetUpPr.fitToPage)
        self.assertEqual((sheet.page_setup.fitToWidth, sheet.page_setup.fitToHeight), (2, 0))
        self.assertEqual(sheet.oddFooter.right.text, "&P / &N")

    def test_what_finds_no_place_is_told_and_the_rest_is_there(self):
        text = ("String", "x")
        book = self.workbook_of(
            content("a/b!A1", text), content("S!A1", text), content("s!A1", text),
            content("S!XFE1", text), content("nowhere", text), content("s!B1", text), code=1)
        self.assertEqual(book.sheetnames[0], "S")
        self.assertEqual(book["S"].dimensions, "A1:B1")
        said = self.said.splitlines()
        self.assertEqual([line.split('"')[1] for line in said],
                         ["a/b!A1", "S!XFE1", "nowhere", "s!A1"])

    def test_names_of_our_own_sheets_give_way(self):
        book = self.workbook_of(content("Tessera Content!A1", ("String", "x")))
        self.assertEqual(book.sheetnames, ["Tessera Content", "Tessera content2"])


class Packages(Workplace):
    def test_the_content_document_travels_in_a_part_and_in_a_sheet(self):
        contents = [content(f"S!A{row}", ("String", f"row {row} ä\n ")) for row in range(1, 400)]
        book = self.workbook_of(*contents)
        part = self.part("customXml/item1.xml")
        self.assertTrue(part.startswith(b'<?xml version="1.0" encoding="UTF-8"?><Contents Version="1">'))
        self.assertEqual(part.count(b"<Content "), 399)
        self.assertIn("Data=\"row 399 ä&#10; \"".encode(), part)
        self.assertIn(b"/customXml\" Target=\"/customXml/item1.xml\"",
                      self.part("xl/_rels/workbook.xml.rels"))
        sheet = book["Tessera content"]
        self.assertEqual(sheet.sheet_state, "veryHidden")
        mark, count, *chunks = [row[0].value for row in sheet.iter_rows()]
        self.assertEqual((mark, int(count)), ("Tessera content document 1", len(chunks)))
        self.assertEqual(zlib.decompress(base64.b64decode("".join(chunks))), part)

    def test_the_same_document_gives_the_same_bytes(self):
        self.workbook_of(content("S!A1", values=STATES, presentation=1))
        first = (self.folder / "w.xlsx").read_bytes()
        self.run_tessera("spreadsheet", "c.xml", "--out", "w.xlsx")
        self.assertEqual((self.folder / "w.xlsx").read_bytes(), first)

    def test_what_cannot_be_made_leaves_what_was_there(self):
        (self.folder / "w.xlsx").write_bytes(b"before")
        cases = {
            "no content document": "<a/>",
            "not well-formed": "<Contents Version='1'>",
            "no value that a workbook can hold": document(),
        }
        for reason, text in cases.items():
            (self.folder / "c.xml").write_text(text, encoding="utf-8")
            said = self.run_tessera("spreadsheet", "c.xml", "--out", "w.xlsx", code=2)
            self.assertIn(reason, said)
            self.assertEqual((self.folder / "w.xlsx").read_bytes(), b"before")
        said = self.run_tessera("spreadsheet", "c.xml", "--out", "w.ods", code=2)
        self.assertIn('must end in ".xlsx"', said)


class Templates(Workplace):
    def make_template(self, change=None):
        """A workbook as a user has it: formats, a formula, merged cells, notes, a name, a table."""
        book = openpyxl.Workbook()
        sheet = book.active
        sheet.title = "Pumps"
        sheet.append(["Tag", "Flow", "Date", "Sum"])
        sheet["A1"].font = openpyxl.styles.Font(bold=True, color="FFFF0000")
        sheet["B2"].number_format = "0.000"
        sheet["B2"].fill = openpyxl.styles.PatternFill("solid", fgColor="FF00FF00")
        sheet["D2"] = "=B2*2"
        sheet["I2"] = "=TRUE()"
        sheet["A9"] = "below & beyond"
        sheet["E2"] = "entered by hand"
        sheet["A1"].comment = openpyxl.comments.Comment("a note of its own", "somebody")
        sheet.merge_cells("F5:G6")
        sheet.column_dimensions["H"].number_format = "0.0000"
        other = book.create_sheet("Other")
        other["A1"] = "untouched"
        book.defined_names.append(
            openpyxl.workbook.defined_name.DefinedName("TesseraList1", attr_text="Other!$A$1"))
        if change:
            change(book)
        book.save(self.folder / "t.xlsx")

    def filled(self, *contents, code=0):
        return self.workbook_of(*contents, code=code, options=("--template", "t.xlsx"))

    def test_cells_are_filled_in_and_everything_else_stays(self):
        self.make_template()
        before = (self.folder / "t.xlsx").read_bytes()
        number = ("Double", "2.5")
        book = self.filled(
            content("PUMPS!B2", number, unit="FLOW.M3H"), content("Pumps!A2", ("String", "=P101")),
            content("Pumps!C2", ("Date", "11/21/2026")), content("Pumps!D2", number),
            content("Pumps!E2", ("String", "from the project"), direction="I"),
            content("Pumps!G6", number), content("Pumps!F5", number), content("Pumps!H4", number),
            content("Pumps!I2", ("Boolean", "0")), content("Pumps!A12", number, unit="FLOW.M3H"),
            content("Pumps!A9", ("String", "")),
            content("New!A1", values=[(("Long", "1"), "a,b")], presentation=1), code=1)
        sheet = book["Pumps"]
        found = {cell: sheet[cell].value for cell in
                 ("A1", "A2", "B1", "B2", "C2", "D2", "E2", "F5", "H4", "I2", "A9", "A12")}
        self.assertEqual(found, {
            "A1": "Tag", "A2": "=P101", "B1": "Flow", "B2": 2.5,
            "C2": datetime.datetime(2026, 11, 21), "D2": "=B2*2", "E2": "entered by hand",
            "F5": 2.5, "H4": 2.5, "I2": False, "A9": None, "A12": 2.5})
        self.assertEqual(sheet["A2"].data_type, "s")
        self.assertEqual([sheet[cell].number_format for cell in ("B2", "H4", "A12")],
                         ["0.000", "0.0000", 'General" M3H"'])
        self.assertEqual(sheet["B2"].fill.fgColor.rgb, "FF00FF00")
        self.assertEqual(sheet["A1"].font.color.rgb, "FFFF0000")
        self.assertEqual(sheet["A1"].comment.text, "a note of its own")
        self.assertEqual([str(cells) for cells in sheet.merged_cells.ranges], ["F5:G6"])
        self.assertFalse(sheet.protection.sheet)
        self.assertEqual(book["Other"]["A1"].value, "untouched")
        self.assertEqual([line.split('"')[1] for line in self.said.splitlines()],
                         ["Pumps!G6", "Pumps!D2"])
        self.assertEqual(book.sheetnames,
                         ["Pumps", "Other", "New", "Tessera lists", "Tessera content"])
        self.assertEqual(book["New"].data_validations.dataValidation[0].formula1, "TesseraList2")
        self.assertEqual(book.defined_names["TesseraList1"].attr_text, "Other!$A$1")
        self.assertTrue(book["New"].protection.sheet)
        self.assertEqual(book["New"]["A1"].comment.text.splitlines()[0], "Object: P1")
        self.assertTrue(book.calculation.fullCalcOnLoad)
        self.assertEqual((self.folder / "t.xlsx").read_bytes(), before)

    def test_an_earlier_export_is_filled_in_with_the_new_document(self):
        self.workbook_of(content("S!A1", ("String", "old")))
        (self.folder / "w.xlsx").rename(self.folder / "t.xlsx")
        book = self.filled(content("S!A1", ("String", "new")))
        self.assertEqual(book.sheetnames, ["S", "Tessera content"])
        self.assertEqual(book["S"]["A1"].value, "new")
        part = self.part("customXml/item1.xml")
        self.assertIn(b'"new"', part)
        chunks = [row[0].value for row in book["Tessera content"].iter_rows(min_row=3)]
        self.assertEqual(zlib.decompress(base64.b64decode("".join(chunks))), part)
        with zipfile.ZipFile(self.folder / "w.xlsx") as package:
            self.assertEqual(sorted(name for name in package.namelist()
                                    if name.startswith("customXml/item")),
                             ["customXml/item1.xml", "customXml/itemProps1.xml"])

    def test_days_are_counted_as_the_template_counts_them(self):
        self.make_template(lambda book: setattr(book, "epoch", openpyxl.utils.datetime.CALENDAR_MAC_1904))
        sheet = self.filled(content("Pumps!A2", ("Date", "11/21/2026")),
                            content("Pumps!A3", ("Date", "6:00:00 AM")),
                            content("Pumps!A4", ("Date", "1/1/1903")))["Pumps"]
        self.assertEqual([sheet[cell].value for cell in ("A2", "A4")],
                         [datetime.datetime(2026, 11, 21), "1/1/1903"])
        self.assertIn(b"<v>0.25</v>", self.part("xl/worksheets/sheet1.xml"))

    def test_prefixes_and_bare_cells_are_no_hindrance(self):
        """Some programs write a prefix before every name, and leave out where cells stand."""
        self.make_template()
        sheet = ('<?xml version="1.0"?><!-- <sheetData> --><x:worksheet xmlns:x="http://schemas.'
                 'openxmlformats.org/spreadsheetml/2006/main"><x:dimension ref="A1"/><x:sheetData>'
                 '<x:row spans="1:1"><x:c t="str"><x:v>&lt;c></x:v></x:c><x:c><x:v>7</x:v></x:c>'
                 '</x:row><x:row r="3" ht="20"/></x:sheetData></x:worksheet>')
        with zipfile.ZipFile(self.folder / "t.xlsx") as package:
            parts = {name: package.read(name) for name in package.namelist()}
        parts["xl/worksheets/sheet1.xml"] = sheet.encode("utf-8-sig")
        with zipfile.ZipFile(self.folder / "t.xlsx", "w") as package:
            for name, data in parts.items():
                package.writestr(name, data)
        text = ("String", "x")
        book = self.filled(*(content(f"Pumps!{cell}", text) for cell in ("B1", "C1", "A2", "B3")))
        rows = [[cell.value for cell in row] for row in book["Pumps"].iter_rows()]
        self.assertEqual(rows, [["<c>", "x", "x"], ["x", None, None], [None, "x", None]])
        written = self.part("xl/worksheets/sheet1.xml").decode()
        self.assertTrue(written.startswith('<?xml version="1.0"?><!-- <sheetData> --><x:worksheet'))
        self.assertNotIn("<c ", written)

    def test_templates_that_are_none_are_told(self):
        (self.folder / "c.xml").write_text(document(content("S!A1", ("Long", "1"))))
        for text, reason in [(b"no zip", "t.xlsx"), (b"", "t.xlsx")]:
            (self.folder / "t.xlsx").write_bytes(text)
            said = self.run_tessera("spreadsheet", "c.xml", "--out", "w.xlsx", "--template",
                                    "t.xlsx", code=2)
            self.assertIn(reason, said)
            self.assertFalse((self.folder / "w.xlsx").exists())
        said = self.run_tessera("spreadsheet", "c.xml", "--out", "t.xlsx", "--template", "t.xlsx",
                                code=2)
        self.assertIn("cannot be written at the same time", said)


if __name__ == "__main__":
    unittest.main()
