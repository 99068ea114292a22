"""The script behind `./dev mutants`: mutants_test.py LIBCLANG NAME runs one of the tests below."""

import os
import subprocess
import sys
import tempfile
import tomllib
import unittest
from pathlib import Path

from mutants import results, syntax
from mutants.catalogue import in_order, included_and_defined, mutants_of
from mutants.changes import changes_of
from mutants.known import Known, entry_for
from mutants.results import Results
from mutants.sandbox import MARK, Sandbox
from mutants.suite import Case, Suite, _startable
from mutants.tree import Tree

LIBCLANG = sys.argv[1]

SOURCE = """\
// One + two: a comment has no operators.
#define CHECKED(x) ((x) + 1)
static_assert(sizeof(int) == 4);
void first(int);
void second(int);
int sum(int a, int b) {
  first(a); // where the statement ends
  second(7);
  if (a < b && b)
    first(CHECKED(a - b));
  else // a body
    second(b);
  while (a != 3) // another one
    --a;
  for (;; first(b))
    break;
  const char * text = "%d wood\\n";
  bool odd = a & 1;
  return odd ? -a : *text;
}
"""

FOUND = """\
statement: first(a) =>
order: first(a); // where the statement ends
  second(7) => second(7); // where the statement ends
  first(a)
statement: second(7) =>
constant: 7 => 6
constant: 7 => 8
condition: a < b && b => !(a < b && b)
condition: a < b && b => a < b
condition: a < b && b => b
condition: a < b && b => false
condition: a < b && b => true
operator: < => <=
operator: < => >=
operator: && => ||
statement: first(CHECKED(a - b)) =>
statement: second(b) =>
condition: a != 3 => false
operator: != => ==
constant: 3 => 2
constant: 3 => 4
operator: -- => ++
statement: --a =>
statement: break =>
constant: "%d wood\\n" => "%d wpod\\n"
condition: a & 1 => !(a & 1)
operator: & => |
constant: 1 => 0
constant: 1 => 2
condition: odd => !(odd)
condition: odd => false
condition: odd => true
operator: - =>
"""


def read(text):
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "source.cpp"
        path.write_text(text, encoding="utf-8")
        return syntax.Reader(LIBCLANG).read(str(path), [])


def shown(text):
    found = changes_of(read(text))
    return "".join(f"{each.kind}: {text[each.start:each.end]} => {each.text}".rstrip() + "\n" for each in found)


def mutants(text=SOURCE, path="kivara/text/asource.cpp"):
    return list(mutants_of(path, "text", text, changes_of(read(text))))


