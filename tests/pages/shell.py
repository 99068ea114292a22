"""Runs the shell blocks of a page as they stand.

shell.py BUILD INSTALLED PAGE: all blocks of the page in their order, in an empty folder that goes away afterwards. In it

- a block after a line that ends with "`NAME`:" is written to the file of that name; after "`NAME`, at the end:" it is added to it, after
  "`NAME`, in place of `TEXT`:" it replaces the one line that holds the text, and after "`NAME`, after `TEXT`:" it follows it;
- a block `sh` is run, and ends the test where a command fails; the next one goes on in the folder that it ended in;
- a block `output` is what the block before it has printed. "..." stands for anything, and so does what is of its time or place:
  moments, addresses, numbers of threads and ports.

Stand-ins take the place of what a page has: /opt/kivara is the installation, programs and Wine are those of the build, a user
closes windows and presses OK, and ./dev looks at its arguments, runs programs, and builds nothing.
"""

import os
import re
import shlex
import signal
import socket
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.dont_write_bytecode = True
from page import blocks  # noqa: E402 (the setting has to come first)

ROOT = Path(__file__).resolve().parents[2]
LONGEST_BLOCK = 240  # seconds

# Blocks that are not run, by page and first line, with the reason.
NOT_RUN = {
    ("docs/windows.md", "scripts/windows.sh "): "for MSYS2 on Windows; WindowsScript.* run it with stand-ins",
    ("docs/kivcrash.md", "kivcrash orders.exe."): "a customer's file; the tutorial reads one of its own back in the same way",
}
# Blocks that go on until a later one ends them: the file with the text that says that they are ready, and what that later one holds.
SERVERS = {("docs/service.md", "./dev build service"): ("service.log", "listening on", "/stop")}
# What is typed: into programs on the console, and into the field of a dialog.
TYPED = {"docs/users.md": "tiger\n"}
DAYS = "12"
# Files that a page takes for granted.
FILES = {"docs/users.md": {"secret": "tiger\n"}}

PLACE = re.compile(r"`([\w./-]+)`(?:, (at the end|in place of `(.+)`|after `(.+)`))?:$")
# What differs from run to run.
VARIES = [re.compile(pattern) for pattern in (
    r"\d{4}[.-]\d\d[.-]\d\d,? \d\d:\d\d:\d\d",  # 2026.11.22, 08:30:15
    r"\d\d[.]\d\d[.]\d{4}, \d{1,2}:\d\d[.:]\d\d",  # 22.11.2026, 8:30.15
    r"\b\d+[.]\d\d[.]\d\d[.]\d{4}\b",  # the version of the library
    r"\b\d{17}\b",  # the moment in the name of a minidump
    r"\+0x[0-9A-F]+",
    r"\b0x[0-9A-F]{16}\b",
    r"(?<=thread )\d+",
    r"(?<=127\.0\.0\.1:)\d+",
    r"\b\d+ ms\b")]

DEV = """#!/bin/bash
# ./dev of a page: looks at its arguments as ./dev does, and starts Windows programs.
set -euo pipefail
source {root}/dev
supervised() {{
  shift 2
  [[ $1 != wine ]] || exec "$@"
}}
main "$@"
"""
# Wine starts no program twice in the same place of memory where places are fixed; see tests/support/harness/run-under-wine.
WINE = """#!/bin/bash
fixed=(setarch -R)
"${{fixed[@]}}" true 2>/dev/null || fixed=()
exec "${{fixed[@]}}" "${{WINELOADER:-wine}}" {user} {days} {program} "$@"
"""
# The settings of a build are looked up in that of this test, which stays as it is.
CMAKE = """#!/bin/bash
if [[ ${{1:-}} == build/release ]]; then
  for setting in "${{@:2}}"; do
    name=${{setting#-D}}
    grep -q "^${{name%%=*}}:" {cache} || {{ echo "the build has no setting $setting" >&2; exit 1; }}
  done
  exit
fi
exec {cmake} "$@"
"""


