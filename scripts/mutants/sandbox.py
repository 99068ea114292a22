"""Where changed code runs. It may delete or overwrite what it should not, take all memory, or never end."""

import os
import shutil
import signal
import subprocess
import time
from pathlib import Path

MOST_MEMORY = 6 << 30
LARGEST_FILE = 2 << 30
MARK = "KIVARA_MUTANT_CASE"


class Sandbox:
    """A Wine prefix and a folder for temporary files that nothing else uses. Where `protected`, programs can write to those two
    alone: Wine shows the whole disk as its drive Z."""

    def __init__(self, root, work, protected):
        self.root, self.work, self.protected = Path(root), Path(work), protected
        self.prefix, self.temporary = self.work / "prefix", self.work / "tmp"
        self._pattern = os.environ["WINEPREFIX"]
        self._loader = os.environ["WINELOADER"]
        self._helpers = []
        self._number = 0

    def check(self):
        """Why this machine cannot protect its files; nothing when it can."""
        self.temporary.mkdir(parents=True, exist_ok=True)
        self.prefix.mkdir(parents=True, exist_ok=True)
        tried = subprocess.run(self.command(["true"]), capture_output=True, text=True, check=False)
        return tried.stderr.strip() if tried.returncode else ""

    def command(self, words, writable=()):
        limits = ["prlimit", f"--data={MOST_MEMORY}", f"--fsize={LARGEST_FILE}", "--core=0"]
        if not self.protected:
            return [*limits, *words]
        # The folder may lie below /tmp itself.
        walls = ["bwrap", "--die-with-parent", "--ro-bind", "/", "/", "--dev-bind", "/dev", "/dev",
                 "--bind", str(self.temporary), "/tmp", "--ro-bind", str(self.root), str(self.root),
                 "--ro-bind-try", "/tmp/.X11-unix", "/tmp/.X11-unix"]
        printed = os.environ.get("KIVARA_PRINTED")  # the print server is beside it
        if printed:
            walls += ["--ro-bind", str(Path(printed).parent), str(Path(printed).parent)]
            writable = (*writable, printed)
        for folder in (self.prefix, *writable):
            walls += ["--bind", str(folder), str(folder)]
        return [*walls, "--chdir", str(self.work), *limits, *words]

    def environment(self):
        return {**os.environ, "WINEPREFIX": str(self.prefix)}

    def begin(self, words, more=None, writable=(), output=subprocess.DEVNULL, walls=True):
        """Starts a program; its `mark` is what it and its children are found again by."""
        self._number += 1
        mark = f"{os.getpid()}-{self._number}"
        # In a session of its own it does not get the terminal's Ctrl+C, which this process answers for all.
        process = subprocess.Popen(self.command(words, writable) if walls else words,
                                   env={**(self.environment() if walls else os.environ), **(more or {}), MARK: mark},
                                   stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT, start_new_session=True)
        process.mark = mark
        return process

    def run(self, words, more=None, longest=None, **how):
        """Starts a program and waits for its end: its exit code, or nothing after the longest time."""
        process = self.begin(words, more, **how)
        try:
            return process.wait(longest)
        except subprocess.TimeoutExpired:
            return None
        finally:
            self.end(process)

    def end(self, process):
        """Ends a program with all that it started, also what has left its group."""
        wanted = f"{MARK}={process.mark}".encode()
        for _ in range(50):
            found = [pid for pid in _processes() if wanted in _environment(pid)]
            if not found:
                break
            for pid in found:
                _kill(pid)
            time.sleep(0.01)
        _kill(process.pid)
        process.wait()

    def start(self):
        """A new copy of the prefix, with its server and its desktop. One idle program keeps the server alive."""
        self.stop()
        shutil.rmtree(self.prefix, ignore_errors=True)
        shutil.rmtree(self.temporary, ignore_errors=True)
        self.temporary.mkdir(parents=True)
        subprocess.run(["cp", "-a", "--reflink=auto", self._pattern, str(self.prefix)], check=True)
        for words in (["cmd", "/c", "pause"], ["explorer.exe", "/desktop"]):
            self._helpers.append(subprocess.Popen(self.command([self._loader, *words]), env=self.environment(), stdin=subprocess.PIPE,
                                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True))
        time.sleep(3)

    def stop(self):
        if self._helpers:
            subprocess.run(self.command(["wineserver", "-k"]), env=self.environment(), stderr=subprocess.DEVNULL, check=False)
        for helper in self._helpers:
            _kill(helper.pid)
            helper.wait()
        self._helpers = []

    def remove(self):
        self.stop()
        shutil.rmtree(self.prefix, ignore_errors=True)
        shutil.rmtree(self.temporary, ignore_errors=True)

    def clear_temporary(self):
        """What programs that were ended have left."""
        for folder in self.temporary.glob("kivara-test.*"):
            shutil.rmtree(folder, ignore_errors=True)


def _processes():
    return [int(name) for name in os.listdir("/proc") if name.isdigit()]


def _environment(pid):
    try:
        return Path(f"/proc/{pid}/environ").read_bytes().split(b"\0")
    except OSError:
        return []


def _kill(pid):
    try:
        os.kill(pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
