"""./dev mutants: see docs/testing.md."""

import argparse
import itertools
import signal
import sys
import time
from pathlib import Path

from mutants import results as outcome
from mutants.catalogue import Catalogue, in_order
from mutants.known import Known, entry_for
from mutants.results import Results
from mutants.sandbox import Sandbox
from mutants.suite import Suite
from mutants.tree import Tree


def say(text):
    print(f"dev: {text}", file=sys.stderr, flush=True)


def arguments():
    parser = argparse.ArgumentParser(prog="mutants", description=__doc__)
    for name in ("root", "work", "libclang"):
        parser.add_argument(f"--{name}", required=True)
    parser.add_argument("--system", default=[], action="append", help="a folder of the compiler's headers")
    parser.add_argument("--jobs", type=int, required=True)
    parser.add_argument("--room", default=[], action="append")
    parser.add_argument("--count", type=int, default=40)
    parser.add_argument("--seed", default="1")
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--unprotected", action="store_true")
    return parser.parse_args()


class Run:
    def __init__(self, given):
        self.given = given
        self.sandbox = Sandbox(given.root, given.work, not given.unprotected)
        self.tree = Tree(given.root, given.work, self.sandbox)
        self.suite = Suite(self.tree, self.sandbox, given.jobs)
        self.known = Known(Path(given.root) / "tests/mutants.toml")

    def prepare(self):
        """The copy of the checkout, the mutants of the rooms in the seed's order, and the results that there are."""
        given = self.given
        self.tree.renew()
        say("building the library in a copy of the checkout, without a change")
        self.tree.configure(["kivara"])
        catalogue = Catalogue(self.tree.folder, self.tree.build, given.libclang, given.system)
        self.rooms = given.room or sorted(catalogue.rooms())
        say(f"looking for what can be changed in: {' '.join(self.rooms)}")
        mutants, faults = catalogue.mutants(self.rooms)
        for fault in faults:
            say(f"not all of it is read: {fault}")
        for entry in self.known.stale(mutants):
            say(f"tests/mutants.toml: there is no such change any more: {entry[0]}: {entry[1]} => {entry[2]}")
        self.order = list(in_order(mutants, given.seed))
        name = f"results-{'-'.join(given.room) or 'all'}-{given.seed}.jsonl"
        self.results = Results(Path(given.work) / name, self.tree.fingerprint(self.rooms), given.again)
        if self.results.outdated:
            say("sources or tests are other ones than in the last run of this seed: all is tried anew (--again keeps what was noticed)")
        say(f"{len(mutants)} changes; results: {self.results.path}")

    def build_and_measure(self):
        targets = [target for room in self.rooms for target in self.tree.targets_of(room)]
        self.tree.configure(targets)
        self.targets = {room: self.tree.targets_of(room) for room in self.rooms}
        self.tree.remember()
        self.sandbox.start()
        self.suite.find(self.rooms)
        self.suite.know_times(Path(self.given.root) / "build/release/Testing/Temporary/CTestCostData.txt")
        say(f"running those of the {len(self.suite.cases)} test cases without a change that ./dev test has not run yet")
        begun = time.monotonic()
        for case in self.suite.measure():
            say(f"left out, since it fails without a change: {case.name}")
        say(f"they take {time.monotonic() - begun:.0f} seconds")

    def chosen(self):
        """The first mutants that count, of which more are drawn for each that does not compile."""
        counted = (mutant for mutant in self.order if self.verdict(mutant) != outcome.BROKEN)
        return itertools.islice(counted, self.given.count)

    def verdict(self, mutant):
        known = self.results.found.get(mutant.name)
        return known["verdict"] if known else self.find_out(mutant)

    def find_out(self, mutant):
        if not self.suite.cases and not self.known.reason(mutant):
            self.build_and_measure()
        begun = time.monotonic()
        source = (Path(self.tree.root) / mutant.path).read_text(encoding="utf-8")
        verdict, by = self.tried(mutant, source)
        self.results.add(mutant, verdict, source, by, time.monotonic() - begun)
        say(f"{mutant.place} ({mutant.change.kind}): {verdict}{' by ' + by if by else ''}, {time.monotonic() - begun:.1f} s")
        return verdict

    def tried(self, mutant, source):
        if reason := self.known.reason(mutant):
            return outcome.KNOWN, reason
        self.tree.write(mutant.path, mutant.change.applied(source))
        try:
            if not self.tree.make(self.targets[mutant.room]):
                self.tree.write(mutant.path, source)
                if not self.tree.make(self.targets[mutant.room]):
                    sys.exit(f"dev: error: the copy of the checkout cannot be built any more; see {self.tree.build_log}")
                return outcome.BROKEN, ""
            if not self.tree.changes_an_object():
                return outcome.SAME, ""
            case = self.noticed_by(mutant)
            return (outcome.NOTICED, case.name) if case else (outcome.UNNOTICED, "")
        finally:
            self.tree.write(mutant.path, source)

    def noticed_by(self, mutant):
        """The first case that fails, again when it runs by itself, and passes with the original programs."""
        waiting = self.suite.near_first(mutant)
        damaged = False
        while case := self.suite.first_failure(waiting):
            if self.suite.passes(case):
                continue
            if self.suite.passes(case, originals=True):
                self.suite.learn(mutant, case)
                return case
            # What the change did to the prefix may be what fails by now.
            if damaged:
                say(f"left out from here on: {case.name} has begun to fail without a change")
                self.suite.cases.remove(case)
                continue
            damaged = True
            self.sandbox.start()
            waiting.insert(0, case)
        return None


def report(run, tried):
    found = [run.results.found[mutant.name] for mutant in tried]
    print(outcome.table(found))
    broken = sum(result["verdict"] == outcome.BROKEN for result in run.results.found.values())
    print(f"\n{broken} more did not compile and are not counted.")
    for result in found:
        if result["verdict"] == outcome.KNOWN:
            print(f"\nno difference: {result['path']}:{result['line']}: {result['by']}\n{result['diff']}")
    for result in found:
        if result["verdict"] == outcome.UNNOTICED:
            print(f"\nno test noticed:\n{result['diff']}\n\n{entry_for(result)}")


def main():
    signal.signal(signal.SIGTERM, lambda number, frame: sys.exit(128 + number))
    run = Run(arguments())
    if fault := run.sandbox.check():
        sys.exit(f"dev: error: bwrap cannot keep changed code from your files here: {fault}\n"
                 "In a container that is thrown away afterwards, say --unprotected.")
    try:
        run.prepare()
        tried = list(run.chosen())
    except KeyboardInterrupt:
        sys.exit("dev: stopped; the same command goes on from here")
    finally:
        run.sandbox.remove()
    report(run, tried)


if __name__ == "__main__":
    main()
