"""The page on security beside the tests that it names, and formats in the code: security_test.py LIBCLANG NAME runs one of the tests below."""

import re
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).parents[2]
PAGE = ROOT / "docs/security.md"

TEST = re.compile(r"^TEST(?:_F|_P)?\((\w+), (\w+)\)", re.MULTILINE)
NAMED = re.compile(r"`(\w+\.\w+)`")
COLUMNS = 5

# Functions that format, and which of their arguments is the format.
FORMATTERS = {
    "addText": 0, "vaddText": 0, "_addLog": 0, "addMessage": 0, "Kiv_Trace": 0, "printf": 0, "sprintf": 1, "fprintf": 1, "snprintf": 2,
    "_snprintf": 2, "_vsnprintf": 2, "__ms_fprintf": 1, "__ms_vfprintf": 1, "__ms_sprintf": 1, "wsprintfA": 1, "BoundedText": 0,
}
# These names mean something else elsewhere.
IN_CRASH_REPORTS = {"write": 0, "writeError": 0}
CALL = re.compile(r"(?<![\w>.])(?:std::|kivara::)?(\w+)(?:<[^<>;]*>)?(?:\s+(?:const\s+)?\w+)?\(|(?:->|\.)(\w+)\(")
# A caller's format, handed on; or one of two literals.
HANDED_ON = re.compile(r'(?:(?:kivara::)?orEmpty\()?format\)?|format != nullptr \? format : ""|.*\? "[^"]*" : "[^"]*"')


def cases_of(file):
    return {f"{suite}.{case}" for suite, case in TEST.findall(file.read_text(encoding="utf-8"))}


def built_cases():
    """Of the files that a CMakeLists.txt names."""
    cases = set()
    for lists in (ROOT / "tests").rglob("CMakeLists.txt"):
        for name in re.findall(r"(?<![\w/}])([\w/]+_test\.cpp)\b", lists.read_text(encoding="utf-8")):
            cases |= cases_of(lists.parent / name)
    return cases


def claims():
    """The rows of the tables, as their cells."""
    rows = [line for line in PAGE.read_text(encoding="utf-8").splitlines() if line.startswith("| ")]
    return [[cell.strip() for cell in row[1:-1].split("|")] for row in rows if not row.startswith("| what |")]


def argument(text, start, index):
    """An argument of the call whose parenthesis is before the start."""
    depth, quoted, place, arguments = 0, False, start, [""]
    while place < len(text):
        c = text[place]
        if quoted:
            quoted = c != '"' or text[place - 1] == "\\"
        elif c == '"':
            quoted = True
        elif c in "([{":
            depth += 1
        elif c in ")]}":
            depth -= 1
            if depth < 0:
                break
        if c == "," and depth == 0 and not quoted:
            arguments.append("")
        else:
            arguments[-1] += c
        place += 1
    return arguments[index].strip() if index < len(arguments) else None


def formats():
    """File, line and format of each call that formats."""
    for folder in ("kivara", "toolkit"):
        for file in sorted((ROOT / folder).rglob("*.cpp")):
            text = file.read_text(encoding="utf-8")
            functions = FORMATTERS | (IN_CRASH_REPORTS if file.parent.name == "crash" else {})
            functions |= {alias: 0 for alias in re.findall(r"using (\w+) = (?:kivara::)?BoundedText<", text)}
            for call in CALL.finditer(text):
                name = call.group(1) or call.group(2)
                line = text[text.rfind("\n", 0, call.start()) + 1 : call.start()]
                is_declared = line == "" or re.match(r"(bool|void) ", line)
                if name not in functions or "//" in line or is_declared:
                    continue
                yield file.relative_to(ROOT), text.count("\n", 0, call.start()) + 1, argument(text, call.end(), functions[name])


class Security(unittest.TestCase):
    def EachClaimHasTestsThatThereAre(self):
        cases = built_cases()
        self.assertGreater(len(claims()), 40)
        for cells in claims():
            self.assertEqual(len(cells), COLUMNS, cells)
            named = NAMED.findall(cells[-1])
            self.assertTrue(named, f"nothing shows this claim: {cells[0]}")
            for case in named:
                self.assertTrue(case in cases, f"there is no test {case}: {cells[0]}")

    def EachTestOfTheRoomIsOnThePage(self):
        named = set(NAMED.findall(PAGE.read_text(encoding="utf-8")))
        room = set().union(*(cases_of(file) for file in (ROOT / "tests/security").glob("*_test.cpp")))
        self.assertGreater(len(room), 20)
        self.assertEqual(room - named, set())

    def FormatsStandWhereTheyAreUsed(self):
        found = list(formats())
        self.assertGreater(len(found), 80)
        for file, line, text in found:
            literal = text is not None and (text.startswith('"') or HANDED_ON.fullmatch(text))
            self.assertTrue(literal, f"{file}:{line}: the format is {text}")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *(f"Security.{name}" for name in sys.argv[2:])])
