"""The command ./dev from outside: dev_test.py LIBCLANG NAME runs one of the tests below."""

import os
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
DEV = str(ROOT / "dev")
VERBS = ("run test long endure bench build install package wine lint format coverage mutants docs setup").split()
# The server of a Wine prefix and its helpers end by themselves, a moment after the last program.
HELPERS = ("wineserver", "services.exe", "winedevice.exe", "plugplay.exe", "svchost.exe", "rpcss.exe")


def dev(*words, **environment):
    """A run that does nothing but answer; one that goes to work is ended."""
    process = subprocess.Popen([DEV, *words], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                               env={**os.environ, **environment})
    try:
        output, errors = process.communicate(timeout=20)
    except subprocess.TimeoutExpired:
        process.terminate()
        output, errors = process.communicate()
    return subprocess.CompletedProcess(words, process.returncode, output, errors)


class Dev(unittest.TestCase):
    maxDiff = None

    def RefusesWrongArgumentsBeforeItDoesAnything(self):
        for words, told in (
                ("nosuchverb", "there is no verb 'nosuchverb'"),
                ("--preset", "--preset needs a name"),
                ("--preset fast test", "there is no preset 'fast'"),
                ("test --rounds none", "--rounds needs a number"),
                ("test --windows 95", "--windows needs a version, 7, 8.1, 10 or 11"),
                ("test --rounds 2 --windows", "--windows needs a version"),
                ("test Dispatcher", "tests are named by -R: ./dev test -R 'Dispatcher'"),
                ("test --no-such-option", "ctest has no option '--no-such-option'"),
                ("test -R", "-R needs a value"),
                ("test -R (", "'(' is no regular expression"),
                ("long --rounds 3", "ctest has no option '--rounds'"),
                ("endure --minutes none", "--minutes needs a number"),
                ("endure --leak water", "--leak needs one of: handle, thread"),
                ("endure --only", "--only needs names of activities"),
                ("endure 10", "unknown argument '10'"),
                ("coverage nothing", "ctest has no option 'nothing'"),
                ("bench --fast", "unknown option '--fast'"),
                ("build --all", "unknown option '--all'"),
                ("install", "usage: ./dev install DIR"),
                ("install one two", "usage: ./dev install DIR"),
                ("install /dev/null/below", "/dev/null/below cannot be written"),
                ("package all", "this verb takes no arguments: all"),
                ("wine", "usage: ./dev wine PROGRAM [args]"),
                ("wine no/such/program.exe", "there is no program no/such/program.exe"),
                ("lint no_such_source.cpp", "there is no source no_such_source.cpp"),
                ("format fast", "this verb takes no arguments: fast"),
                ("docs fast", "this verb takes no arguments: fast"),
                ("setup fast", "this verb takes no arguments: fast"),
                ("mutants --room cellar", "there is no room 'cellar'"),
                ("mutants --count many", "--count needs a number"),
                ("mutants many", "unknown argument 'many'")):
            with self.subTest(words), tempfile.TemporaryDirectory() as folder:
                cache = Path(folder) / "cache"
                ended = dev(*words.split(), KIVARA_CACHE=str(cache))
                self.assertEqual(ended.returncode, 1)
                self.assertIn(told, ended.stderr.splitlines()[-1])
                self.assertFalse(cache.exists())

    def RefusesSettingsThatAreNoNumbers(self):
        self.assertIn("KIVARA_JOBS is a number of tests", dev("test", KIVARA_JOBS="many").stderr)
        self.assertIn("KIVARA_TEST_SEED is a number", dev("long", KIVARA_TEST_SEED="any").stderr)

    def PrintsTheHelpOfEachVerb(self):
        listed = dev("help").stdout
        for verb in VERBS:
            with self.subTest(verb):
                ended = dev(verb, "--help")
                self.assertEqual((ended.returncode, ended.stderr), (0, ""))
                self.assertTrue(ended.stdout.startswith(f"usage: ./dev {verb}"))
                self.assertIn(f"\n  {verb}", listed)

    def RunOpensTheOrderModelUnlessTheArgumentsNameOne(self):
        def model(*arguments):
            script = 'root=/somewhere; source "$0"; order_model "$@"'
            command = ["bash", "-c", script, str(ROOT / "scripts/run.sh"), *arguments]
            return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout.strip()

        order = "-modelZ:/somewhere/apps/modeler/models/order.txt"
        for arguments in ((), ("-console",), ("-h20", "-Model")):
            self.assertEqual(model(*arguments), order)
        for arguments in (("-modelmine.txt",), ("/modelmine.txt",), ("-h20", "-model")):
            self.assertEqual(model(*arguments), "")
        self.assertTrue((ROOT / "apps/modeler/models/order.txt").exists())

    def TestsAloneWhatFailedBesideOthers(self):
        def test(failures, alone):
            """The end of a run in which so many tests fail, and then pass alone or not."""
            with tempfile.TemporaryDirectory() as build:
                log = Path(build) / "Testing/Temporary/LastTestsFailed.log"
                log.parent.mkdir(parents=True)
                script = (f"set -euo pipefail; root={ROOT}; for part in common wine build; do source {ROOT}/scripts/$part.sh; done; "
                          f"ready_for_tests() {{ :; }}; build_dir() {{ echo {build}; }}; "
                          f"ctest() {{ case $* in *--rerun-failed*) return {alone};; esac; "
                          f"seq {failures} | sed 's/.*/&:Test.&/' >{log}; (({failures} == 0)); }}; verb_test")
                ended = subprocess.run(["bash", "-c", script], capture_output=True, text=True, check=False)
                return ended.returncode, ended.stderr.splitlines()[-1]

        self.assertEqual(test(0, alone=1), (0, "dev: testing (release)"))
        self.assertEqual(test(2, alone=0), (0, "dev: PASSED ONLY ALONE: Test.1 Test.2"))
        self.assertEqual(test(2, alone=8), (1, "dev: failed side by side with others, and tried alone now: Test.1 Test.2"))
        self.assertEqual(test(6, alone=0), (1, "dev: testing (release)"))

    def KeepsTheTimesOfTestsInARunInRandomOrder(self):
        with tempfile.TemporaryDirectory() as build:
            times = Path(build) / "Testing/Temporary/CTestCostData.txt"
            times.parent.mkdir(parents=True)
            script = (f"set -euo pipefail; root={ROOT}; for part in common wine build; do source {ROOT}/scripts/$part.sh; done; "
                      f"ready_for_tests() {{ :; }}; build_dir() {{ echo {build}; }}; ctest() {{ echo random >{times}; return 8; }}; "
                      "verb_test --rounds 2")
            for known in (None, "A.Test 1 0.25\n"):
                if known:
                    times.write_text(known)
                ended = subprocess.run(["bash", "-c", script], capture_output=True, text=True, check=False)
                self.assertEqual(ended.returncode, 1, ended.stderr)
                self.assertEqual(times.read_text() if times.exists() else None, known)
                self.assertEqual([path.name for path in times.parent.iterdir()], [times.name] if known else [])

    def TestsUnderEachVersionOfWindowsInAPrefixOfItsOwn(self):
        def test(*arguments):
            """The prefix that the tests would run in, and what is said of them."""
            script = (f"set -euo pipefail; root={ROOT}; for part in common wine build; do source {ROOT}/scripts/$part.sh; done; "
                      "cache=/cache; package_version() { echo 8; }; ready_for_tests() { wine_environment; }; build_dir() { echo /nowhere; }; "
                      "run_tests() { echo $WINEPREFIX $*; }; verb_test \"$@\"")
            ended = subprocess.run(["bash", "-c", script, "dev", *arguments], capture_output=True, text=True, check=True)
            return ended.stdout.split()[0], ended.stderr.splitlines()[0]

        usual, said = test("-R", "x")
        self.assertEqual(said, "dev: testing (release)")
        self.assertEqual(test("--windows", "10"), (usual, said))
        for version in ("7", "8.1", "11"):
            self.assertEqual(test("--windows", version, "-R", "x"), (f"{usual}-windows-{version}", f"dev: testing (release, Windows {version})"))
        self.assertEqual(test("--windows", "7", "--rounds", "1")[1], "dev: testing (release, Windows 7), in random order, round 1 of 1")
        self.assertEqual(test("--rounds", "1", "--windows", "7")[0], f"{usual}-windows-7")

    def SaysHowFarALongStepIs(self):
        with tempfile.NamedTemporaryFile() as log:
            script = (f"set -euo pipefail; root={ROOT}; source {ROOT}/scripts/common.sh; progress_every=1; "
                      f"with_progress 'building it' {log.name} sh -c 'echo one; echo compiling two; sleep 3; exit 7'")
            ended = subprocess.run(["bash", "-c", script], capture_output=True, text=True, check=False)
        self.assertEqual(ended.returncode, 7)
        self.assertRegex(ended.stderr, "dev: building it: [12] seconds, 2 lines; compiling two\n")

    def LeavesNothingAfterItsEnd(self):
        run = Run("wine", "cmd", "/c", "exit 3")
        self.assertEqual(run.process.wait(60), 3)
        run.assert_nothing_left(self)

    def LeavesNothingWhenItIsEnded(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            with self.subTest(number):
                run = Run("wine", "notepad")
                run.wait_for("notepad.exe")
                run.process.send_signal(number)
                self.assertEqual(run.process.wait(30), 128 + number)
                run.assert_nothing_left(self)

    def LeavesNothingAfterCtrlC(self):
        run = Run("wine", "notepad")
        run.wait_for("notepad.exe")
        os.killpg(run.process.pid, signal.SIGINT)
        self.assertEqual(run.process.wait(30), 130)
        run.assert_nothing_left(self)

    def LeavesNoHalfMadePrefixWhenItIsEnded(self):
        with tempfile.TemporaryDirectory() as cache:
            run = Run("wine", "cmd", "/c", "exit", cache=cache)
            run.wait_for("wineboot")
            run.process.terminate()
            self.assertEqual(run.process.wait(30), 128 + signal.SIGTERM)
            run.assert_nothing_left(self)
            self.assertEqual(list((Path(cache) / "wine").glob("*")), [])


class Run:
    """A run of ./dev, without a display, whose processes are found by a mark in their environment."""

    def __init__(self, *words, cache=None):
        self.mark = f":test.{os.getpid()}.{time.monotonic_ns()}:"
        environment = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "WINEPREFIX")}
        environment["KIVARA_DEV_RUN"] = environment.get("KIVARA_DEV_RUN", "") + self.mark
        if cache:
            environment["KIVARA_CACHE"] = cache
        self.said = tempfile.TemporaryFile()
        self.process = subprocess.Popen([DEV, *words], env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                        stderr=self.said, start_new_session=True)

    def processes(self):
        found = []
        for folder in Path("/proc").glob("[0-9]*"):
            try:
                if self.mark.encode() in (folder / "environ").read_bytes():
                    found.append((folder / "cmdline").read_bytes().replace(b"\0", b" ").decode(errors="replace"))
            except OSError:
                pass
        return found

    def wait_for(self, program):
        until = time.monotonic() + 90
        while not any(program in each for each in self.processes()):
            if time.monotonic() > until or self.process.poll() is not None:
                self.said.seek(0)
                raise AssertionError(f"{program} was not started; there is: {self.processes()}; it ended with {self.process.returncode} "
                                     f"and said: {self.said.read().decode(errors='replace')}")
            time.sleep(0.1)

    def assert_nothing_left(self, test):
        left = [each for each in self.processes() if not any(helper in each for helper in HELPERS)]
        test.assertEqual(left, [])
        test.assertEqual(list(Path(os.environ.get("TMPDIR", "/tmp")).glob(f"kivara-dev.{self.process.pid}.*")), [])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *(f"Dev.{name}" for name in sys.argv[2:])])
