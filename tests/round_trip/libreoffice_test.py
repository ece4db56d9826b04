"""LibreOffice opens our workbooks: what it saves again has the same cells. For ./test --full."""

import os
import subprocess
import sys
import unittest

import openpyxl

from tessera import SAMPLE, Workplace, content


class LibreOffice(Workplace):
    def converted(self, name, form):
        folder = self.folder / form
        subprocess.run(["soffice", "--headless", f"-env:UserInstallation={(self.folder / 'user').as_uri()}",
                        "--convert-to", form, "--outdir", folder, name],
                       cwd=self.folder, check=True, capture_output=True)
        return folder / f"{name.removesuffix('.xlsx')}.{form}"

    def check_same_cells(self):
        ours = openpyxl.load_workbook(self.folder / "w.xlsx")
        # It saves booleans as formulas, and without a window it keeps no view.
        theirs = openpyxl.load_workbook(self.converted("w.xlsx", "xlsx"), data_only=True)
        self.assertEqual(theirs.sheetnames, ours.sheetnames)
        for sheet in ours:
            other = theirs[sheet.title]
            for row in sheet.iter_rows():
                for cell in row:
                    if cell.value is None:
                        continue
                    with self.subTest(sheet=sheet.title, cell=cell.coordinate):
                        saved = other[cell.coordinate]
                        self.assertEqual(saved.value, cell.value)
                        self.assertEqual(saved.is_date, cell.is_date)
                        self.assertEqual(saved.protection.locked, cell.protection.locked)
                        self.assertEqual(bool(saved.comment), bool(cell.comment))
            self.assertEqual(other.protection.sheet, sheet.protection.sheet)
            self.assertEqual(len(other.data_validations.dataValidation),
                             len(sheet.data_validations.dataValidation))
        return theirs

    def test_the_sample_comes_back_as_it_was(self):
        self.run_tessera("export", SAMPLE, "--document", "Anlagenliste", "--out", "w.xlsx")
        book = self.check_same_cells()
        self.assertIn("l/min", book["Pumpen"]["K3"].number_format)
        self.assertTrue(self.converted("w.xlsx", "pdf").read_bytes().startswith(b"%PDF"))

    def test_awkward_texts_and_lists_come_back_as_they_were(self):
        texts = ["=1+1", "+49", "@a", "'a", " two\nlines ", "007", "1/2", "TRUE", "a;b", "ü\u2028😀"]
        awkward = [(("String", "a"), "first, second"), (("String", "b"), 'say "so"')]
        self.workbook_of(
            *(content(f"S!A{row}", ("String", text)) for row, text in enumerate(texts, 1)),
            content("S!B1", values=awkward, presentation=1), content("S!B2", ("Boolean", "-1")))
        self.check_same_cells()


if __name__ == "__main__":
    if "TESSERA_FULL" not in os.environ:
        sys.exit(77)
    unittest.main()
