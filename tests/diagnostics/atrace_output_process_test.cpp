// Where lines go: the debugger, the dynamic console, the trace file and stdout, in whole processes.

#include "diagnostics/reporter_run.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

using kivtest::Lines;
using kivtest::linesOf;
using kivtest::ReporterRun;

namespace {

/// What the frame writes to the console's stream at the end.
std::string const kEnd = "[kiv] Application shutdown event recognized\n";

bool isAboutLanguages(std::string const & line) { return line.starts_with("[locale] "); }

/// The lines of the console as the program itself read them back, without the languages that it found at its start.
Lines screen() {
  Lines lines = linesOf(support::readFile("screen.txt").value_or(""));
  std::erase_if(lines, isAboutLanguages);
  while (!lines.empty() && lines.back().empty())
    lines.pop_back();
  return lines;
}

TEST(DebugOutput, ReachesTheDebuggerUnchanged) {
  ReporterRun run("\"out:[kiv] no line end\" out: \"out:100%s \xE4\xF6\xFC \x84\"");
  EXPECT_EQ(run.texts(), (Lines{"[kiv] no line end", "", "100%s \xE4\xF6\xFC \x84"}));
  EXPECT_EQ(run.lines(), Lines{});
}

TEST(DebugOutput, OfAnyLengthReachesTheDebuggerWhole) {
  ReporterRun run("long:END");
  EXPECT_EQ(run.texts(), Lines{std::string(5000, 'x') + "END"});
}

TEST(DebugOutput, ComesFromAnyThread) {
  ReporterRun run("thread:out:line");
  EXPECT_EQ(run.texts(), Lines{"line"});
}

TEST(DebugOutput, WithNoListenerIsNowhere) {
  auto const result = support::runProgram({.program = "error_reporter", .arguments = "out:line heapcheck:a.cpp"});
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "");
}

/// Runs the program with a console of its own, as from the desktop, and gives the console's lines.
Lines consoleOf(std::string const & words) {
  auto const result = support::runProgram({.program = "error_reporter",
                                           .arguments = "-console " + words + " screen:screen.txt",
                                           .withoutStreams = true,
                                           .creationFlags = DETACHED_PROCESS});
  EXPECT_EQ(result.exitCode, 0u);
  return screen();
}

TEST(DebugOutput, ReachesTheConsole) {
  EXPECT_EQ(consoleOf("\"out:[kiv] a line,\" \"out: and more\""), Lines{"[kiv] a line, and more"});
}

TEST(DebugOutput, ForTheConsoleIsStderrInTheOEMCharacterSet) {
  consoleOf("stderr:bytes.txt \"out:[kiv] \xE4\xF6\xFC\" \"out: and more\"");
  EXPECT_EQ(support::readFile("bytes.txt"), "[kiv] \x84\x94\x81 and more" + kEnd);
}

TEST(DebugOutput, OfAnyLengthReachesTheConsoleWhole) {
  std::string text;
  for (std::string const & line : consoleOf("long:END"))
    text += line;
  EXPECT_EQ(text, std::string(5000, 'x') + "END");
}

