"""The way back: workbooks that openpyxl edited and saved, taken into the project."""

import datetime
import json
import os
import subprocess
import unittest
import zipfile

import openpyxl

from tessera import SAMPLE, Workplace, attribute

HEAD = """<?xml version="1.0" encoding="UTF-8"?>
<kelos-project-file version="1">
  <languages current="{language}"><language name="Deutsch" lcid="1031"/><language name="English" lcid="1033"/></languages>
  <users current="anna"><user login="anna" rights="1"/></users>
  <system-types><system-type name="project" number="1"/><system-type name="pump" number="120"/></system-types>
  <units><unit-group name="PRESSURE"><unit name="BAR" label="bar" factor="100000"/><unit name="KPA" label="kPa" factor="1000"/></unit-group></units>
  <value-lists>
    <value-list name="State" presentation="combo-box" type="long"><item value="1" text="an"/><item value="2" text="aus"/></value-list>
    <value-list name="Yes" presentation="check-boxes" type="boolean"><item value="true" text="ja"/><item value="false" text="nein"/></value-list>
    <value-list name="Steel" presentation="list-box"><item value="1.4571" text="Edelstahl"/><item value="PTFE" text="Kunststoff"/></value-list>
  </value-lists>
  <project name="Plant" type="project" current="yes">
    <!-- what is here stays -->
    <object type="pump" name="P1" uid="U1" description="Pumpe&#13;&#10;zwei Zeilen" label="P1">
      <translation language="English" description="Pump"/>
      <attribute name="A.Pressure" type="double" unit="PRESSURE.BAR" decimals="1" value="2.55"/>
      <attribute name="A.Count" type="long" value="7"/>
      <attribute name="A.Ready" type="boolean" value="true"/>
      <attribute name="A.Date" type="date" value="2026-03-31T14:30:00"/>
      <attribute name="A.Price" type="currency" decimals="2" value="18450.5"/>
      <attribute name="A.State" type="long" list="State" value="1"/>
      <attribute name="A.Steel" list="Steel" value="1.4571"/>
      <attribute name="A.Yes" type="boolean" list="Yes" value="true"/>
      <attribute name="A.Text" value="=1+1"/>
      <attribute name="A.Curve" type="double"><item value="1.5"/><item value="2.5"/></attribute>
      <attribute name="A.Empty" type="double"/>
    </object>
"""
TAIL = """
    <document name="List" type-text="L" sub-type-text="2">
      <object type="pump" name="Table"><mapping><rows sheet="S" object="P1">{rows}</rows></mapping></object>
    </document>
  </project>
</kelos-project-file>
"""
# Cell: what the row maps, what is entered, and what stands in the project then.
EDITS = {
    "A1": ('property="Description"', "neu & <neu>\nzwei", 'description="neu &#38; &#60;neu&#62;&#13;&#10;zwei"'),
    "A2": ('property="Label"', "P2", 'label="P2"'),
    "A3": ('attribute="A.Pressure" property="Value" unit="kPa"', 260, 'value="2.6"'),
    "A4": ('attribute="A.Count" property="Value"', 8, 'value="8"'),
    "A5": ('attribute="A.Ready" property="Value"', False, 'type="boolean" value="false"'),
    "A6": ('attribute="A.Date" property="Value"', datetime.datetime(2027, 1, 2, 3, 4, 5),
           'value="2027-01-02T03:04:05"'),
    "A7": ('attribute="A.Price" property="Value"', 99.25, 'value="99.25"'),
    "A8": ('attribute="A.State" property="Value"', "aus", 'list="State" value="2"'),
    "A9": ('attribute="A.Steel" property="Value"', "Kunststoff", 'value="PTFE"'),
    "A10": ('attribute="A.Yes" property="Value"', "nein", 'list="Yes" value="false"'),
    "A11": ('attribute="A.Text" property="Value"', "2", '"A.Text" value="2"'),
    "A12": ('attribute="A.Curve" property="GetXValue" index="2"', 3.5, '<item value="3.5"/>'),
    "A13": ('property="GetInternationalDescription" index="2"', "Feed pump", 'description="Feed pump"'),
    "A14": ('attribute="A.Empty" property="Value"', 4.5, '"A.Empty" type="double" value="4.5"'),
}


