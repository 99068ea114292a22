// Reports that a program asks for, and goes on.

#include "acrash.hpp"
#include "diagnostics/crash_run.hpp"
#include "support/processes/debugger.hpp"

#include <gtest/gtest.h>

#include <algorithm>

using namespace kivtest;

namespace {

constexpr char kBeginning[] =
    "# === [Mini Dump for amodule.cpp line 246]\r\n\r\n# [dump v4] Mini Dump\n\r\n  KIVARA\r\n";

TEST(MiniDump, HasTheValuesOfItsResult) {
  EXPECT_EQ(KIV_DUMP_DONE, 88);
  EXPECT_EQ(KIV_DUMP_NO_FILE, 89);
}

TEST(MiniDump, IsAReportWithoutAnExceptionAndTheProgramGoesOn) {
  CrashRun const run({"minidump"});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.output(), (Lines{"ready", "minidump 58", "end"}));
  EXPECT_EQ(run.errors(), Lines{"[exception] creating MiniDump"});
  EXPECT_EQ(run.files(), Lines{"crash_ways.exe.log"});
  EXPECT_EQ(run.report().substr(0, sizeof kBeginning - 1), kBeginning);
  EXPECT_EQ(run.report().find("Exception code"), std::string::npos);
  std::string const end = "  End of stack trace\r\n\r\n[DONE]\r\n\r\n";
  EXPECT_EQ(run.report().substr(run.report().size() - end.size()), end);
  EXPECT_EQ(run.boxes().size(), 0u);
}

TEST(MiniDump, MayBeAskedForAgainAndBeforeACrash) {
  CrashRun const run({"minidump minidump minidumponthread read"});
  Lines const lines = run.lines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "# === [Mini Dump for amodule.cpp line 246]"), 3);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "# [dump v4] Mini Dump"), 3);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "# [dump v4] Crash dump"), 1);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "[DONE]"), 4);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "  [Cleaned up symbols]"), 1);
}

TEST(MiniDump, OfNoFileHasAnEmptyName) {
  EXPECT_EQ(CrashRun({"minidump0"}).report().substr(0, 33), "# === [Mini Dump for  line 0]\r\n\r\n");
}

TEST(MiniDump, SaysThatTheReportCannotBeOpened) {
  EXPECT_EQ(CrashRun({"fail:CreateFileA minidump"}).output(), (Lines{"ready", "minidump 59", "end"}));
}

TEST(MiniDump, SaysThatTheReportIsHeldByAnother) {
  EXPECT_EQ(CrashRun({"hold minidump"}).output(), (Lines{"ready", "minidump 59", "end"}));
}

TEST(MiniDump, LeavesTheReportToOthersWhenItIsDone) {
  EXPECT_EQ(CrashRun({"minidump hold minidump"}).output(), (Lines{"ready", "minidump 58", "minidump 59", "end"}));
}

TEST(MiniDump, InAProcessUnderADebuggerIsDoneWithoutAFile) {
  support::TempFolder const folder;
  support::Debugger debugger(
      {.program = "crash_ways", .arguments = "minidump setfilter", .environment = {{"TMP", folder.path()}}});
  EXPECT_EQ(debugger.waitForEnd(), 0u);
  EXPECT_NE(debugger.process().output().find("minidump 58"), std::string::npos);
  EXPECT_EQ(support::entriesOf(folder.path()), Lines{});
}

TEST(CrashFilter, IsNotInstalledUnderADebugger) {
  support::TempFolder const folder;
  support::Debugger debugger(
      {.program = "crash_ways", .arguments = "setfilter setfilter", .environment = {{"TMP", folder.path()}}});
  EXPECT_EQ(debugger.waitForEnd(), 0u);
  EXPECT_NE(debugger.process().output().find("filter 1\r\nend"), std::string::npos)
      << "the second call gives back what the first one set: " << debugger.process().output();
}

struct FailedStep {
  char const * function;
  char const * text;
  bool hasReport;
};
std::ostream & operator<<(std::ostream & out, FailedStep const & row) { return out << row.function; }

class MiniDumpStep : public testing::TestWithParam<FailedStep> {};

TEST_P(MiniDumpStep, ThatFailsShowsABoxUnlessDialogsAreSuppressed) {
  std::string const words = std::string("fail:") + GetParam().function + " minidump";
  CrashRun const run({words});
  EXPECT_EQ(run.output().back(), "end") << "the thread runs on";
  ASSERT_EQ(run.boxes().size(), 1u);
  EXPECT_EQ(run.boxes()[0].title, "Error");
  EXPECT_EQ(run.boxes()[0].buttons, Lines{"OK"});
  EXPECT_EQ(run.boxes()[0].texts, Lines{GetParam().text});
  EXPECT_EQ(CrashRun({"suppress " + words}).boxes().size(), 0u);
}

TEST_P(MiniDumpStep, ThatFailsBeforeTheThreadIsNamedInTheReport) {
  CrashRun const run({std::string("suppress fail:") + GetParam().function + " minidump"});
  std::string const failure =
      "# === [Mini Dump for amodule.cpp line 246]\r\n# [failed to create the minidump - EC 5]\r\n";
  EXPECT_EQ(run.report().substr(0, failure.size()) == failure, !GetParam().hasReport);
}

INSTANTIATE_TEST_SUITE_P(Table, MiniDumpStep,
                         testing::Values(FailedStep{"CreateEventA", "CreateEvent failed", false},
                                         FailedStep{"DuplicateHandle", "DuplicateHandle failed", false},
                                         FailedStep{"CreateThread", "CreateThread failed", false},
                                         FailedStep{"SuspendThread", "SuspendThread failed", true},
                                         FailedStep{"GetThreadContext", "GetThreadContext failed", true},
                                         FailedStep{"ResumeThread", "ResumeThread failed", true}));

TEST(MiniDumpName, ThatIsSetEndsTheProcessWithoutAReport) {
  for (char const * words : {"name", "callstack", "noname name"}) {
    CrashRun const run({words});
    EXPECT_EQ(run.exitCode(), 0xC0000409) << words;
    EXPECT_EQ(run.output(), Lines{"ready"});
    EXPECT_EQ(run.errors(), Lines{});
    EXPECT_EQ(run.files(), Lines{});
  }
}

TEST(MiniDumpName, ThatIsNullOrEmptyChangesNothing) {
  CrashRun const run({"noname minidump"});
  EXPECT_EQ(run.output(), (Lines{"ready", "minidump 58", "end"}));
  EXPECT_EQ(run.files(), Lines{"crash_ways.exe.log"});
}

} // namespace