def name_of(page):
    return Path(page).resolve().relative_to(ROOT).as_posix()


def entry_for(table, page, block):
    """The value of the table for a block: the keys have the page and the beginning of the block."""
    return next((value for (name, begin), value in table.items() if name == page and block.text.startswith(begin)), None)


def same(expected, printed):
    """Whether the output is as the page shows it."""
    def plain(text):
        for number, varies in enumerate(VARIES):
            text = varies.sub(f"#{number}", text)
        return "\n".join(line.rstrip() for line in text.strip().splitlines())

    pattern = re.escape(plain(expected)).replace(r"\.\.\.", ".*")
    return re.fullmatch(pattern, plain(printed), re.DOTALL) is not None


def changed(text, block, how, replaced, followed):
    """A file's text with a block put where the page says."""
    if how is None:
        return block
    if how == "at the end":
        return text + block
    lines = text.splitlines(keepends=True)
    places = [number for number, line in enumerate(lines) if (replaced or followed) in line]
    if len(places) != 1:
        raise ValueError(f"{len(places)} lines hold {replaced or followed!r}, and one should")
    lines[places[0]:places[0] + 1] = [block] if replaced else [lines[places[0]], block]
    return "".join(lines)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Sandbox:
    """The folder that a page's blocks run in, with the stand-ins."""

    def __init__(self, folder, build, installed, page):
        self.folder, self.build, self.installed = Path(folder), Path(build), Path(installed)
        self.page, self.port = page, free_port()
        self.working = self.folder / "work"
        self.servers, self.started = [], []
        (self.folder / "bin").mkdir()
        self.working.mkdir()
        self.environment = {name: value for name, value in os.environ.items() if name != "CMAKE_PREFIX_PATH"}
        self.environment |= {"PATH": f"{self.folder}/bin:{os.environ['PATH']}",
                             "KIVARA_PRESET": self.build.name if self.build.name in ("release", "debug", "coverage") else "release",
                             "WINEDEBUG": os.environ.get("WINEDEBUG", "-all"),
                             # The compiler's cache, if there is one, knows the sources again in the next run's folder.
                             "CCACHE_BASEDIR": folder, "CCACHE_NOHASHDIR": "1"}
        self.put_stand_ins()
        for name, text in FILES.get(page, {}).items():
            (self.working / name).write_text(text, encoding="utf-8")

    def put_stand_ins(self):
        user = self.build / "bin/page_user.exe"
        wine = {"user": shlex.quote(str(user)), "days": DAYS}
        self.program("bin/wine", WINE.format(program="", **wine))
        for tool in ("kivcrash", "kivml", "kivuser"):
            self.program(f"bin/{tool}", WINE.format(program=shlex.quote(f"{self.installed}/bin/{tool}.exe"), **wine))

    def put_checkout(self):
        """What a page that calls ./dev has in its folder."""
        self.program("work/dev", DEV.format(root=shlex.quote(str(ROOT))))
        self.program("bin/cmake", CMAKE.format(cache=shlex.quote(f"{self.build}/CMakeCache.txt"),
                                               cmake=shlex.quote(self.environment["KIVARA_CMAKE"])))
        (self.working / "build/release").mkdir(parents=True)
        (self.working / "build/release/bin").symlink_to(self.build / "bin")

    def program(self, name, text):
        path = self.folder / name
        path.write_text(text, encoding="utf-8")
        path.chmod(0o755)

    def write(self, place, block):
        path = self.working / place[1]
        path.parent.mkdir(parents=True, exist_ok=True)
        try:
            text = path.read_text(encoding="utf-8") if place[2] else ""
            path.write_text(changed(text, self.localised(block.text), *place.groups()[1:]), encoding="utf-8")
        except (OSError, ValueError) as error:
            sys.exit(f"{self.page}:{block.line}: {place[1]} cannot be changed: {error}")

    def localised(self, text):
        text = text.replace("/opt/kivara", str(self.installed))
        return text.replace("8080", str(self.port)) if self.page == "docs/service.md" else text

    def start(self, block, output):
        # Through a file: helpers of Wine outlive the program, and would keep a pipe open.
        script = f'set -euo pipefail\ntrap "pwd >{self.folder}/cwd" EXIT\n{self.localised(block.text)}'
        typed = self.folder / "typed"
        typed.write_text(TYPED.get(self.page, ""), encoding="utf-8")
        with open(typed, encoding="utf-8") as keys:
            process = subprocess.Popen(["bash", "-c", script], cwd=self.working, env=self.environment, stdin=keys, stdout=output,
                                       stderr=subprocess.STDOUT, start_new_session=True)
        self.started.append(process)
        return process

    def run(self, block):
        """What the block prints; it ends with the first command that fails."""
        output = self.folder / "output"
        with open(output, "wb") as stream:
            process = self.start(block, stream)
            code = self.wait(process)
        printed = output.read_text(encoding="utf-8", errors="replace")
        if code != 0:
            sys.exit(f"{self.page}:{block.line}: this block ends with {code}:\n{block.text}\n{printed}")
        self.working = Path((self.folder / "cwd").read_text(encoding="utf-8").strip())
        return printed

    def wait(self, process):
        try:
            return process.wait(LONGEST_BLOCK)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return f"nothing after {LONGEST_BLOCK} seconds"

    def serve(self, block, entry):
        """Starts a block that stays, and waits until it is ready."""
        file, text, ending = entry
        output = self.folder / f"server{len(self.servers)}"
        with open(output, "wb") as stream:
            process = self.start(block, stream)
        self.servers.append((block, process, output, ending))
        log = self.working / file
        end = time.monotonic() + LONGEST_BLOCK
        while not (log.exists() and text in log.read_text(encoding="utf-8", errors="replace")):
            if process.poll() is not None or time.monotonic() > end:
                sys.exit(f"{self.page}:{block.line}: {file} never says {text!r}:\n{output.read_text(errors='replace')}")
            time.sleep(0.05)

    def wait_for_servers(self, text):
        """Those that a block with this text ends have ended in good order."""
        for block, process, output, ending in self.servers:
            if ending in text and (code := self.wait(process)) != 0:
                sys.exit(f"{self.page}:{block.line}: this block ends with {code}:\n{output.read_text(errors='replace')}")

    def end(self):
        for process in self.started:
            if process.poll() is None:
                os.killpg(process.pid, signal.SIGKILL)


