// Programs that end in other ways than by a plain fault: what the filter sees of it, and what it does not.

#include "diagnostics/crash_run.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

using namespace kivtest;

namespace {

std::string exceptionLine(CrashRun const & run) {
  Lines const section = sectionOf(run.lines(), "  Exception code: ");
  return section.empty() ? "(none)" : section.front();
}

constexpr char kAccessViolation[] = "  Exception code: C0000005h ACCESS_VIOLATION";

/// What a report of a program that has everything ends with.
bool isWhole(std::string const & report) {
  return report.ends_with("  End of stack trace\r\n\r\n[DONE]\r\n\r\n  [Cleaned up symbols]\r\n");
}

// What does not reach the filter

struct Silence {
  char const * words;
  unsigned long code;
  Lines output;
};
std::ostream & operator<<(std::ostream & out, Silence const & row) { return out << row.words; }

class SilentDeath : public testing::TestWithParam<Silence> {};

TEST_P(SilentDeath, LeavesNothing) {
  CrashRun const run({GetParam().words});
  EXPECT_EQ(run.exitCode(), GetParam().code);
  EXPECT_EQ(run.output(), GetParam().output);
  EXPECT_EQ(run.files(), Lines{});
  EXPECT_EQ(run.boxes().size(), 0u);
  for (auto const & line : run.errors())
    EXPECT_FALSE(line.starts_with("[exception]")) << line;
}

INSTANTIATE_TEST_SUITE_P(Table, SilentDeath,
                         testing::Values(Silence{"abort", 3, {"ready"}}, Silence{"raise", 3, {"ready"}},
                                         Silence{"throw", 3, {"ready"}}, Silence{"throwonthread", 3, {"ready"}},
                                         Silence{"signal read", 55, {"ready", "the program's handler"}}));

/// The filter has its room on the stack, but Wine ends the process, or the thread, without asking it.
TEST(StackOverflow, IsNotSeenUnderWine) {
  CrashRun const run({"overflow"});
  EXPECT_EQ(run.output(), Lines{"ready"});
  EXPECT_EQ(run.files(), Lines{});
  CrashRun const onThread({"overflowonthread"});
  EXPECT_EQ(onThread.output(), (Lines{"ready", "end"})) << "the thread alone has gone";
  EXPECT_EQ(onThread.files(), Lines{});
}

TEST(DllDeath, WhileItIsLoadedOnlyKeepsTheDllAway) {
  CrashRun const run({"inattach:read"});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.output(), (Lines{"ready", "loaded 0", "end"}));
  EXPECT_EQ(run.files(), Lines{});
}

TEST(DllDeath, AtTheEndOfTheProcessIsNotSeen) {
  CrashRun const run({"indetach:read"});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.output(), (Lines{"ready", "loaded 1", "end"}));
  EXPECT_EQ(run.files(), Lines{});
}

// What does

TEST(Crash, ByACppExceptionThatLeavesAThreadOfTheSystemIsReported) {
  CrashRun const run(quick("throwonsystemthread"));
  EXPECT_EQ(run.exitCode(), 0x20474343u);
  EXPECT_EQ(run.errors(), errorLines(0x20474343, false));
  EXPECT_EQ(exceptionLine(run), "  Exception code: 20474343h ");
}

