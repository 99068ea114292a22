// Failed assertions and misuse of the command line, in whole processes.

#include "diagnostics/reporter_run.hpp"

#include <gtest/gtest.h>

using kivtest::errorCode;
using kivtest::Lines;
using kivtest::ReporterRun;

namespace {

std::string const kNoError = "            MessageBox errorcode: 0\n";

TEST(FailedAssertion, IsABoxWithOneButton) {
  ReporterRun run("window fail:count>0");
  auto const read = run.answerBox(IDOK);
  EXPECT_EQ(read.title, "Assertion failed");
  EXPECT_EQ(read.texts, Lines{"Assertion failed!\nFile amodule.cpp line 42:\n\nExpression: 'count>0'\n\n"
                              "User message:\n  'what it means'\n"});
  EXPECT_EQ(read.buttons, Lines{"OK"});
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42010", "assertion 0"}));
  EXPECT_EQ(run.texts(), Lines{"[assertion] amodule.cpp (42): count>0\n"});
}

TEST(FailedAssertion, HasNoCancelWithReleaseAssertionsEither) {
  ReporterRun run("-assert fail:count>0");
  EXPECT_EQ(run.answerBox(IDOK).buttons, Lines{"OK"});
  EXPECT_EQ(run.stops(), 0u);
}

TEST(FailedAssertion, UnderSuppressionIsTwoLinesForTheDebugger) {
  ReporterRun run("-no_dialogs fail:count>0");
  EXPECT_EQ(run.lines(), Lines{"assertion 0"});
  EXPECT_EQ(run.texts(), (Lines{"[assertion] amodule.cpp (42): count>0\n", kNoError}));
}

TEST(FailedAssertion, WithoutABoxTellsTheSystemsError) {
  ReporterRun run("nobox fail:count>0");
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42010", "assertion 0"}));
  EXPECT_EQ(run.texts(), (Lines{"[assertion] amodule.cpp (42): count>0\n", "            MessageBox errorcode: 8\n"}));
}

TEST(FailedAssertion, Answers1WhenTheBoxWasCancelledAndDoesNotStop) {
  ReporterRun run("cancelledbox fail:count>0");
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42010", "assertion 1"}));
  EXPECT_EQ(run.texts(), Lines{"[assertion] amodule.cpp (42): count>0\n"});
  EXPECT_EQ(run.stops(), 0u);
}

TEST(FailedAssertion, NeedsNeitherDatabaseNorNetwork) {
  ReporterRun run("-no_dialogs deadnet link fail:count>0");
  EXPECT_EQ(run.texts(), (Lines{"[assertion] amodule.cpp (42): count>0\n", kNoError}));
}

TEST(FailedAssertion, WithADumpAskedForIsToldAsEver) {
  ReporterRun run("-no_dialogs fail:count>0", {{"KIV_DUMP_ASSERTION", "0"}});
  EXPECT_EQ(run.lines(), Lines{"assertion 0"});
  EXPECT_EQ(run.texts(), (Lines{"[assertion] amodule.cpp (42): count>0\n", kNoError}));
}

Lines const kAsserted{"evaluated", "box owner=0 style=0x42010", "after the assertion"};

TEST(AssertMacro, TestsWithReleaseAssertions) {
  ReporterRun run("-assert assert");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{"Assertion failed!\nFile aplace.cpp line 7:\n\nExpression: 'the text'\n\n"
                                             "User message:\n  'what it means'\n"});
  EXPECT_EQ(run.lines(), kAsserted);
  EXPECT_EQ(run.texts(), Lines{"[assertion] aplace.cpp (7): the text\n"});
}

TEST(AssertMacro, WithoutThemTestsInDebugBuildsOnly) {
  ReporterRun run("assert");
#ifdef KIVARA_DEBUG
  run.answerBox(IDOK);
  EXPECT_EQ(run.lines(), kAsserted);
#else
  EXPECT_EQ(run.lines(), Lines{"after the assertion"});
  EXPECT_EQ(run.texts(), Lines{});
#endif
}

struct Misuse {
  char const * question;
  int line;
  char const * answer;
};
std::ostream & operator<<(std::ostream & out, Misuse const & misuse) { return out << misuse.question; }

class CommandLineBeforeInit : public testing::TestWithParam<Misuse> {};
TEST_P(CommandLineBeforeInit, ReportsItsLineAndAnswersAsForNoWords) {
  ReporterRun run("-h14 -assert", {{"KIVTEST_BEFORE_INIT", GetParam().question}});
  std::string const code = errorCode("acmdline", GetParam().line);
  auto const read = run.answerBox(IDOK);
  EXPECT_EQ(read.title, "Unexpected program failure");
  EXPECT_EQ(read.texts, Lines{"An internal error has occurred.\n\nError code: " + code});
  EXPECT_EQ(read.buttons, Lines{"OK"}); // "-assert" has not been read yet
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42010", std::string("answer ") + GetParam().answer}));
  EXPECT_EQ(run.texts(), Lines{"[dEM] acmdline.cpp (" + std::to_string(GetParam().line) + "): " + code + "\n"});
}
INSTANTIATE_TEST_SUITE_P(Questions, CommandLineBeforeInit,
                         testing::Values(Misuse{"getCount", 179, "0"}, Misuse{"getParam", 188, "''"},
                                         Misuse{"isFlag", 201, "0"}, Misuse{"getValue", 228, "''"}));

TEST(CommandLine, ASecondInitIsReportedAndRepeatsTheWork) {
  ReporterRun run("-assert again");
  std::string const code = errorCode("acmdline", 109);
  EXPECT_EQ(run.answerBox(IDOK).texts,
            Lines{"An internal error has occurred.\n\nError code: " + code + "\n\n Press Cancel to debug!"});
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42011", "after init, assert 1"}));
  EXPECT_EQ(run.texts(), Lines{"[dEM] acmdline.cpp (109): " + code + "\n"});
}

} // namespace