def run_page(sandbox, page):
    printed = None
    for block in blocks(page):
        place = PLACE.search(block.lead)
        if block.language == "sh" and entry_for(NOT_RUN, sandbox.page, block):
            printed = None
        elif block.language == "sh" and (entry := entry_for(SERVERS, sandbox.page, block)):
            sandbox.serve(block, entry)
        elif block.language == "sh":
            start = time.monotonic()
            printed = sandbox.run(block)
            sandbox.wait_for_servers(block.text)
            print(f"{sandbox.page}:{block.line}: {time.monotonic() - start:.1f} s", flush=True)
        elif block.language == "output":
            if printed is None:
                sys.exit(f"{sandbox.page}:{block.line}: no block that was run stands before this output")
            if not same(block.text, printed):
                sys.exit(f"{sandbox.page}:{block.line}: the page shows\n{block.text}\nand it prints\n{printed}")
        elif place:
            sandbox.write(place, block)
    if any(process.poll() is None for process in sandbox.started):
        sys.exit(f"{sandbox.page}: a block has started something that no later one ends")


def main():
    build, installed, page = sys.argv[1:]
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))  # so that the folder goes
    name = name_of(page)
    with tempfile.TemporaryDirectory(prefix="kivara-page.", ignore_cleanup_errors=True) as folder:
        sandbox = Sandbox(folder, build, installed, name)
        if any("./dev" in block.text for block in blocks(page) if block.language == "sh"):
            sandbox.put_checkout()
        try:
            run_page(sandbox, page)
        finally:
            sandbox.end()


if __name__ == "__main__":
    main()
