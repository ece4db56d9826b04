"""The schema of content documents takes what the page shows, and refuses what is none."""

import re
import unittest

from lxml import etree

from tessera import CONTENT_DOCUMENTS, ROOT, content, document


def is_valid(text):
    return CONTENT_DOCUMENTS.validate(etree.fromstring(text.encode("utf-8")))


class Schema(unittest.TestCase):
    def test_the_page_shows_a_content_document(self):
        page = (ROOT / "docs" / "content-document.md").read_text(encoding="utf-8")
        example = re.search(r"```xml\n<\?xml.*?\?>\n(.*?)```", page, re.S).group(1)
        self.assertTrue(is_valid(example), CONTENT_DOCUMENTS.error_log)

    def test_what_differs_from_the_format_is_refused(self):
        good = document(content("S!A1", values=[(("Long", "1"), "1")]))
        self.assertTrue(is_valid(good))
        for part, broken in (
                ('<Contents Version="1"', "<Contents"),
                ('<Property Version="2"', '<Property Version="3"'),
                ('<SystemType Type="Long"', '<SystemType Type="Integer"'),
                ('Data="120"', 'Data="12,5"'), ('<Document Version="1">', '<Document>'),
                ('AllValuesNumeric Type="Boolean" Data="0"', 'AllValuesNumeric Type="Boolean" Data="1"'),
                ('<ValueItems Version="1">', '<Presentation Type="Long" Data="0"/><ValueItems Version="1">'),
                ('<KelosValue Type="Empty"', '<KelosValue Type=""'),
                (' Data="S!A1"', ""), ("</Contents>", '<Extra Version="1"/></Contents>')):
            with self.subTest(broken):
                self.assertIn(part, good)
                self.assertFalse(is_valid(good.replace(part, broken)))


if __name__ == "__main__":
    unittest.main()