class Project(Workplace):
    """A project file and workbooks of its mapping table."""

    def project(self, rows=None, language="Deutsch"):
        """Writes the project file with these rows of a mapping table, by cell."""
        rows = rows or {cell: what for cell, (what, _, _) in EDITS.items()}
        text = "".join(f'<row cell="{cell}" io="IO" {what}/>' for cell, what in rows.items())
        text = HEAD.replace("{language}", language) + TAIL.replace("{rows}", text)
        (self.folder / "p.xml").write_text(text, encoding="utf-8", newline="")
        return text

    def export(self, name="w.xlsx"):
        self.run_tessera("export", "p.xml", "--out", name, "--quiet")

    def edit(self, edits, name="w.xlsx"):
        book = openpyxl.load_workbook(self.folder / name)
        for cell, value in edits.items():
            book["S"][cell] = value
        book.save(self.folder / name)
        return book

    def imported(self, *options, code=0, workbook="w.xlsx"):
        """The report; nothing is told beside it."""
        program = os.environ["TESSERA"].split()
        result = subprocess.run([*program, "import", workbook, "--project", "p.xml", "--json", *options],
                                cwd=self.folder, capture_output=True, text=True, encoding="utf-8",
                                check=False)
        # The shell that starts the program need not know the locale that the program has.
        said = [line for line in result.stderr.splitlines() if "setlocale" not in line and line]
        self.assertEqual((result.returncode, said), (code, []), result.stdout)
        return json.loads(result.stdout)

    def row(self, report, cell):
        return next(row for row in report["rows"] if row["cell"] == cell)

    def saved(self):
        return (self.folder / "p.xml").read_bytes().decode("utf-8")

    def check_failed(self, message, workbook="w.xlsx"):
        before = self.saved()
        said = self.run_tessera("import", workbook, "--project", "p.xml", "--apply", code=2)
        self.assertIn(message, said)
        self.assertEqual(self.saved(), before)

    def edit_part(self, part, cell, xml):
        """Replaces a cell in the XML of a sheet."""
        def change(text):
            start = text.index(f'<c r="{cell}"')
            end = text.index(">", start)
            end = end + 1 if text[end - 1] == "/" else text.index("</c>", start) + 4
            return text[:start] + xml + text[end:]
        self.edit_package({part: change})

    def edit_package(self, changes, name="w.xlsx"):
        """Changes parts of the package by functions; drops those that become None."""
        with zipfile.ZipFile(self.folder / name) as package:
            parts = {part: package.read(part) for part in package.namelist()}
        with zipfile.ZipFile(self.folder / name, "w", zipfile.ZIP_DEFLATED) as package:
            for part, data in parts.items():
                text = changes[part](data.decode("utf-8")) if part in changes else data
                if text is not None:
                    package.writestr(part, text)



