"""What holds for the shell blocks of all pages, and how they are run: shell_test.py LIBCLANG NAME runs one of the tests below."""

import re
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True
from page import blocks  # noqa: E402 (the setting has to come first)
from shell import NOT_RUN, ROOT, SERVERS, changed, name_of, same  # noqa: E402

COMMANDS = re.compile(r"\$ |(\./dev|apt-get|bash|cat|cd|cmake|cp|ctest|curl|git|kivcrash|kivml|kivuser|ls|mkdir|pacman|sudo|wine)( |$)")
OTHER_NAMES = ("bash", "bat", "cmd", "console", "powershell", "shell", "zsh")
PAGES = [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]


def shell_blocks():
    return [(name_of(page), block) for page in PAGES for block in blocks(page) if block.language == "sh"]


def names_of_tests():
    found = []
    for source in (ROOT / "tests").rglob("*_test.cpp"):
        found += re.findall(r"^(?:TEST|TEST_F|TEST_P|TYPED_TEST)\((\w+),\s*(\w+)\)", source.read_text(encoding="utf-8"), re.MULTILINE)
    return [f"{suite}.{case}" for suite, case in found]


class ShellBlocks(unittest.TestCase):
    def EveryOneIsMarkedAsOne(self):
        """So that it is run: a block of another kind does not begin with a command."""
        self.assertGreater(len(shell_blocks()), 20)
        for page in PAGES:
            for block in blocks(page):
                self.assertNotIn(block.language, OTHER_NAMES, f"{name_of(page)}:{block.line}: a block for the shell is one of ```sh")
                if block.language != "sh":
                    self.assertIsNone(COMMANDS.match(block.text), f"{name_of(page)}:{block.line}: this is a block of ```sh")

    def ThoseThatAreNotRunAreThere(self):
        for table in (NOT_RUN, SERVERS):
            for (name, begin) in table:
                found = [block for page, block in shell_blocks() if page == name and block.text.startswith(begin)]
                self.assertEqual(len(found), 1, f"{name} has no block, or more than one, that begins with {begin!r}")

    def NameTestsThatThereAre(self):
        names = names_of_tests()
        for page, block in shell_blocks():
            for name in re.findall(r"\./dev .*?-R '?([^' \n]+)", block.text):
                self.assertTrue(any(re.search(name, test) for test in names), f"{page}:{block.line}: no test is named {name}")
            for name in re.findall(r"--gtest_filter='?([^' ]+)", block.text):
                pattern = re.escape(name).replace(r"\*", ".*")
                self.assertTrue(any(re.fullmatch(pattern, test) for test in names), f"{page}:{block.line}: no test is named {name}")

    def OptionsOfTheSampleProductAreItsOwnOrThoseOfEveryProgram(self):
        page = (ROOT / "docs/command-line.md").read_text(encoding="utf-8")
        names = set(re.findall(r"^\| `-(\w+?)(?:VALUE)?` \|", page, re.MULTILINE))
        for source in (ROOT / "apps/modeler").rglob("*.cpp"):
            names |= set(re.findall(r'(?:isFlag|getValue)\("(\w+)"\)', source.read_text(encoding="utf-8")))
        self.assertGreater(len(names), 30)
        for page, block in shell_blocks():
            for line in re.findall(r"^\./dev run([^#\n]*)", block.text, re.MULTILINE):
                for option in line.split():
                    known = any(option.startswith(f"-{name}") for name in names if len(name) > 1 or name in "fhP")
                    self.assertTrue(known, f"{page}:{block.line}: no program knows {option}")

    def CommandsOfDevWithinTheTextAreAccepted(self):
        """The words in capitals stand for something of their kind, and the first of several values for all."""
        words = {"DIR": "there", "FILE...": "kivara/frame/aapp.cpp", "FILE": "kivara/frame/aapp.cpp", "N": "2", "NAME": "Name", "...": ""}
        for page in PAGES:
            for command in re.findall(r"`(\./dev [^`]+)`", re.sub(r"```.*?```", "", page.read_text(encoding="utf-8"), flags=re.DOTALL)):
                with self.subTest(page=name_of(page), command=command):
                    given = " ".join(words.get(word, word.split("|")[0]) for word in command.split())
                    given = re.sub(r"build/release/bin/\w+\.exe", "cmd", given)  # which this build may have elsewhere
                    if len(given.split()) == 2:
                        given += " --help"  # the name of a verb
                    script = f"set -euo pipefail; source ./dev; supervised() {{ :; }}; main {given.removeprefix('./dev ')}"
                    ended = subprocess.run(["bash", "-c", script], cwd=ROOT, capture_output=True, text=True, check=False)
                    self.assertEqual(ended.returncode, 0, ended.stderr)

    def OutputIsComparedButForWhatVaries(self):
        self.assertTrue(same("plan: 12 days\n", "plan: 12 days\r\n"))
        self.assertFalse(same("plan: 12 days\n", "plan: 13 days\n"))
        self.assertFalse(same("one\n", "one\ntwo\n"))
        self.assertTrue(same("one\n...\nthree\n", "one\ntwo\n2\nthree\n"))
        self.assertFalse(same("one\n...\nthree\n", "one\ntwo\n"))
        self.assertTrue(same("a.cpp:7 in ... at +0x16\n", "a.cpp:7 in /tmp/x at +0x1F48\n"))
        self.assertFalse(same("a.cpp:7 in ... at +0x16\n", "a.cpp:8 in /tmp/x at +0x16\n"))
        self.assertTrue(same("version: 7.20.00.5050\n", "version: 7.30.01.5100\n"))
        self.assertTrue(same("2026.11.22, 08:30:15: 3 ms, thread 4\n", "2027.01.01, 09:31:16: 12 ms, thread 88\n"))
        self.assertTrue(same("time: 22.11.2026, 6:30.15\n", "time: 01.01.2027, 16:31.16\n"))
        self.assertFalse(same("time: 2026.11.22, 06:30:15\n", "time: 22.11.2026, 6:30.15\n"))

    def FilesAreWrittenWhereThePageSays(self):
        self.assertEqual(changed("a\n", "b\n", None, None, None), "b\n")
        self.assertEqual(changed("a\n", "b\n", "at the end", None, None), "a\nb\n")
        self.assertEqual(changed("  one(1);\n  two(2);\n", "  three\n", "in place of `one(`", "one(", None), "  three\n  two(2);\n")
        self.assertEqual(changed("one\ntwo\n", "three\n", "after `one`", None, "one"), "one\nthree\ntwo\n")
        for text in ("two\n", "one\none\n"):
            with self.assertRaises(ValueError):
                changed(text, "x\n", "after `one`", None, "one")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *(f"ShellBlocks.{name}" for name in sys.argv[2:])])
