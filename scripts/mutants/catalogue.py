"""Which changes there are in the rooms of the library, and in what order a seed takes them."""

import difflib
import hashlib
import json
import multiprocessing
import shlex
from dataclasses import dataclass
from pathlib import Path

from mutants import changes, syntax

# Folders that are tested in a room of another name.
TESTED_ELSEWHERE = {"kivara/main": "frame", "kivara/include/tools": "tl0105", "toolkit/handles": "base"}
TOOLS_HEADER = "kivara/include/tools.hpp"


@dataclass(frozen=True)
class Mutant:
    """One change of one file, and how it is known from all others: by its lines, so that it stays itself when lines move."""
    room: str
    path: str
    line: int
    change: changes.Change
    before: str
    after: str
    number: int  # among those of the same lines in this file

    @property
    def name(self):
        return f"{self.path}|{self.change.kind}|{self.before}|{self.after}|{self.number}"

    @property
    def place(self):
        return f"{self.path}:{self.line}"

    def diff(self, source):
        lines = difflib.unified_diff(source.splitlines(), self.change.applied(source).splitlines(), f"a/{self.path}", f"b/{self.path}",
                                     lineterm="", n=2)
        return "\n".join(lines)


def mutants_of(path, room, text, found):
    """The changes of a file as mutants."""
    seen = {}
    for change in found:
        before = _lines(text, change.start, change.end)
        after = _lines(change.applied(text), change.start, change.start + len(change.text))
        same = (change.kind, before, after)
        seen[same] = seen.get(same, 0) + 1
        yield Mutant(room, path, text.count("\n", 0, change.start) + 1, change, before, after, seen[same])


def _lines(text, start, end):
    """The lines that a piece of the text touches, without what indents them."""
    first = text.rfind("\n", 0, start) + 1
    last = text.find("\n", end)
    return " ".join(text[first:last if last >= 0 else len(text)].split())


def in_order(mutants, seed):
    """The kinds by turns, those of a kind as the seed has them; more of them begin with the same ones. Of tables, one value in
    sixteen: they would be most of all otherwise."""
    drawn = {mutant: hashlib.sha256(f"{seed}:{mutant.name}".encode()).digest() for mutant in mutants}
    kinds = {kind: [] for kind in changes.KINDS}
    for mutant in mutants:
        if not mutant.change.in_table or drawn[mutant][-1] < 16:
            kinds[mutant.change.kind].append(mutant)
    for each in kinds.values():
        each.sort(key=drawn.get, reverse=True)
    while any(kinds.values()):
        for each in kinds.values():
            if each:
                yield each.pop()


def included_and_defined(words):
    """The options of a compiler's command that say what it includes and defines."""
    return [word for before, word in zip(["", *words], words) if word[:2] in ("-I", "-D") or "-isystem" in (before, word)]


class Catalogue:
    """The sources of a checkout that has been configured, by rooms."""

    def __init__(self, root, build, library, system):
        self.root, self.library = Path(root), library
        self.system = [word for folder in system for word in ("-isystem", folder)]
        self.options = self._options(Path(build) / "compile_commands.json")

    def rooms(self):
        """The files of each room that has tests."""
        found = {}
        for path in sorted(self.root.glob("kivara/**/*.?pp")) + sorted(self.root.glob("toolkit/**/*.?pp")):
            relative = path.relative_to(self.root).as_posix()
            room = self.room_of(relative)
            if room and (self.root / "tests" / room).is_dir():
                found.setdefault(room, []).append(relative)
        return found

    def room_of(self, path):
        for folder, room in TESTED_ELSEWHERE.items():
            if path.startswith(folder + "/"):
                return room
        parts = path.split("/")
        if path == TOOLS_HEADER:
            return "tl0105"
        if path.startswith("kivara/include/"):
            sources = sorted(self.root.glob(f"kivara/**/{Path(path).stem}*.cpp"))
            return sources[0].relative_to(self.root).parts[1] if sources else None
        return parts[1]

    def mutants(self, rooms):
        """All mutants of the rooms, and the errors that the reader met."""
        files = [(path, room) for room in rooms for path in self.rooms()[room]]
        with multiprocessing.Pool(initializer=_begin, initargs=(self,)) as pool:
            read = pool.starmap(_read, files, chunksize=1)
        return [mutant for found, _ in read for mutant in found], [fault for _, faults in read for fault in faults]

    def read(self, reader, path, room):
        source = reader.read(str(self.root / path), self._words(path))
        return list(mutants_of(path, room, source.text, changes.changes_of(source))), source.faults

    def _options(self, commands):
        """Includes and definitions of each source, and of each DLL for its headers."""
        options = {}
        for entry in json.loads(commands.read_text()):
            path = Path(entry["file"])
            if path.is_relative_to(self.root):
                words = included_and_defined(shlex.split(entry["command"]))
                relative = path.relative_to(self.root).as_posix()
                options.setdefault(relative, words)
                options.setdefault("/".join(relative.split("/")[:2 if relative.startswith("toolkit") else 1]), words)
        return options

    def _words(self, path):
        parts = path.split("/")
        folder = "/".join(parts[:2]) if parts[0] == "toolkit" else parts[0]
        # Headers of a folder without sources are read as the library reads them.
        own = self.options.get(path) or self.options.get(folder) or self.options["kivara"]
        return [*own, *self.system]


_reader = None


def _begin(catalogue):
    global _reader
    _reader = catalogue, syntax.Reader(catalogue.library)


def _read(path, room):
    catalogue, reader = _reader
    return catalogue.read(reader, path, room)
