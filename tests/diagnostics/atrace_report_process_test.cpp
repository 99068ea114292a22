// Failed assertions and misuse of the command line, in whole processes.

#include "diagnostics/report_texts.hpp"

#include <gtest/gtest.h>

using namespace kivtest;

namespace {

TEST(FailedAssertion, UnderSuppressionIsTwoLinesForTheDebugger) {
  ReporterRun run("-no_dialogs -assert fail:count>0");
  EXPECT_EQ(run.lines(), Lines{"assertion 0"});
  EXPECT_EQ(run.texts(), (Lines{kAssertionLine, kNoBoxLine}));
}

TEST(FailedAssertion, WithoutABoxGivesTheSystemsError) {
  ReporterRun run("nobox fail:count>0");
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "assertion 0"}));
  EXPECT_EQ(run.texts(), (Lines{kAssertionLine, "            MessageBox errorcode: 8\n"}));
}

TEST(FailedAssertion, Answers1WhenTheBoxWasCancelledAndDoesNotStop) {
  ReporterRun run("cancelledbox fail:count>0");
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "assertion 1"}));
  EXPECT_EQ(run.texts(), Lines{kAssertionLine});
  EXPECT_EQ(run.stops(), 0u);
}

TEST(FailedAssertion, NeedsNeitherDatabaseNorNetwork) {
  ReporterRun run("-no_dialogs deadnet link fail:count>0");
  EXPECT_EQ(run.texts(), (Lines{kAssertionLine, kNoBoxLine}));
}

TEST(FailedAssertion, WithADumpRequestedIsReportedAsUsual) {
  ReporterRun run("-no_dialogs fail:count>0", {{"KIV_DUMP_ASSERTION", "0"}});
  EXPECT_EQ(run.lines(), Lines{"assertion 0"});
  EXPECT_EQ(run.texts(), (Lines{kAssertionLine, kNoBoxLine}));
}

TEST(FailedAssertion, ShowsItsBoxWithTheOrdinaryPointer) {
  ReporterRun run("wait fail:count>0");
  run.answerBox(IDOK);
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42010, wait 0", "assertion 0"}));
}

TEST(FailedAssertion, IsReportedEachTimeAndFromAnyThread) {
  ReporterRun run("-no_dialogs fail:count>0 thread:fail:count>0");
  EXPECT_EQ(run.texts(), (Lines{kAssertionLine, kNoBoxLine, kAssertionLine, kNoBoxLine}));
}

TEST(FailedAssertion, OnANegativeLineHasItsSignInTheBoxOnly) {
  ReporterRun run("assertionline:-1 fail:x");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{"Assertion failed!\nFile amodule.cpp line -1:\n\nExpression: 'x'\n\n"
                                             "User message:\n  'what it means'\n"});
  EXPECT_EQ(run.texts(), Lines{"[assertion] amodule.cpp (4294967295): x\n"});
}

TEST(FailedAssertion, ShowsItsTextsAsTheyStand) {
  ReporterRun run("\"fail:count % 2 == %s%n\"");
  EXPECT_EQ(run.answerBox(IDOK).texts,
            Lines{"Assertion failed!\nFile amodule.cpp line 42:\n\nExpression: 'count % 2 == %s%n'\n\n"
                  "User message:\n  'what it means'\n"});
  EXPECT_EQ(run.texts(), Lines{"[assertion] amodule.cpp (42): count % 2 == %s%n\n"});
}

TEST(FailedAssertion, OfALongExpressionIsCutInTheBoxAndInTheLine) {
  std::string const expression(9000, 'x');
  ReporterRun run("fail:" + expression);
  EXPECT_EQ(run.answerBox(IDOK).texts,
            Lines{("Assertion failed!\nFile amodule.cpp line 42:\n\nExpression: '" + expression).substr(0, 8191)});
  EXPECT_EQ(run.texts(), Lines{("[assertion] amodule.cpp (42): " + expression).substr(0, 8191)});
}

TEST(FailedAssertion, OfNullTextsHasEmptyOnes) {
  ReporterRun run("nullfail");
  EXPECT_EQ(run.answerBox(IDOK).texts,
            Lines{"Assertion failed!\nFile  line 0:\n\nExpression: ''\n\nUser message:\n  ''\n"});
  EXPECT_EQ(run.texts(), Lines{"[assertion]  (0): \n"});
}

Lines const kAsserted{"evaluated", kPlainBox, "after the assertion"};

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
  EXPECT_EQ(read.title, kNoWindow);
  EXPECT_EQ(read.texts, Lines{errorText(0, code)});
  EXPECT_EQ(read.buttons, kOK); // "-assert" has not been read yet
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, std::string("answer ") + GetParam().answer}));
  EXPECT_EQ(run.texts(), Lines{"[dEM] acmdline.cpp (" + std::to_string(GetParam().line) + "): " + code + "\n"});
}
INSTANTIATE_TEST_SUITE_P(Questions, CommandLineBeforeInit,
                         testing::Values(Misuse{"getCount", 179, "0"}, Misuse{"getParam", 188, "''"},
                                         Misuse{"isFlag", 201, "0"}, Misuse{"getValue", 228, "''"}));

TEST(CommandLine, ASecondInitIsReportedAndRepeatsTheWork) {
  ReporterRun run("-assert again");
  std::string const code = errorCode("acmdline", 109);
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{errorText(0, code) + kCancelHint});
  EXPECT_EQ(run.lines(), (Lines{kBoxWithCancel, "after init, assert 1"}));
  EXPECT_EQ(run.texts(), Lines{"[dEM] acmdline.cpp (109): " + code + "\n"});
}

} // namespace
