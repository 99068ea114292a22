"""The script that builds on Windows, with stand-ins for the programs that it calls: windows_test.py LIBCLANG NAME runs one test."""

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "scripts/windows.sh"

# Each writes its words into a file, a line for each call, and does what the variable of its name says.
STAND_IN = """#!/bin/sh
echo "${0##*/} $*" >>"$CALLS"
eval "$(printf '%s' "$DO" | sed -n "s/^${0##*/}: //p")"
"""

CTEST = """ctest: echo "50% tests passed, 2 tests failed out of 4"; echo; echo "The following tests did not run:"; echo "	 3 - Real.Logon (Skipped)"; echo; \
echo "The following tests FAILED:"; echo "	 1 - First.Fails (Failed)"; echo "	 4 - Fourth.Hangs (Timeout)"; echo; exit 8"""


class Windows(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory()
        self.folder = Path(self.temporary.name)
        (self.folder / "bin").mkdir()
        for name in ("pacman", "cmake", "ctest", "curl", "gcc", "ar", "cygpath", "cmd.exe"):
            stand_in = self.folder / "bin" / name
            stand_in.write_text(STAND_IN, encoding="utf-8")
            stand_in.chmod(0o755)

    def tearDown(self):
        self.temporary.cleanup()

    def run_script(self, *words, do="", shell="MINGW64", built=("tre", "libdwarf")):
        for library in built:
            prefix = self.folder / "build/deps" / library
            prefix.mkdir(parents=True, exist_ok=True)
            (prefix / ".complete").write_text("1\n", encoding="utf-8")
        does = "\n".join((do, 'cygpath: echo "C:$2"', 'gcc: echo "gcc 14.2"', "cmd.exe: echo Windows 10.0.22631", 'cmake: echo "cmake 3.31"'))
        return subprocess.run([SCRIPT, *words], capture_output=True, text=True, check=False, env={
            **os.environ, "PATH": f"{self.folder}/bin:{os.environ['PATH']}", "MSYSTEM": shell, "CALLS": str(self.folder / "calls"), "DO": does,
            "KIVARA_WINDOWS_BUILD": str(self.folder / "build")})

    def calls(self, program):
        path = self.folder / "calls"
        lines = path.read_text(encoding="utf-8").splitlines() if path.exists() else []
        return [line for line in lines if line.split()[0] == program]

    def report(self):
        return (self.folder / "build/report.txt").read_text(encoding="utf-8")

    def InstallsConfiguresBuildsAndTests(self):
        ended = self.run_script("-R", "^Dispatcher", do='ctest: echo "100% tests passed, 0 tests failed out of 7"')
        self.assertEqual(ended.returncode, 0, ended.stderr)
        self.assertEqual(len(self.calls("pacman")), 1)
        self.assertRegex(self.calls("pacman")[0], r"^pacman -S --needed --noconfirm mingw-w64-x86_64-clang .* mingw-w64-x86_64-zlib curl patch tar xz$")
        build = f"C:{self.folder}/build"
        self.assertEqual([call for call in self.calls("cmake") if "--version" not in call], [
            f"cmake -S C:{ROOT} -B {build} -G Ninja -DCMAKE_PREFIX_PATH={build}/deps/tre;{build}/deps/libdwarf "
            "-DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS=-fno-ipa-ra",
            f"cmake --build {build}"])
        self.assertRegex(self.calls("ctest")[0], rf"^ctest --test-dir {build} .* -R \^Dispatcher$")

    def ReportsSystemCompilerStepsAndCounts(self):
        self.run_script(do='ctest: echo "100% tests passed, 0 tests failed out of 7"')
        report = self.report()
        self.assertRegex(report.splitlines()[0], r"^kivara \d+\.\d+\.\d+\.\d+, ")
        for line in ("system:   Windows 10.0.22631", "compiler: gcc 14.2", "cmake:    cmake 3.31", "100% tests passed, 0 tests failed out of 7",
                     "failed:\nnone", "skipped:\nnone"):
            self.assertIn(line, report)
        self.assertEqual([line.split()[:2] for line in report.splitlines() if line.endswith(" seconds")],
                         [[step, "done"] for step in ("packages", "tre", "libdwarf", "configure", "build", "tests")])

    def ListsTestsThatFailOrAreSkipped(self):
        ended = self.run_script(do=CTEST)
        self.assertEqual(ended.returncode, 1)
        self.assertIn("failed:\n1 - First.Fails (Failed)\n4 - Fourth.Hangs (Timeout)\n\nskipped:\n3 - Real.Logon (Skipped)\n", self.report())
        self.assertIn("50% tests passed, 2 tests failed out of 4", self.report())

    def ReportsAStepThatFailsWithItsLastLines(self):
        ended = self.run_script(do="pacman: echo error: no mirror answers; exit 1")
        self.assertEqual(ended.returncode, 1)
        self.assertIn("packages failed", ended.stderr)
        self.assertRegex(self.report(), r"packages +FAILED")
        self.assertIn("no tests ran", self.report())
        self.assertIn("the last lines of packages.log:\nerror: no mirror answers\n", self.report())
        self.assertEqual(self.calls("ctest"), [])

    def ForgetsTheTestsOfAnEarlierRun(self):
        self.run_script(do=CTEST)
        self.run_script("--no-install", do="cmake: exit 3")
        self.assertRegex(self.report(), r"configure +FAILED")
        self.assertNotIn("First.Fails", self.report())
        self.assertEqual(len(self.calls("pacman")), 1)

    def RefusesEveryOtherShell(self):
        for shell in ("UCRT64", "MSYS", ""):
            ended = self.run_script(shell=shell)
            self.assertEqual(ended.returncode, 1)
            self.assertIn("this is for the MINGW64 shell of MSYS2", ended.stderr)
        self.assertEqual(self.calls("pacman"), [])

    def TakesNoSourceWithAnotherContent(self):
        ended = self.run_script(do='curl: while [ "$1" != -o ]; do shift; done; echo other >"$2"', built=("libdwarf",))
        self.assertEqual(ended.returncode, 1)
        self.assertRegex(self.report(), r"tre +FAILED")
        self.assertIn("https://deb.debian.org/debian/pool/main/t/tre/tre_0.8.0.orig.tar.gz", self.calls("curl")[0])
        self.assertEqual(len(self.calls("curl")), 1)
        self.assertFalse((self.folder / "build/deps/tre").exists())


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *(f"Windows.{name}" for name in sys.argv[2:])])