class Mutants(unittest.TestCase):
    maxDiff = None

    def FindsEachKindOfChangeInASource(self):
        self.assertEqual(shown(SOURCE), FOUND)

    def FindsOperatorsThatAreFunctions(self):
        text = "struct T { bool operator==(T) const; T operator+(T) const; };\nbool same(T a, T b) { return a + b == b; }\n"
        self.assertIn("operator: == => !=\n", shown(text))
        self.assertIn("operator: + => -\n", shown(text))

    def ChangesCharactersOfTextsAndNumbersOfEachForm(self):
        for text, other in (("'a'", "'b'"), (r"'\0'", "'x'"), ('""', '"?"'), ('"ü"', '"x"'), ("0x1F", "0x20"), ("0U", "1U"), ("true", "false"),
                            ("0.5", "1.0"), ("0.0f", "1.0f"), ("1'000", "1001"), (r'"\n%5.2f"', None)):
            expected = f"constant: {text} => {other}\n" if other else ""
            with self.subTest(text):
                self.assertIn(expected, shown(f"auto const value = {text};\n"))
                self.assertEqual(bool(expected), "constant" in shown(f"auto const value = {text};\n"))

    def LeavesAssignmentsThatHaveNothingInCommonInTheirOrder(self):
        text = "int f(int);\nvoid set(int * a, int * b, int c) {{ {} {} }}\n"
        for first, second, swapped in (("*a = 1;", "*b = 2;", False), ("*a = c;", "*b = c;", False), ("*a = c;", "*b = *a;", True), ("*a = f(1);", "f(2);", True)):
            self.assertEqual("order:" in shown(text.format(first, second)), swapped)

    def LeavesFieldsThatHaveNothingInCommonInTheirOrder(self):
        text = """\
struct Pair {{ int x; int y; int sum() const; }};
int use(int);
int all(Pair);
struct Owner {{ Pair pair; int other; void set(Pair a, Pair const * c) {{ {} {} }} }};
"""
        for first, second, swapped in (("a.x = 1;", "a.y = c->x;", False), ("a.x = 1;", "a.y = a.x;", True), ("a.x = 1;", "pair = a;", True),
                                       ("pair.x = use(1);", "a.x = 2;", False), ("a.x = a.sum();", "a.y = 2;", True), ("pair.x = 1;", "this->pair.x = 2;", True),
                                       ("pair.x = 1;", "other = 2;", False), ("use(a.x);", "a.y = 2;", False), ("all(a);", "a.y = 2;", True)):
            with self.subTest(first + second):
                self.assertEqual("order:" in shown(text.format(first, second)), swapped)

    def ReadsPlacesAfterLettersBeyondAscii(self):
        text = 'char const * u = "ü";\nint const seven = 7;\n'
        self.assertIn("constant: 7 => 8\n", shown(text))

    def PicksTheSameWithTheSameSeed(self):
        first, same, other = (list(in_order(mutants(), seed)) for seed in ("1", "1", "2"))
        self.assertEqual(first, same)
        self.assertNotEqual(first, other)
        self.assertEqual(set(first), set(other))

    def TakesTheKindsByTurns(self):
        kinds = [mutant.change.kind for mutant in in_order(mutants(), "1")]
        self.assertEqual(kinds[:5], ["operator", "constant", "condition", "order", "statement"])

    def TakesFewOfTheValuesOfATable(self):
        text = f"int const table[] = {{{', '.join(['5'] * 400)}}};\nint const value = 5;\n"
        found = mutants(text)
        picked = list(in_order(found, "1"))
        self.assertEqual(len(found), 802)
        self.assertLess(len(picked), 120)
        self.assertEqual(sum(not mutant.change.in_table for mutant in picked), 2)

    def KnowsAChangeAgainWhenLinesMove(self):
        names = {mutant.name for mutant in mutants()}
        moved = mutants("int another;\n\n" + SOURCE)
        self.assertLessEqual(names, {mutant.name for mutant in moved})

    def GoesOnWithTheResultsOfARunThatWasEnded(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "results.jsonl"
            noticed, unnoticed = mutants()[:2]
            written = Results(path, "sources", False)
            written.add(noticed, results.NOTICED, SOURCE, "A.Case")
            written.add(unnoticed, results.UNNOTICED, SOURCE)
            with open(path, "a", encoding="utf-8") as file:
                file.write('{"name": "cut of')
            self.assertEqual(set(Results(path, "sources", False).found), {noticed.name, unnoticed.name})
            self.assertEqual(set(Results(path, "others", True).found), {noticed.name})
            self.assertTrue((outdated := Results(path, "other sources", False)).outdated)
            self.assertEqual(outdated.found, {})

    def CountsWhatWasNoticedOrMakesNoDifference(self):
        verdicts = [results.NOTICED] * 6 + [results.SAME, results.KNOWN, results.UNNOTICED, results.UNNOTICED, results.BROKEN]
        self.assertIn("| ui | 10 | 6 | 2 | 2 | 80.0 % |", results.table([{"room": "ui", "verdict": verdict} for verdict in verdicts]))

    def ReadsTheEntryThatItPrintsForAChangeWithoutDifference(self):
        change = mutants('char const * text = "it\'s";\nint const seven = 7;\n')
        with tempfile.TemporaryDirectory() as folder:
            path, kept = Path(folder) / "mutants.toml", Results(Path(folder) / "results", "", False)
            entries = [entry_for(kept.add(mutant, results.UNNOTICED, SOURCE)).replace('""', '"why"') for mutant in change]
            path.write_text("\n".join(entries), encoding="utf-8")
            self.assertEqual(len(tomllib.loads(path.read_text())["mutant"]), 3)
            self.assertEqual([Known(path).reason(mutant) for mutant in change], ["why"] * 3)
            self.assertEqual(Known(path).stale(change[1:])[0][1], """char const * text = "it's";""")

    def TriesTheTestsOfTheSameNameFirst(self):
        suite = Suite(None, None, 1)
        suite.cases = [Case(file, "text", (), file, seconds=seconds) for file, seconds in
                       (("areader_test", 1), ("aparser_test", 9), ("aparser_rawtext_test", 3), ("aparser_model_test", 1))]
        mutant = mutants(path="kivara/text/parser/aparser.cpp")[0]
        self.assertEqual([case.name for case in suite.near_first(mutant)],
                         ["aparser_test", "aparser_model_test", "aparser_rawtext_test", "areader_test"])
        suite.learn(mutant, suite.cases[0])
        self.assertEqual(suite.near_first(mutant)[0].name, "areader_test")

    def TakesTheTimeThatACaseTakesFromTheLastRunsOfCtest(self):
        suite = Suite(None, None, 1)
        suite.cases = [Case(name, "text", ()) for name in ("A.WithWords/(1, 2)", "B.NeverEnded", "C.New")]
        with tempfile.TemporaryDirectory() as folder:
            costs = Path(folder) / "costs"
            suite.know_times(costs)
            costs.write_text("A.WithWords/(1, 2) 5 0.25\nB.NeverEnded 1 0\n---\nC.New\n")
            suite.know_times(costs)
        self.assertEqual([case.seconds for case in suite.cases], [0.25, 0, 0])

    def RunsACaseAloneOrBesideThoseWithoutItsLock(self):
        plain, other, locked, second = (Case(name, "ui", ()) for name in "abcd")
        alone = Case("e", "ui", (), alone=True)
        locked.locks = second.locks = frozenset(["desktop"])
        self.assertEqual(_startable([locked, second, plain], [], 2), [locked, plain])
        self.assertEqual(_startable([alone, plain], [other], 2), [])
        self.assertEqual(_startable([plain, alone, other], [], 3), [plain])
        self.assertEqual(_startable([alone, plain], [], 2), [alone])
        self.assertEqual(_startable([plain], [alone], 2), [])

    def MendsWhatARunThatWasEndedHasLeftInItsCopy(self):
        with tempfile.TemporaryDirectory() as folder:
            root, work = Path(folder) / "root", Path(folder) / "work"
            subprocess.run(["git", "init", "-q", str(root)], check=True)
            (root / "a.cpp").write_text("one")
            (root / "b.cpp").write_text("two")
            tree = Tree(root, work, None)
            tree.renew()
            untouched = (work / "tree/b.cpp").stat().st_mtime_ns
            tree.write("a.cpp", "changed")
            (work / "tree/c.cpp").write_text("gone from the checkout")
            tree.renew()
            self.assertEqual((root / "a.cpp").read_text(), "one")
            self.assertEqual((work / "tree/a.cpp").read_text(), "one")
            self.assertEqual((work / "tree/b.cpp").stat().st_mtime_ns, untouched)
            self.assertFalse((work / "tree/c.cpp").exists())

    def KnowsNoTestProgramThatIsNotBuiltAnyMore(self):
        with tempfile.TemporaryDirectory() as folder:
            tree = Tree(folder, folder, None)
            room = tree.folder / "tests/text"
            room.mkdir(parents=True)
            room.joinpath("CMakeLists.txt").write_text("add_custom_target(built_test)\nadd_custom_target(helper)\n")
            project = "cmake_minimum_required(VERSION 3.20)\nproject(p NONE)\nadd_subdirectory(tests/text)\n"
            (tree.folder / "CMakeLists.txt").write_text(project)
            subprocess.run(["cmake", "-G", "Ninja", "-S", str(tree.folder), "-B", str(tree.build)], check=True, stdout=subprocess.DEVNULL)
            for name in ("built_test", "helper", "gone_test"):
                (tree.build / "tests/text/CMakeFiles" / f"{name}.dir").mkdir(parents=True, exist_ok=True)
            self.assertEqual(tree.targets_of("text"), ["built_test"])

    def ReadsASourceWithAllFoldersOfTheCommandThatCompilesIt(self):
        self.assertEqual(included_and_defined("g++ -DA=1 -Iown -isystem other -O2 -o a.obj -c a.cpp".split()),
                         ["-DA=1", "-Iown", "-isystem", "other"])

    def LetsChangedCodeWriteNothingOfTheUsers(self):
        with self.sandbox() as (sandbox, folder):
            (folder / "mine").write_text("mine")
            code = sandbox.run(["sh", "-c", f"rm -f {folder}/mine; echo x >{folder}/other; echo x >/tmp/temporary"])
            self.assertEqual(code, 0)
            self.assertEqual(sorted(path.name for path in folder.iterdir()), ["mine", "work"])
            self.assertTrue((sandbox.temporary / "temporary").exists())

    def EndsWhatHasTooLittleTimeWithAllThatItStarted(self):
        with self.sandbox() as (sandbox, folder):
            code = sandbox.run(["sh", "-c", "setsid sleep 1000 & echo $! >/tmp/pid; sleep 1000"], longest=1)
            self.assertIsNone(code)
            child = (sandbox.temporary / "pid").read_text().strip()
            # Where no process waits for orphans, as in a container, an ended process keeps its number.
            self.assertNotIn(MARK.encode(), _environment_of(child))

    def sandbox(self):
        return _SandboxInFolder(self)


class _SandboxInFolder:
    def __init__(self, test):
        self.test = test

    def __enter__(self):
        self.held = tempfile.TemporaryDirectory(dir=os.environ.get("KIVARA_WORK"))
        folder = Path(self.held.name)
        os.environ.update(WINEPREFIX="none", WINELOADER="none")
        sandbox = Sandbox(folder, folder / "work", True)
        try:
            fault = sandbox.check()
        except FileNotFoundError:
            fault = "there is no such program"
        if fault:
            self.test.skipTest(f"bwrap does not work here: {fault}")
        return sandbox, folder

    def __exit__(self, *fault):
        self.held.cleanup()


def _environment_of(pid):
    try:
        return Path(f"/proc/{pid}/environ").read_bytes()
    except OSError:
        return b""


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *(f"Mutants.{name}" for name in sys.argv[2:])])