TEST(DebugOutput, ForTheConsoleLosesNothingWhereverItIsLong) {
  std::string words;
  std::string expected;
  for (int const count : {1, 4094, 4095, 4096, 8189, 8190, 8191, 20'000}) {
    words += " characters:" + std::to_string(count) + " out:|";
    for (int i = 0; i < count; ++i)
      expected += static_cast<char>('a' + i % 26);
    expected += '|';
  }
  consoleOf("stderr:bytes.txt" + words);
  EXPECT_EQ(support::readFile("bytes.txt"), expected + kEnd);
}

TEST(DebugOutput, OfAnAssertionReachesTheConsole) {
  EXPECT_EQ(consoleOf("-no_dialogs fail:count>0"),
            (Lines{"[assertion] amodule.cpp (42): count>0", "            MessageBox errorcode: 0", "assertion 0"}));
}

TEST(DebugOutput, OfAHeapCheckIsOneLineOfTheConsole) {
  EXPECT_EQ(consoleOf("heapcheck:amodule.cpp"), Lines{"[debug] Performing HeapCheck amodule.cpp (42) - done"});
}

TEST(DebugOutput, ReachesDebuggerAndConsoleTogether) {
  support::Debugger const debugger({.program = "error_reporter",
                                    .arguments = "-console \"out:[kiv] line\" screen:screen.txt",
                                    .withoutStreams = true,
                                    .creationFlags = DETACHED_PROCESS});
  EXPECT_EQ(debugger.waitForEnd(), 0u);
  Lines texts = debugger.texts();
  std::erase_if(texts, isAboutLanguages);
  EXPECT_EQ(texts, (Lines{"[kiv] line", kEnd}));
  EXPECT_EQ(screen(), Lines{"[kiv] line"});
}

TEST(DebugOutput, OfAnInternalErrorReachesTheConsole) {
  Lines const lines = consoleOf("-no_dialogs error");
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines[0], "[dEM] aEvent.cpp (246): " + kivtest::errorCode());
}

TEST(HeapCheck, IsTwoPiecesOfOneLine) {
  ReporterRun run("heapcheck:amodule.cpp");
  EXPECT_EQ(run.texts(), (Lines{"[debug] Performing HeapCheck amodule.cpp (42)", " - done\n"}));
}

TEST(HeapCheck, IsSwitchedOffByTheEnvironmentWhateverItsValue) {
  ReporterRun run("heapcheck:amodule.cpp", {{"KIV_NO_HEAPCHECK", "0"}});
  EXPECT_EQ(run.texts(), Lines{});
}

TEST(HeapCheck, OfANullNameAndANegativeLineIsWritten) {
  ReporterRun run("nullheapcheck");
  EXPECT_EQ(run.texts(), (Lines{"[debug] Performing HeapCheck  (4294967295)", " - done\n"}));
}

TEST(HeapCheck, OfALongNameIsCut) {
  std::string const name(600, 'x');
  ReporterRun run("heapcheck:" + name);
  EXPECT_EQ(run.texts(), (Lines{("[debug] Performing HeapCheck " + name).substr(0, 511), " - done\n"}));
}

TEST(TraceOfAProgram, GoesToTheFileOfTheCommandLineAndToStdoutAfterMain) {
  auto const result = support::runProgram(
      {.program = "error_reporter", .arguments = "-trace -trfout.txt trace:first \"trace:second line\""});
  EXPECT_EQ(linesOf(support::readFile("out.txt").value_or("")), (Lines{"first", "second line"}));
  EXPECT_EQ(linesOf(result.output), Lines{"destroyed"});
}

TEST(TraceOfAProgram, IsOffWithoutTheOption) {
  auto const result =
      support::runProgram({.program = "error_reporter", .arguments = "-tracex -trfout.txt trace:first"});
  EXPECT_EQ(support::readFile("out.txt"), "");
  EXPECT_EQ(result.output, "");
}

TEST(TraceOfAProgram, GoesToStdoutWithoutAFile) {
  auto const result = support::runProgram({.program = "error_reporter", .arguments = "-trace trace:first"});
  EXPECT_EQ(linesOf(result.output), (Lines{"first", "destroyed"}));
}

TEST(TraceOfAProgram, GoesToStdoutWhenItsFileCannotBeOpened) {
  auto const result =
      support::runProgram({.program = "error_reporter", .arguments = "-trace -trfno\\such\\out.txt trace:first"});
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(linesOf(result.output), (Lines{"first", "destroyed"}));
}

TEST(TraceOfAProgram, WithAConsoleGoesToIt) { EXPECT_EQ(consoleOf("-trace trace:first"), Lines{"first"}); }

TEST(TraceOfAProgram, ReplacesAnOlderFile) {
  support::writeFile("out.txt", "from before\r\n");
  support::runProgram({.program = "error_reporter", .arguments = "-trace -trfout.txt trace:new"});
  EXPECT_EQ(linesOf(support::readFile("out.txt").value_or("")), Lines{"new"});
}

} // namespace