TEST(Crash, ByACallOfAPureFunctionIsReported) {
  CrashRun const run(quick("pure"));
  EXPECT_EQ(run.exitCode(), static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  EXPECT_EQ(run.output(), Lines{"ready"});
  EXPECT_EQ(exceptionLine(run), kAccessViolation);
}

TEST(Crash, InAPluginIsReportedWithThePluginsBefore) {
  std::string const path = support::binFolder() + "plugin_fixture.dll";
  CrashRun const run(quick("plugin:" + path + " plugin:" + path, {{"KIVARA_PLUGIN_EXECUTION", "44"}}));
  EXPECT_EQ(run.exitCode(), 0u) << "the plug-in itself is in order";
  CrashRun const failing(quick("plugin:" + path, {{"KIVARA_PLUGIN_VERSION", "fault"}}));
  EXPECT_EQ(failing.exitCode(), static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  EXPECT_EQ(failing.errors(), errorLines(STATUS_ACCESS_VIOLATION, false));
  EXPECT_EQ(exceptionLine(failing), kAccessViolation);
  EXPECT_EQ(sectionOf(failing.lines(), "  Exception code: ").back().substr(26, 8), "h 0001h:");
  EXPECT_TRUE(isWhole(failing.report()));
}

TEST(Crash, WhileTheRuntimeShutsDownIsReported) {
  CrashRun const run(quick("atexit"));
  EXPECT_EQ(run.exitCode(), static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  EXPECT_EQ(run.output(), (Lines{"ready", "end"}));
  EXPECT_EQ(run.errors(), errorLines(STATUS_ACCESS_VIOLATION, false));
  EXPECT_TRUE(isWhole(run.report()));
}

TEST(Crash, InTheMinidumpLeavesItEmptyAndNoReport) {
  CrashRun const run({"suppress indump read"});
  EXPECT_EQ(run.exitCode(), static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  EXPECT_EQ(run.errors(), (Lines{"[exception] An exception of type 0xC0000005 occured",
                                 "[exception] An exception of type 0xC0000005 occured"}));
  ASSERT_EQ(run.files().size(), 1u);
  EXPECT_EQ(support::readFile(run.fileEndingIn(".dmp")), "");
  EXPECT_EQ(run.boxes().size(), 0u);
}

TEST(CrashFilter, PassesABreakpointToTheOneThatWasSetBeforeAndReportsTheExceptionAfterIt) {
  CrashRun const run({.words = "break", .program = "crash_late"});
  EXPECT_EQ(run.output(), (Lines{"filter 80000003", "after the breakpoint", "filter E1234567"}));
  Lines errors = errorLines(0xE1234567);
  errors.insert(errors.begin(), "[exception] An exception of type 0x80000003 occured");
  EXPECT_EQ(run.errors(), errors);
  EXPECT_EQ(run.exitCode(), 0xE1234567);
  EXPECT_EQ(run.files().size(), 2u);
}

// What is left of the process

TEST(Crash, AfterBlocksWereOverrunIsReportedWhole) {
  CrashRun const run(quick("damageheap read"));
  EXPECT_EQ(run.exitCode(), static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  EXPECT_EQ(run.errors(), errorLines(STATUS_ACCESS_VIOLATION, false));
  EXPECT_TRUE(isWhole(run.report()));
}

TEST(Crash, WithoutMemoryLeavesWhatNeedsNone) {
  CrashRun const run(quick("info takememory read"));
  EXPECT_EQ(run.exitCode(), static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  EXPECT_EQ(run.errors(), errorLines(STATUS_ACCESS_VIOLATION, false));
  Lines const lines = run.lines();
  EXPECT_EQ(exceptionLine(run), kAccessViolation);
  EXPECT_EQ(sectionOf(lines, "  Current directory: ").size(), 2u);
  EXPECT_EQ(sectionOf(lines, "  Module name").size(), 6u);
  EXPECT_GT(sectionOf(lines, "  Environment variables:").size(), 3u);
  EXPECT_TRUE(isWhole(run.report()));
}

TEST(Crash, WithoutMemoryHasNoArchiveButItsBox) {
  CrashRun const run({"watch takememory read"});
  EXPECT_EQ(run.output(), Lines{"ready"}) << "no command";
  EXPECT_EQ(run.boxes().size(), 1u);
  EXPECT_EQ(support::readFile(run.fileEndingIn(".dmp")).value_or("").substr(0, 4), "MDMP");
}

TEST(MiniDump, WithoutMemorySaysThatItCannotBeMade) {
  CrashRun const run({"suppress takememory minidump"});
  EXPECT_EQ(run.output(), (Lines{"ready", "minidump 58", "end"}));
  EXPECT_EQ(run.report(), "# === [Mini Dump for amodule.cpp line 246]\r\n# [failed to create the minidump - EC 8]\r\n");
}

TEST(Crash, WithoutHandlesLeavesNoFileButEnds) {
  std::string const words =
      "suppress fail:CreateFileA fail:CreateEventA fail:CreateThread fail:DuplicateHandle minidump read";
  CrashRun const run({words});
  EXPECT_EQ(run.exitCode(), static_cast<unsigned long>(STATUS_ACCESS_VIOLATION));
  EXPECT_EQ(run.output(), (Lines{"ready", "minidump 59"}));
  EXPECT_EQ(run.errors(), (Lines{"[exception] An exception of type 0xC0000005 occured",
                                 "CreateMiniDump dmp file failed", "[exception] finished dumpfile creation"}));
  EXPECT_EQ(run.files(), Lines{});
}

// The lock of the loader

TEST(MiniDump, UnderTheLockOfTheLoaderGivesUpAndTheProgramGoesOn) {
  CrashRun const run({"suppress waitshortly inattach:minidump minidump"});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.output(), (Lines{"ready", "wait 7530", "minidump 58", "loaded 1", "wait 7530", "minidump 58", "end"}))
      << "30,000 milliseconds";
  std::string const failure =
      "# === [Mini Dump for amodule.cpp line 246]\r\n# [failed to create the minidump - EC 1460]\r\n";
  EXPECT_EQ(run.report().substr(0, failure.size()), failure);
  Lines const lines = run.lines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "# [dump v4] Mini Dump"), 1) << "that after the lock";
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "[DONE]"), 1);
}

TEST(MiniDump, AtTheEndOfTheProcessGetsNoThread) {
  CrashRun const run({"indetach:minidump"});
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.output(), (Lines{"ready", "loaded 1", "end", "minidump 58"}));
  EXPECT_EQ(run.report(), "# === [Mini Dump for amodule.cpp line 246]\r\n# [failed to create the minidump - EC 5]\r\n");
}

} // namespace
