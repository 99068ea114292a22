"""A copy of the checkout in which one file at a time is changed and built, so that the user's own files stay as they are."""

import hashlib
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

LONGEST_BUILD = 900


class Tree:
    def __init__(self, root, work, sandbox):
        self.root, self.folder, self.sandbox = Path(root), Path(work) / "tree", sandbox
        self.build = self.folder / "build" / "release"
        self.originals = Path(work) / "originals"
        self.compilations = Path(work) / "ccache"
        self.build_log = Path(work) / "build.log"
        self._digests, self._unchanged = {}, {}

    def renew(self):
        """The sources as they are now. What has not changed keeps its time; what a run that was ended has left changed does not."""
        listed = subprocess.run(["git", "-C", str(self.root), "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                                check=True, capture_output=True, text=True).stdout
        wanted = {name for name in listed.split("\0") if name and (self.root / name).is_file()}
        for name in wanted:
            _copy_if_other(self.root / name, self.folder / name)
        for folder, folders, names in os.walk(self.folder):
            relative = Path(folder).relative_to(self.folder)
            if relative == Path("."):
                folders[:] = [name for name in folders if name != "build"]
            for name in names:
                if (relative / name).as_posix() not in wanted:
                    (Path(folder) / name).unlink()

    def fingerprint(self, rooms):
        """Another one whenever the library or the tests of the rooms are other ones."""
        seen = hashlib.sha256()
        for top in ("kivara", "toolkit", "resources", "tests/support", "tests/programs", *(f"tests/{room}" for room in rooms)):
            for path in sorted((self.folder / top).rglob("*")):
                if path.is_file():
                    seen.update(f"{path.relative_to(self.folder)}\0".encode() + path.read_bytes())
        return seen.hexdigest()[:16]

    def configure(self, targets):
        """The first build: by the copy's own ./dev, which does all the set-up. Warnings do not matter in changed code. What the
        checkout itself has been built from is taken from its compiler cache, to which nothing without warnings may come."""
        self.compilations.mkdir(parents=True, exist_ok=True)
        more = {"CXXFLAGS": "-w", "CCACHE_READONLY": "1", "CCACHE_IGNOREOPTIONS": "-w"}
        words = [str(self.folder / "dev"), "--preset", "release", "build", *targets]
        if self.sandbox.run(words, more, walls=False, output=sys.stderr) != 0:
            sys.exit("dev: error: the copy of the checkout cannot be built without a change")

    def make(self, targets):
        """Builds; false when something does not compile."""
        words = ["cmake", "--build", str(self.build), "--target", *targets]
        more = {"CCACHE_DIR": str(self.compilations), "CCACHE_MAXSIZE": "2G", "CCACHE_BASEDIR": str(self.folder), "CCACHE_NOHASHDIR": "1"}
        with open(self.build_log, "w", encoding="utf-8") as log:
            return self.sandbox.run(words, more, LONGEST_BUILD, writable=(self.folder, self.compilations), output=log) == 0

    def targets_of(self, room):
        """The test programs of a room. CMake leaves the folders of those that are there no more."""
        known = subprocess.run(["cmake", "--build", str(self.build), "--target", "help"], check=True, capture_output=True, text=True)
        folders = (self.build / "tests" / room / "CMakeFiles").glob("*_test.dir")
        return sorted({path.stem for path in folders} & set(re.findall(r"^(\w+): phony", known.stdout, re.MULTILINE)))

    def write(self, name, text):
        path = self.folder / name
        if path.read_text(encoding="utf-8") != text:
            path.write_text(text, encoding="utf-8")

    # What the compiler made.

    def remember(self):
        """Keeps the programs and what is compared of each object: they are as the sources have them."""
        self._unchanged = {path: self._digest(path) for path in self._objects()}
        for path in (self.build / "bin").rglob("*"):
            if path.is_file():
                _copy_if_newer(path, self.originals / path.relative_to(self.build / "bin"))

    def changes_an_object(self):
        """Whether the compiler made something else of any source."""
        return any(self._digest(path) != self._unchanged.get(path) for path in self._objects())

    def _objects(self):
        return self.build.rglob("*.obj")

    def _digest(self, path):
        """Of all but what a debugger alone reads."""
        time = path.stat().st_mtime_ns
        known = self._digests.get(path)
        if not known or known[0] != time:
            stripped = self.build / "stripped.o"
            subprocess.run(["x86_64-w64-mingw32-objcopy", "--strip-debug", str(path), str(stripped)], check=True)
            self._digests[path] = known = time, hashlib.sha256(stripped.read_bytes()).digest()
        return known[1]


def _copy_if_other(source, target):
    if target.is_file() and target.read_bytes() == source.read_bytes():
        return
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(source, target)
    shutil.copymode(source, target)


def _copy_if_newer(source, target):
    if not target.exists() or target.stat().st_mtime_ns != source.stat().st_mtime_ns:
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy2(source, target)
