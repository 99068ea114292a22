// Logs in whole processes: their internal errors, and what is in the files when a program has ended.

#include "diagnostics/reporter_run.hpp"
#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"

#include <gtest/gtest.h>

using kivtest::errorCode;
using kivtest::Lines;
using kivtest::ReporterRun;

namespace {

std::string report(int line) {
  return "[dEM] alog.cpp (" + std::to_string(line) + "): " + errorCode("alog", line) + "\n";
}

TEST(LogError, OfAFileThatCannotBeReadIsReported) {
  support::writeFile("held.log", "2026.11.12, 01:02:03: x\r\n");
  support::FileInUse const held("held.log");
  ReporterRun run("-no_dialogs openlog:held.log");
  EXPECT_EQ(run.lines(), Lines{"open 0, line 0"});
  EXPECT_EQ(run.texts(), Lines{report(47)});
}

TEST(LogError, OfAFileThatCanNeitherBeMovedNorEmptiedIsReported) {
  support::writeFile("read.log", "2026.11.12, 01:02:03: x\r\n");
  HANDLE const reader = CreateFileA("read.log", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  ReporterRun run("-no_dialogs openlog:read.log");
  EXPECT_EQ(run.lines(), Lines{"open 0, line 0"});
  EXPECT_EQ(run.texts(), Lines{report(78)});
  CloseHandle(reader);
  EXPECT_EQ(support::readFile("read.log"), "2026.11.12, 01:02:03: x\r\n");
}

TEST(LogError, OfALineOfItsOwnThatCannotBeWrittenIsReported) {
  ReporterRun run("-no_dialogs ownlogline");
  EXPECT_EQ(run.lines(), Lines{"own line"});
  EXPECT_EQ(run.texts(), Lines{report(34)});
}

TEST(LogError, IsNoneForNamesThatAreRefused) {
  support::TempFolder const folder;
  ReporterRun run("-no_dialogs openlog:" + folder.path() + " openlog:no|name openlog:");
  EXPECT_EQ(run.lines(), (Lines{"open 0, line 0", "open 0, line 0", "open 0, line 0"}));
  EXPECT_EQ(run.texts(), Lines{});
}

TEST(NamedLogs, OfAProgramAreWholeWhenItHasEnded) {
  ReporterRun run("-no_dialogs addtolog:one addtolog:two addtocsvlog:;three");
  EXPECT_EQ(run.lines(), Lines{});
  Lines const lines = kivtest::linesOf(support::readFile("named.log").value_or(""));
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].substr(20), ": one");
  EXPECT_EQ(lines[1].substr(20), ": two");
  EXPECT_EQ(support::readFile("named.csv")->substr(23), ";three\r\n");
}

TEST(NamedLogs, AreClosedWhenTheProgramEnds) {
  ReporterRun run("-no_dialogs watchclosedfiles addtolog:one addtolog:two addtocsvlog:;three");
  Lines lines = run.lines();
  std::erase_if(lines, [](std::string const & line) { return !line.starts_with("closed named."); });
  EXPECT_EQ(lines, (Lines{"closed named.csv", "closed named.log"}));
}

TEST(NamedLogs, OfTwoProgramsShareAFile) {
  support::writeFile("named.log", "");
  support::ChildProcess first({.program = "error_reporter", .arguments = "-no_dialogs addtolog:one"});
  support::ChildProcess second({.program = "error_reporter", .arguments = "-no_dialogs addtolog:two"});
  EXPECT_EQ(first.waitForEnd(), 0u);
  EXPECT_EQ(second.waitForEnd(), 0u);
  EXPECT_EQ(kivtest::linesOf(support::readFile("named.log").value_or("")).size(), 2u);
}

} // namespace
