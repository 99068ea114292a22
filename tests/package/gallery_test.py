"""The page on what the sample product shows, beside headers, sources and menus: gallery_test.py LIBCLANG NAME runs one of the tests below."""

import re
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).parents[2]
MODELER = ROOT / "apps/modeler"
PAGE = (ROOT / "docs/gallery.md").read_text(encoding="utf-8")
MOST_BYTES = 80_000


def rows():
    """The cells of all tables below their heads."""
    lines = [line for line in PAGE.splitlines() if line.startswith("| ")]
    return [[cell.strip() for cell in line.strip("|").split("|")] for line in lines if not line.startswith("| header ")]


def shown():
    return [row for row in rows() if len(row) == 4]


def quoted(cell):
    return re.findall(r"`([^`]+)`", cell)


def menu_texts():
    """The texts of the English pack as a user reads them in a menu."""
    texts = re.findall(r'^ +0x\w+ "((?:[^"\\]|\\.)*)"', (MODELER / "resources/2057/modeler.rc").read_text("utf-8"), re.M)
    return {re.sub(r"\\t.*", "", text).replace("~", "").rstrip(".") for text in texts}


class Gallery(unittest.TestCase):
    def HasEveryPublicHeaderOnce(self):
        named = [header for row in rows() for header in quoted(row[0])]
        headers = [header.name for header in (ROOT / "kivara/include").glob("*.hpp")]
        self.assertGreater(len(headers), 40)
        self.assertEqual(sorted(named), sorted(headers))

    def GivesAReasonForWhatIsNotShown(self):
        reasons = [row[1] for row in rows() if len(row) == 2]
        self.assertGreater(len(reasons), 5)
        self.assertTrue(all(len(reason) > 10 for reason in reasons))

    def NamesSourcesThatAreThere(self):
        self.assertGreater(len(shown()), 20)
        for row in shown():
            self.assertTrue(quoted(row[3]), row)
            for source in quoted(row[3]):
                self.assertTrue((MODELER / source).is_file(), source)

    def NamesMenusAsTheyAre(self):
        texts = menu_texts()
        for row in shown():
            for part in row[2].removeprefix("the menu ").split(" > "):
                if part != "the start of the program":
                    self.assertIn(part, texts, row)

    def HasSmallPictures(self):
        pictures = re.findall(r"!\[[^]]+\]\(([^)]+)\)", PAGE)
        self.assertGreater(len(pictures), 2)
        for picture in pictures:
            content = (ROOT / "docs" / picture).read_bytes()
            self.assertTrue(content.startswith(b"\x89PNG"), picture)
            self.assertLess(len(content), MOST_BYTES, picture)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *(f"Gallery.{name}" for name in sys.argv[2:])])
