"""The page on damaged input beside the tests: damage_test.py LIBCLANG NAME runs one of the tests below."""

import re
import sys
import unittest
from fnmatch import fnmatchcase
from pathlib import Path

ROOT = Path(__file__).parents[2]

CASE = re.compile(r"^TEST(?:_F|_P)?\((\w+), (\w+)\)", re.MULTILINE)
LONG_TEST = re.compile(r'kivara_long_test\(\w+ FILTER "([^"]+)"\)')
ROW = re.compile(r"^\| .* \| `(\w+\.\w+)` \| ([\d,]+) \| ([\d,]+) \|$")
DAMAGES = re.compile(r'^#include "support/data/damage\.hpp"', re.MULTILINE)


def rows():
    """The test and both numbers of each row."""
    lines = (ROOT / "docs/damaged-input.md").read_text(encoding="utf-8").splitlines()
    table = [line for line in lines if line.startswith("| ")][1:]
    found = [(line, ROW.match(line)) for line in table]
    return [(line, *match.groups()) if match else (line, None, "0", "0") for line, match in found]


def number(digits):
    return int(digits.replace(",", ""))


def cases():
    """The cases of each file of tests."""
    return {file: {".".join(case) for case in CASE.findall(file.read_text(encoding="utf-8"))}
            for file in (ROOT / "tests").rglob("*_test.cpp")}


def long_patterns(file):
    """Those of the folder that a file of tests belongs to."""
    folder = next(folder for folder in file.parents if (folder / "CMakeLists.txt").exists())
    filters = LONG_TEST.findall((folder / "CMakeLists.txt").read_text(encoding="utf-8"))
    return [pattern for text in filters for pattern in text.split(":")]


class DamagedInput(unittest.TestCase):
    def EachFormatOnThePageHasItsTest(self):
        known = set().union(*cases().values())
        self.assertGreater(len(rows()), 40)
        for line, test, _, _ in rows():
            self.assertIsNotNone(test, f"no test, or no numbers: {line}")
            self.assertIn(test, known, f"there is no such test: {line}")

    def EachTestOnThePageIsALongOneToo(self):
        files = {test: file for file, its_cases in cases().items() for test in its_cases}
        for line, test, everyday, long in rows():
            # A case with parameters has the name of its instantiation before its own.
            self.assertTrue(any(fnmatchcase(name, pattern) for pattern in long_patterns(files[test])
                                for name in (test, f"Any/{test}/0")),
                            f"./dev long does not run it: {line}")
            self.assertEqual(number(long), 100 * number(everyday), f"./dev long does a hundred times as much: {line}")

    def EachTestThatDamagesInputIsOnThePage(self):
        on_page = {test for _, test, _, _ in rows()}
        for file, its_cases in cases().items():
            if file.parent != ROOT / "tests/support/data" and DAMAGES.search(file.read_text(encoding="utf-8")):
                self.assertTrue(its_cases & on_page, f"docs/damaged-input.md names no test of {file}")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *(f"DamagedInput.{name}" for name in sys.argv[2:])])