class Import(Project):
    # ---- What nobody edited ----

    def test_an_untouched_export_changes_nothing(self):
        for language in ("Deutsch", "English"):
            before = self.project(language=language)
            self.export()
            for change in ({}, {"Z99": "by the way"}):
                self.edit(change)
                counts = self.imported("--apply")["counts"]
                self.assertEqual((counts["unchanged"], sum(counts.values())), (len(EDITS), len(EDITS)))
            self.assertEqual(self.saved(), before)
            self.assertFalse((self.folder / "p.xml.bak").exists())

    def test_the_sample_comes_back_unchanged(self):
        text = SAMPLE.read_bytes()
        (self.folder / "p.xml").write_bytes(text)
        for document in ("Anlagenliste", "Pumpendatenblatt"):
            self.run_tessera("export", "p.xml", "--document", document, "--out", "w.xlsx")
            counts = self.imported("--apply")["counts"]
            self.assertEqual(counts["unchanged"], sum(counts.values()))
            self.edit_nothing()
            counts = self.imported("--apply")["counts"]
            self.assertEqual(counts["unchanged"], sum(counts.values()))
        self.assertEqual((self.folder / "p.xml").read_bytes(), text)

    def edit_nothing(self):
        openpyxl.load_workbook(self.folder / "w.xlsx").save(self.folder / "w.xlsx")

    # ---- What was edited ----

    def test_edits_come_back_by_value_in_every_type(self):
        # In English the description and the English one are the same text.
        same_text = {"Deutsch": None, "English": "A1"}
        for language in ("Deutsch", "English"):
            before = self.project(language=language)
            self.export()
            edits = {cell: edit for cell, edit in EDITS.items() if cell != same_text[language]}
            self.edit({cell: value for cell, (_, value, _) in edits.items()})
            dry = self.imported()
            self.assertEqual(self.saved(), before)
            self.assertEqual(dry["counts"]["changed"], len(edits))
            report = self.imported("--apply")
            self.assertTrue(report["applied"])
            self.assertEqual((self.folder / "p.xml.bak").read_bytes().decode("utf-8"), before)
            after = self.saved()
            for cell, (_, _, attribute_text) in edits.items():
                with self.subTest(cell=cell, language=language):
                    self.assertIn(attribute_text, after)
            changed = [pair for pair in zip(before.splitlines(), after.splitlines()) if pair[0] != pair[1]]
            self.assertLessEqual(len(changed), len(EDITS))
            self.assertIn("<!-- what is here stays -->", after)

            self.export("again.xlsx")
            edited = openpyxl.load_workbook(self.folder / "w.xlsx")["S"]
            again = openpyxl.load_workbook(self.folder / "again.xlsx")["S"]
            for cell in edits:
                self.assertEqual(again[cell].value, edited[cell].value, cell)

    def test_a_row_tells_all_that_matters(self):
        self.project()
        self.export()
        self.edit({"A3": 300})
        row = self.row(self.imported(), "A3")
        self.assertEqual({name: row[name] for name in (
            "outcome", "sheet", "object", "property", "state", "exported", "sheet_value",
            "project_value", "new_value", "unit", "way_back")}, {
            "outcome": "changed", "sheet": "S", "object": "P1|A.Pressure", "property": "Value",
            "state": "value", "exported": "255", "sheet_value": "300", "project_value": "255",
            "new_value": "300", "unit": "PRESSURE.KPA", "way_back": "Value"})
        said = subprocess.run([*os.environ["TESSERA"].split(), "import", "w.xlsx", "--project", "p.xml"],
                              cwd=self.folder, capture_output=True, text=True, check=True).stdout
        self.assertRegex(said, r"changed +S +A3 +P1\|A\.Pressure +Value +255 +300 +PRESSURE\.KPA +Value")
        self.assertIn("1 changed, 13 unchanged, 0 blank, 0 in conflict, 0 refused, 0 failed", said)
        self.assertIn("nothing was written", said)

    def test_blanks_never_overwrite(self):
        before = self.project()
        self.export()
        book = self.edit({"A1": None, "A3": None})
        book["S"].delete_rows(14)
        book.save(self.folder / "w.xlsx")
        report = self.imported("--apply")
        self.assertEqual(report["counts"]["blank"], 2)
        self.assertEqual(self.row(report, "A14")["outcome"], "unchanged")
        self.assertEqual(self.saved(), before)

    def test_what_cannot_be_read_is_told_and_the_rest_goes_on(self):
        self.project()
        self.export()
        self.edit({"A3": "2,6", "A4": 8.5, "A5": "maybe", "A6": "31.03.2026", "A8": "kaputt",
                   "A12": "=1+1", "A7": 5})
        report = self.imported("--apply", code=1)
        reasons = {"A3": '"2,6" is a text, not a number', "A4": '"8.5" is no whole number',
                   "A5": '"maybe" is neither TRUE nor FALSE', "A6": '"31.03.2026" is no date',
                   "A8": '"kaputt" is none of the list: "an", "aus"',
                   "A12": "the cell holds a formula that was never calculated"}
        for cell, reason in reasons.items():
            row = self.row(report, cell)
            self.assertEqual(row["outcome"], "failed", cell)
            self.assertIn(reason, row["reason"])
        self.assertEqual((report["counts"]["changed"], report["counts"]["failed"]), (1, len(reasons)))
        self.assertIn('value="5"', self.saved())

    def test_only_input_goes_in(self):
        self.project({"A1": 'property="FullLabel"', "A3": 'property="Parent.Name"'})
        text = self.saved().replace("</rows>", '<row cell="B1" value="fixed"/>'
                                    '<row cell="B2" property="Label" io="O"/></rows>')
        (self.folder / "p.xml").write_text(text, encoding="utf-8")
        self.export()
        self.edit({"A1": "x", "A3": "x", "B1": "x", "B2": "x"})
        self.edit_part("xl/worksheets/sheet1.xml", "A3", '<c r="A3"><f>1+1</f><v>2</v></c>')
        report = self.imported("--apply", code=1)
        self.assertEqual(report["counts"]["refused"], 3)
        self.assertEqual(self.row(report, "A3")["outcome"], "unchanged")
        self.assertIn("fixed text", self.row(report, "B1")["reason"])
        self.assertIn("out of the project only", self.row(report, "B2")["reason"])
        self.assertEqual(self.saved(), text)

    def test_what_was_changed_on_both_sides_is_a_conflict(self):
        before = self.project().replace('value="7"', 'value="9"').replace('value="2.55"', 'value="3"')
        self.export()
        self.edit({"A4": 8, "A3": 300})
        (self.folder / "p.xml").write_text(before, encoding="utf-8", newline="")
        report = self.imported("--apply", code=1)
        row = self.row(report, "A4")
        self.assertEqual([row[name] for name in ("outcome", "exported", "sheet_value", "project_value")],
                         ["conflict", "7", "8", "9"])
        self.assertEqual(self.row(report, "A3")["outcome"], "unchanged")
        self.assertEqual(self.saved(), before)
        self.assertEqual(self.row(self.imported("--apply", "--prefer", "project"), "A4")["outcome"], "kept")
        self.assertEqual(self.saved(), before)
        self.imported("--apply", "--prefer", "sheet")
        self.assertEqual(self.saved(), before.replace('value="9"', 'value="8"'))

    def test_one_value_in_two_cells_is_edited_in_one_or_alike(self):
        count = 'attribute="A.Count" property="Value"'
        for edits, outcomes in (({"A1": 8}, ("changed", "unchanged")), ({"A1": 9, "B1": 9}, ("changed",) * 2),
                                ({"A1": 8, "B1": 9}, ("failed",) * 2)):
            self.project({"A1": count, "B1": count})
            self.export()
            self.edit(edits)
            report = self.imported(code=1 if "failed" in outcomes else 0)
            self.assertEqual(tuple(row["outcome"] for row in report["rows"]), outcomes)

    def test_two_names_of_one_text_are_no_two_texts(self):
        self.project(language="English")
        self.export()
        self.edit({"A1": "x", "A13": "y"})
        row = self.row(self.imported(code=1), "A1")
        self.assertEqual((row["outcome"], row["reason"]),
                         ("failed", "another cell that was edited sets the same value of the project"))

    # ---- What programs make of cells ----

    def test_merged_cells_formulas_and_errors(self):
        self.project()
        self.export()
        book = self.edit({"A8": "an"})
        book["S"].merge_cells("A2:A5")
        book.save(self.folder / "w.xlsx")
        self.edit_part("xl/worksheets/sheet1.xml", "A7", '<c r="A7" t="e"><v>#REF!</v></c>')
        self.edit_part("xl/worksheets/sheet1.xml", "A12", '<c r="A12"><f>1+1</f><v>2</v></c>')
        self.edit_part("xl/worksheets/sheet1.xml", "A11",
                       '<c r="A11" t="inlineStr"><is><r><t>ri</t></r><r><t xml:space="preserve">ch </t></r>'
                       "<rPh sb=\"0\" eb=\"1\"><t>x</t></rPh></is></c>")
        report = self.imported(code=1)
        self.assertIn("merged into A2", self.row(report, "A3")["reason"])
        self.assertIn('"#REF!" is an error', self.row(report, "A7")["reason"])
        self.assertIn("formula", self.row(report, "A12")["notice"])
        self.assertEqual(self.row(report, "A12")["new_value"], "2")
        self.assertEqual(self.row(report, "A11")["new_value"], "rich ")

    def test_dates_count_from_1904_where_the_workbook_does(self):
        self.project({"A1": EDITS["A6"][0]})
        self.export()
        self.edit_package({"xl/workbook.xml": lambda text: text.replace(
            "<sheets>", '<workbookPr date1904="1"/><sheets>', 1)})
        self.assertEqual(self.row(self.imported(), "A1")["new_value"], "2030-04-01T14:30:00")

    # ---- What is no workbook, or not ours ----

    def test_files_that_cannot_be_imported(self):
        self.project()
        self.export()
        whole = (self.folder / "w.xlsx").read_bytes()
        mark = b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1"
        for data, message in ((b"", "it is empty"), (b"text", "it is no zip package"),
                              (whole[:-100], "the file is not complete"),
                              (mark + "EncryptedPackage".encode("utf-16-le"), "it is encrypted")):
            (self.folder / "w.xlsx").write_bytes(data)
            self.check_failed(message)
        (self.folder / "w.xlsx").write_bytes(whole)
        for xml, message in (('<c r="A1" t="s"><v>99</v></c>', "A1 refers to a text that there is not"),
                             ('<c r="A1"><v>1,5</v></c>', 'A1 has "1,5" for a number'),
                             ('<c r="A9999999"/>', 'has a cell "A9999999", which no sheet has')):
            self.edit_part("xl/worksheets/sheet1.xml", "A1", xml)
            self.check_failed(message)
            (self.folder / "w.xlsx").write_bytes(whole)
        self.edit_package({"xl/worksheets/sheet1.xml": lambda text: text[:-20]})
        self.check_failed("not well-formed XML")
        self.check_failed("cannot be read", "none.xlsx")

        openpyxl.Workbook().save(self.folder / "w.xlsx")
        self.check_failed("holds no content document")
        with zipfile.ZipFile(self.folder / "w.xlsx", "w") as package:
            package.writestr("a.txt", "x")
        self.check_failed("is no workbook")

    def test_a_missing_sheet_or_content_document_is_told(self):
        self.project()
        self.export()
        book = openpyxl.load_workbook(self.folder / "w.xlsx")
        book["S"].title = "T"
        book.save(self.folder / "w.xlsx")
        self.check_failed('has no sheet "S", in which the cell A1 was')
        book["T"].title = "S"
        book["Tessera content"]["A3"] = "x"
        book.save(self.folder / "w.xlsx")
        self.check_failed("its cells were changed")
        del book["Tessera content"]
        book.save(self.folder / "w.xlsx")
        self.check_failed("holds no content document")


if __name__ == "__main__":
    unittest.main()
