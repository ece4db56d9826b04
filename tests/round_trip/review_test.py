"""Workbooks that another program edited, checked and compared."""

import json
import os
import subprocess
import unittest

import openpyxl

from tessera import SAMPLE, Workplace, content

STATES = [(("Long", "1"), "on"), (("Long", "0"), "off")]


class Review(Workplace):
    def report(self, *arguments):
        """What a command tells a program, and its exit code."""
        program = os.environ["TESSERA"].split()
        result = subprocess.run([*program, *map(str, arguments), "--json"], cwd=self.folder,
                                capture_output=True, check=False)
        return json.loads(result.stdout), result.returncode

    def test_an_untouched_workbook_differs_in_nothing_from_its_content_document(self):
        self.run_tessera("export", SAMPLE, "--out", "c.xml")
        self.run_tessera("spreadsheet", "c.xml", "--out", "w.xlsx")
        # Saved once more, it has lost the part that carried the content document.
        openpyxl.load_workbook(self.folder / "w.xlsx").save(self.folder / "saved.xlsx")
        for name in ("w.xlsx", "saved.xlsx"):
            report, code = self.report("diff", "c.xml", name)
            self.assertEqual((report["changes"], report["unchanged"], code), ([], 109, 0))
            report, code = self.report("check", name, "--project", SAMPLE)
            self.assertEqual((report["errors"], report["warnings"], code), (0, 0, 0))

    def test_what_was_entered_is_compared_and_checked_as_the_document_value(self):
        book = self.workbook_of(content("S!A1", values=[(("Double", "1.5"), "1,50")]),
                                content("S!A2", values=[(("Double", "2"), "2")]),
                                content("S!A3", values=STATES, presentation=1),
                                content("S!A4", values=STATES, presentation=1),
                                content("S!A5", values=[(("String", "x"), "x")]),
                                content("S!A6", values=[(("Double", "3"), "3")], direction="O"),
                                content("S!A7", values=[(("Double", "4"), "4")]))
        for cell, entered in zip(("A1", "A2", "A3", "A4", "A5", "A6", "A7"),
                                 (2.5, "much", "off", "broken", "y\nz", "text", None)):
            book["S"][cell] = entered
        book.save(self.folder / "w.xlsx")

        report, code = self.report("diff", "c.xml", "w.xlsx")
        found = {change["cell"]: [(difference["what"], difference["new"])
                                  for difference in change["differences"]]
                 for change in report["changes"]}
        entered = {"A1": "2.5", "A2": "much", "A3": "off", "A4": "broken", "A5": "y\nz",
                   "A6": "text"}
        self.assertEqual(found, {cell: [("document value", text)] for cell, text in entered.items()})
        self.assertEqual(code, 1)

        report, code = self.report("check", "w.xlsx")
        wrong = {rule["rule"]: [(place["cell"], place["detail"]) for place in rule["places"]]
                 for rule in report["rules"] if rule["count"]}
        self.assertEqual(wrong, {"wrong-entry": [
            ("A2", '"much" is a text, not a number'),
            ("A4", '"broken" is none of the list: "off", "on"')]})
        self.assertEqual(code, 1)

    def test_what_is_no_workbook_of_ours_is_told_and_nothing_is_written(self):
        openpyxl.Workbook().save(self.folder / "foreign.xlsx")
        (self.folder / "cut.xlsx").write_bytes((self.folder / "foreign.xlsx").read_bytes()[:900])
        for name in ("foreign.xlsx", "cut.xlsx"):
            self.assertIn(name, self.run_tessera("preview", name, "--out", "p.html", code=2))
            self.assertFalse((self.folder / "p.html").exists())


if __name__ == "__main__":
    unittest.main()
