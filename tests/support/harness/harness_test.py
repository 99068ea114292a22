"""How run-under-wine starts a program: harness_test.py LIBCLANG NAME runs one of the tests below, with programs in place of Wine."""

import os
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

RUN = str(Path(__file__).resolve().parent / "run-under-wine")
NOT_BEGUN = "err:virtual:virtual_alloc_first_teb wine: failed to map the shared user data: c0000018"
REFUSED = "setarch: failed to set personality to linux64: Operation not permitted"


class Harness(unittest.TestCase):
    def setUp(self):
        self.held = tempfile.TemporaryDirectory()
        self.folder = Path(self.held.name)
        (self.folder / "bin").mkdir()
        self.addCleanup(self.held.cleanup)

    def StartsOnceMoreWhatWineSaysThatItCouldNotBegin(self):
        self.refuse_fixed_places()
        self.wine(f'[ $starts -gt 1 ] || {{ echo "{NOT_BEGUN}" >&2; exit 1; }}; echo begun; exit 5')
        ended = self.run_it()
        self.assertEqual((ended.returncode, ended.stdout, self.starts()), (5, "begun\n", 2))
        self.assertIn(f"run-under-wine: {NOT_BEGUN}; trying once more", ended.stderr)

    def StartsNothingAThirdTime(self):
        self.refuse_fixed_places()
        self.wine(f'echo "{NOT_BEGUN}" >&2; exit 1')
        self.assertEqual((self.run_it().returncode, self.starts()), (1, 2))

    def ReportsEveryOtherFailureAsItIs(self):
        self.refuse_fixed_places()
        for deed, code in (("exit 1", 1), ("exit 53", 53), ("echo word; exit 1", 1), ("echo word >&2; exit 1", 1), ("kill -9 $$", 137)):
            with self.subTest(deed):
                (self.folder / "starts").unlink(missing_ok=True)
                self.wine(deed)
                self.assertEqual((self.run_it().returncode, self.starts()), (code, 1))

    def StartsNothingTwiceWhereThePlacesAreFixed(self):
        if subprocess.run(["setarch", "-R", "true"], check=False, stderr=subprocess.DEVNULL).returncode != 0:
            self.skipTest("this machine does not allow it")
        self.wine(f'echo "{NOT_BEGUN}" >&2; cat /proc/self/personality; exit 1')
        ended = self.run_it()
        self.assertEqual((ended.returncode, self.starts()), (1, 1))
        self.assertTrue(int(ended.stdout, 16) & 0x40000)

    def FailsATestThatHasNotComeToItsEnd(self):
        for printed, code in (("[ RUN      ] A.B", 98), ("", 98), ("[==========] 1 test from 1 test suite ran. (3 ms total)", 0)):
            with self.subTest(printed):
                self.wine(f'printf "%s\\r\\n" "{printed}"')
                self.assertEqual(self.run_it("--gtest_filter=A.B").returncode, code)
                self.assertEqual(self.run_it("--gtest_filter=A.*", "--gtest_list_tests").returncode, 0)

    def PassesOnWhatTheProgramPrintsByteByByte(self):
        for printed in ("", "no end", "one\\ntwo\\n\\n", "a\\000b\\n", "\\344\\377\\r\\n", "%%s\\\\n"):
            with self.subTest(printed):
                self.wine(f"printf '{printed}'; printf '{printed}.' >&2")
                ended = subprocess.run([RUN, "program"], env=self.environment(), capture_output=True, check=False)
                expected = subprocess.run(["printf", printed], capture_output=True, check=True).stdout
                self.assertEqual((ended.stdout, ended.stderr, ended.returncode), (expected, expected + b".", 0))

    def EndsItsProgramAndItsFolderWhenItIsEnded(self):
        self.wine('pwd >"$RECORD.folder"; exec sleep 1000')
        process = subprocess.Popen([RUN, "program"], env=self.environment(), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        while not (self.folder / "starts.folder").exists() or not (self.folder / "starts.folder").read_text():
            time.sleep(0.05)
        working = Path((self.folder / "starts.folder").read_text().strip())
        self.assertTrue(working.is_dir())
        process.send_signal(signal.SIGTERM)
        self.assertEqual(process.wait(10), 143)
        self.assertFalse(working.parent.exists())

    def wine(self, deed):
        program = self.folder / "bin/wine"
        program.write_text(f'#!/bin/sh\necho >>"$RECORD"; starts=$(wc -l <"$RECORD")\n{deed}\n')
        program.chmod(0o755)

    def refuse_fixed_places(self):
        program = self.folder / "bin/setarch"
        program.write_text(f"#!/bin/sh\necho '{REFUSED}' >&2\nexit 1\n")
        program.chmod(0o755)

    def environment(self):
        return {**os.environ, "WINEPREFIX": "none", "WINELOADER": str(self.folder / "bin/wine"), "RECORD": str(self.folder / "starts"),
                "PATH": f"{self.folder}/bin:{os.environ['PATH']}"}

    def run_it(self, *arguments):
        return subprocess.run([RUN, "program", *arguments], env=self.environment(), capture_output=True, text=True, check=False)

    def starts(self):
        return (self.folder / "starts").read_text().count("\n")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *(f"Harness.{name}" for name in sys.argv[2:])])
