"""The way back: workbooks that LibreOffice edited and saved. For ./test --full."""

import os
import subprocess
import sys
import time
import unittest

from import_test import EDITS, Project


class Office:
    """A LibreOffice without a window, for as long as the block runs."""

    def __init__(self, folder):
        self.folder = folder
        self.pipe = f"tessera{os.getpid()}"

    def __enter__(self):
        import uno
        self.process = subprocess.Popen(
            ["soffice", "--headless", "--norestore", f"-env:UserInstallation={(self.folder / 'user').as_uri()}",
             f"--accept=pipe,name={self.pipe};urp;"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        local = uno.getComponentContext()
        resolver = local.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", local)
        while self.process.poll() is None:
            try:
                context = resolver.resolve(f"uno:pipe,name={self.pipe};urp;StarOffice.ComponentContext")
                break
            except Exception:  # pylint: disable=broad-except  # it has not started yet
                time.sleep(0.2)
        self.desktop = context.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", context)
        return self

    def __exit__(self, *_):
        self.desktop.terminate()
        self.process.wait()

    def edit(self, path, texts):
        """Types texts into cells of the sheet "S", as a user in the English locale would, and saves."""
        from com.sun.star.beans import PropertyValue

        def option(name, value):
            result = PropertyValue()
            result.Name, result.Value = name, value
            return result
        book = self.desktop.loadComponentFromURL(path.as_uri(), "_blank", 0, (option("Hidden", True),))
        sheet = book.Sheets.getByName("S")
        for cell, text in texts.items():
            sheet.getCellRangeByName(cell).setFormula(text)
        book.storeToURL(path.as_uri(), (option("FilterName", "Calc MS Excel 2007 XML"),))
        book.close(True)


class LibreOfficeImport(Project):
    def test_what_it_saved_unedited_changes_nothing(self):
        before = self.project()
        self.export()
        with Office(self.folder) as office:
            office.edit(self.folder / "w.xlsx", {})
        counts = self.imported("--apply")["counts"]
        self.assertEqual((counts["unchanged"], sum(counts.values())), (len(EDITS), len(EDITS)))
        self.assertEqual(self.saved(), before)

    def test_what_was_edited_in_it_comes_back(self):
        typed = {"A1": "neu & <neu>\nzwei", "A3": "260", "A4": "8", "A5": "=FALSE()",
                 "A6": "2027-01-02 03:04:05", "A7": "99.25", "A8": "aus", "A9": "Kunststoff",
                 "A10": "nein", "A12": "=1.5+2", "A14": "4.5"}
        self.project()
        self.export()
        with Office(self.folder) as office:
            office.edit(self.folder / "w.xlsx", typed)
        report = self.imported("--apply")
        self.assertEqual(report["counts"]["changed"], len(typed))
        self.assertIn("formula", self.row(report, "A12")["notice"])
        after = self.saved()
        for cell in typed:
            with self.subTest(cell=cell):
                self.assertIn(EDITS[cell][2], after)

    def test_an_openpyxl_edit_survives_it(self):
        self.project()
        self.export()
        self.edit({"A4": 8})
        with Office(self.folder) as office:
            office.edit(self.folder / "w.xlsx", {"A7": "5"})
        counts = self.imported()["counts"]
        self.assertEqual((counts["changed"], counts["unchanged"]), (2, len(EDITS) - 2))


if __name__ == "__main__":
    if "TESSERA_FULL" not in os.environ:
        sys.exit(77)
    del Project
    unittest.main()
