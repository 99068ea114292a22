"""The page on boxes and messages beside the texts that the code shows: boxes_test.py LIBCLANG NAME runs one of the tests below."""

import re
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).parents[2]

# What stands on the page for something that differs from one time to the other: names, numbers, an example of an error code.
VARIABLE = re.compile(r"\.\.\.|NAME72\.dll|\b(?:NAME|LANGUAGE|FILE|FOLDER|ID|N|M)\b|\b[a-z]+-\d+ \[[\d.]+\]")
# Sentences are put together from literals of their own.
END_OF_SENTENCE = re.compile(r"(?<=[.!:])\s")

LITERALS = re.compile(r'"(?:[^"\\\n]|\\.)*"(?:\s*"(?:[^"\\\n]|\\.)*")*')
BOX_CALL = re.compile(r"\b(?:MessageBoxA|FatalAppExitA|ShowBoxOrLog|ShowBoxOrNothing)\(")


def in_one_line(text):
    return re.sub(r"\s+", " ", text.replace("\\n", " ").replace('\\"', '"')).strip()


def literals_of(source):
    """The string literals, with those joined that follow each other."""
    return [in_one_line(re.sub(r'"\s*"', "", found)[1:-1]) for found in LITERALS.findall(source)]


def sources():
    files = [*(ROOT / "kivara").rglob("*.cpp"), *(ROOT / "toolkit").rglob("*.cpp")]
    return {file: literals_of(file.read_text(encoding="utf-8")) for file in files}


def resources():
    return literals_of((ROOT / "resources/2057/kivara.rc").read_text(encoding="utf-8"))


def rows(of_dev):
    """The first cells of the tables: those of boxes, or those of ./dev."""
    page = (ROOT / "docs/boxes.md").read_text(encoding="utf-8")
    boxes, dev = page.split("## `./dev` stops")
    cells = [line.split(" | ")[0][2:] for line in (dev if of_dev else boxes).splitlines() if line.startswith("| ")]
    return [cell for cell in cells if '"' in cell and not cell.startswith("of Windows:")]


def fragments(cell):
    """The fixed parts of the texts that are quoted in a cell."""
    parts = []
    for text in re.findall(r'"([^"]+)"', cell):
        for sentence in END_OF_SENTENCE.split(text):
            parts += [part.strip(" []'()") for part in VARIABLE.split(sentence)]
    return [part for part in parts if len(part) > 1]


class Boxes(unittest.TestCase):
    def TextsOnThePageAreThoseOfTheCode(self):
        shown = [text for texts in sources().values() for text in texts] + resources()
        cells = rows(of_dev=False)
        self.assertGreater(len(cells), 10)
        for cell in cells:
            self.assertTrue(fragments(cell), cell)
            for part in fragments(cell):
                self.assertTrue(any(part in text for text in shown), f"nothing in the code says {part!r}: {cell}")

    def MessagesOfDevOnThePageAreThoseOfItsScripts(self):
        files = [ROOT / "dev", *(ROOT / "scripts").rglob("*.sh"), *(ROOT / "scripts").rglob("*.py")]
        files.append(ROOT / "tests/support/harness/run-under-wine")
        said = in_one_line(" ".join(file.read_text(encoding="utf-8") for file in files))
        cells = rows(of_dev=True)
        self.assertGreater(len(cells), 10)
        for cell in cells:
            self.assertTrue(fragments(cell), cell)
            for part in fragments(cell):
                self.assertTrue(part in said, f"no script says {part!r}: {cell}")

    def EverySourceThatShowsABoxIsOnThePage(self):
        page = [part for cell in rows(of_dev=False) for part in fragments(cell)]
        all_sources = sources()
        shows = [file for file in (ROOT / "kivara").rglob("*.cpp") if BOX_CALL.search(file.read_text(encoding="utf-8"))]
        self.assertGreater(len(shows), 5)
        for file in shows:
            own = [text for other in file.parent.glob(f"{file.stem}*.cpp") for text in all_sources[other]]
            self.assertTrue(any(part in text for part in page for text in own), f"docs/boxes.md lacks the box of {file}")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *(f"Boxes.{name}" for name in sys.argv[2:])])
