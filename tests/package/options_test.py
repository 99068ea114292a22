"""What comes from the list of options: options_test.py LIBCLANG NAME runs one of the tests below."""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LIST = "kivara/frame/cmdline_options.inc"
HEADER = "kivara/include/acmdline.hpp"
PAGE = "docs/command-line.md"


class Options(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = Path(folder.name)
        for name in (LIST, HEADER, PAGE):
            (self.tree / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(ROOT / name, self.tree / name)

    def change_list(self, before, after):
        text = self.read(LIST)
        self.assertEqual(text.count(before), 1)
        (self.tree / LIST).write_text(text.replace(before, after), encoding="utf-8")

    def read(self, name):
        return (self.tree / name).read_text(encoding="utf-8")

    def written(self):
        """The lines that the script adds to header and page, and those that it takes away."""
        former = [set(self.read(name).splitlines()) for name in (HEADER, PAGE)]
        subprocess.run([sys.executable, ROOT / "scripts/options.py", self.tree], check=True)
        now = [set(self.read(name).splitlines()) for name in (HEADER, PAGE)]
        return [sorted(b - a) for a, b in zip(former, now)], [sorted(a - b) for a, b in zip(former, now)]

    def ChangeNothingWhereTheListIsTheSame(self):
        self.assertEqual(self.written(), ([[], []], [[], []]))

    def ComeIntoHeaderAndPageFromOneRow(self):
        self.change_list('KIV_FLAG("assert"', 'KIV_FLAG("sweet", isSweet, on, "a \\"sweet\\" fruit")\nKIV_FLAG("assert"')
        self.change_list('KIV_TEXT("u"', 'KIV_NUMBER("weight", getWeight,\n           "in grams (at most 9) "\n           "or none")\nKIV_TEXT("u"')
        added, gone = self.written()
        self.assertEqual(added, [['  int getWeight() const; ///< "weight"', '  static bool isSweet(); ///< "sweet", or no GUI'],
                                 ['| `-sweet` | `isSweet` | a "sweet" fruit; always on without a GUI |',
                                  '| `-weightVALUE` | `getWeight` | in grams (at most 9) or none |']])
        self.assertEqual(gone, [[], []])

    def StandInTheHeaderInTheOrderOfTheList(self):
        self.change_list('KIV_FLAG("kivlogin"', 'KIV_FLAG("first", isFirst, asGiven, "")\nKIV_FLAG("kivlogin"')
        self.change_list('KIV_TEXT("f"', 'KIV_TEXT("fruit", getFruit, "")\nKIV_TEXT("f"')
        self.written()
        header = self.read(HEADER)
        places = [header.index(f" {getter}(") for getter in ("isFirst", "kivLogin", "getStartupKivScript", "getFruit", "getFontFace")]
        self.assertEqual(places, sorted(places))

    def LeaveHeaderAndPageWithTheirRow(self):
        self.change_list('KIV_FLAG("winlogin", trySingleSignOn, asGiven, "read by products")\n', "")
        added, gone = self.written()
        self.assertEqual(added, [[], []])
        self.assertEqual([[line.split("///")[0].strip() for line in gone[0]], gone[1]],
                         [["static bool trySingleSignOn();"], ["| `-winlogin` | `trySingleSignOn` | read by products |"]])

    def ReplaceADeclarationOfAnotherType(self):
        self.change_list('KIV_NUMBER("port"', 'KIV_TEXT("port"')
        self.assertEqual(self.written()[0], [['  SV::String getWSPortNumber() const; ///< "port"'], []])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *(f"Options.{name}" for name in sys.argv[2:])])
