"""The test cases of a room. Each runs as under ctest: a process of its own, in its own environment, some of them alone."""

import json
import re
import tempfile
import time
from dataclasses import dataclass, field
from pathlib import Path

LEFT_OUT = {"huge", "long"}  # labels


@dataclass
class Case:
    name: str
    room: str
    words: tuple
    file: str = ""
    environment: dict = field(default_factory=dict)
    locks: frozenset = frozenset()
    alone: bool = False
    seconds: float = 0.0  # that it takes with nothing changed

    @property
    def longest(self):
        return 10 + 5 * self.seconds


class Suite:
    def __init__(self, tree, sandbox, jobs):
        self.tree, self.sandbox, self.jobs = tree, sandbox, jobs
        self.cases = []
        self._noticed = {}  # how often a case noticed something in a file

    def find(self, rooms):
        """All cases of the rooms, from ctest; their sources, from the programs."""
        listed = self._output(["ctest", "--test-dir", str(self.tree.build), "--show-only=json-v1"], (self.tree.folder,))
        programs = {target: room for room in rooms for target in self.tree.targets_of(room)}
        self.cases = [case for test in json.loads(listed)["tests"] for case in _case_of(test, programs)]
        files = {}
        for program in sorted({case.words[1] for case in self.cases}):
            files.update(self._files(program))
        for case in self.cases:
            case.file = files.get(_filter_of(case.words), "")

    def know_times(self, costs):
        """Takes what each case takes from the file in which ctest keeps that of its last runs, where there is one."""
        text = costs.read_text(encoding="utf-8", errors="replace") if costs.exists() else ""
        lines = (line.rsplit(" ", 2) for line in text.split("---")[0].splitlines())
        known = {words[0]: float(words[2]) for words in lines if len(words) == 3}
        for case in self.cases:
            case.seconds = known.get(case.name, case.seconds)

    def measure(self):
        """Runs the cases of which no time is known, with nothing changed. Which of them fail is returned; they are left out."""
        failed = []
        waiting = [case for case in self.cases if not case.seconds > 0]
        while failing := self.first_failure(waiting, longest=lambda case: 300):
            if not self.passes(failing, longest=300):
                failed.append(failing)
        self.cases = [case for case in self.cases if case not in failed]
        return failed

    def near_first(self, mutant):
        """The room's cases: those first that noticed something in the same file before, then by the names of files, then the quick."""
        stem = Path(mutant.path).stem

        def order(case):
            return -self._noticed.get((mutant.path, case.name), 0), -_nearness(stem, case.file), case.seconds
        return sorted((case for case in self.cases if case.room == mutant.room), key=order)

    def learn(self, mutant, case):
        self._noticed[mutant.path, case.name] = self._noticed.get((mutant.path, case.name), 0) + 1

    def first_failure(self, waiting, longest=lambda case: case.longest):
        """Runs the cases in their order, side by side, up to the first that fails, which is returned; those that passed are taken
        off the list, and so is that one."""
        running = {}
        try:
            while waiting or running:
                for case in _startable(waiting, [each[0] for each in running.values()], self.jobs):
                    running[case.name] = case, self._begin(case), time.monotonic()
                    waiting.remove(case)
                time.sleep(0.003)
                for case, process, begun in list(running.values()):
                    code, took = process.poll(), time.monotonic() - begun
                    if code is None and took < longest(case):
                        continue
                    del running[case.name]
                    self.sandbox.end(process)
                    if code != 0:
                        return case
                    case.seconds = case.seconds or took
            return None
        finally:
            for case, process, _ in running.values():
                self.sandbox.end(process)
                waiting.insert(0, case)
            self.sandbox.clear_temporary()

    def passes(self, case, longest=None, originals=False):
        """Whether one case passes by itself, also beside the unchanged DLLs."""
        words = list(case.words)
        if originals:
            words[1] = str(self.tree.originals / Path(words[1]).relative_to(self.tree.build / "bin"))
        return self.sandbox.run(words, case.environment, longest or case.longest) == 0

    def _begin(self, case):
        return self.sandbox.begin(case.words, case.environment)

    def _files(self, program):
        """The source of each case of a program, by the case's full name."""
        listing = self.sandbox.temporary / "cases.json"
        # The program sees the folder as the one for temporary files, or under its own name.
        seen = "/tmp/cases.json" if self.sandbox.protected else str(listing)
        runner = next(case.words[0] for case in self.cases)
        self.sandbox.run([runner, program, "--gtest_list_tests", f"--gtest_output=json:Z:{seen}"], longest=120)
        suites = json.loads(listing.read_text())["testsuites"]
        return {f"{suite['name']}.{case['name']}": Path(case["file"]).stem for suite in suites for case in suite["testsuite"]}

    def _output(self, words, writable):
        with tempfile.TemporaryFile("w+") as output:
            self.sandbox.run(words, writable=writable, output=output)
            output.seek(0)
            text = output.read()
        return text[text.index("{"):]


def _case_of(test, programs):
    """A test of ctest as a case of one of the programs; nothing where it is another kind of test, or is left out."""
    words = tuple(test.get("command", ()))
    properties = {each["name"]: each["value"] for each in test.get("properties", ())}
    room = programs.get(Path(words[1]).stem) if len(words) > 2 else None
    if not room or not _filter_of(words) or properties.get("DISABLED") or LEFT_OUT & set(properties.get("LABELS", ())):
        return []
    environment = dict(each.split("=", 1) for each in properties.get("ENVIRONMENT", ()))
    return [Case(test["name"], room, words, "", environment, frozenset(properties.get("RESOURCE_LOCK", ())),
                 bool(properties.get("RUN_SERIAL")))]


def _filter_of(words):
    return next((word.split("=", 1)[1] for word in words if word.startswith("--gtest_filter=")), "")


def _nearness(stem, file):
    """How many words the names of a source and of a test begin with in common; all of them is one more."""
    source, test = stem.split("_"), re.sub(r"_test$", "", file).split("_")
    count = 0
    while count < min(len(source), len(test)) and source[count] == test[count]:
        count += 1
    return count + (source == test)


def _startable(waiting, running, jobs):
    """The cases that can start now, in order. One that runs alone waits for all before it, and all after it wait for it."""
    starting = []
    for case in waiting:
        beside = running + starting
        if len(beside) >= jobs or any(other.alone for other in beside) or case.alone and beside:
            break
        if not any(case.locks & other.locks for other in beside):
            starting.append(case)
    return starting
