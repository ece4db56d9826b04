"""What openpyxl finds in workbooks that tessera.exe wrote."""

import base64
import datetime
import unittest
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
            (dict(value=("Boolean", "-1")), True, "General"),
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
        shapes = self.part("xl/drawings/notes1.vml").decode()
        self.assertEqual(shapes.count("<v:shape "), 2)
        self.assertIn("<x:Row>1</x:Row><x:Column>2</x:Column>", shapes)

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
        self.assertIn(b"/customXml\" Target=\"../customXml/item1.xml\"",
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


if __name__ == "__main__":
    unittest.main()
