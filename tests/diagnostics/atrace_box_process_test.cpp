// Internal errors: what their boxes and lines say, and what follows them.

#include "diagnostics/report_texts.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

using namespace kivtest;

namespace {

TEST(InternalError, WritesItsLineToTheDebuggerBeforeTheBoxOpens) {
  ReporterRun run("error");
  ASSERT_NE(run.box(), nullptr);
  Lines const texts = run.debugger().texts();
  ASSERT_FALSE(texts.empty());
  EXPECT_EQ(texts.back(), kErrorLine);
  run.answerBox(IDOK);
  run.lines();
}

TEST(InternalError, PutsTheWaitPointerBackAfterTheWindowIsUpdated) {
  ReporterRun run("window wait error");
  run.answerBox(IDOK);
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "update, wait 0", "after error, wait 3"}));
}

TEST(InternalError, PutsTheWaitPointerBackToNoneToo) {
  ReporterRun run("waitingbox error");
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "after error, wait 0"}));
}

TEST(InternalError, OfAWindowWithoutATitleHasNone) {
  ReporterRun run("untitled error");
  EXPECT_EQ(run.answerBox(IDOK).title, "");
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "update, wait 0", "after error, wait 0"}));
}

TEST(InternalError, CancelStopsInTheDebuggerBeforeTheProgramGoesOn) {
  std::string outputAtStop;
  support::Debugger const * debugger = nullptr;
  ReporterRun run("-assert window wait error", {}, [&](support::DebuggedException const &) {
    support::pause(0.2); // for output that must not be there
    outputAtStop = debugger->process().output();
    return support::DebugAnswer::Usual;
  });
  debugger = &run.debugger();
  run.answerBox(IDCANCEL);
  EXPECT_EQ(run.lines(), (Lines{kBoxWithCancel, "update, wait 0", "after error, wait 3"}));
  EXPECT_EQ(run.stops(), 1u);
  EXPECT_EQ(linesOf(outputAtStop), Lines{kBoxWithCancel});
}

TEST(InternalError, WithoutADebuggerCancelEndsTheProcess) {
  support::ChildProcess child({.program = "error_reporter", .arguments = "-assert error"});
  HWND const box = support::waitForWindow({.processId = child.processId(), .className = support::kBoxClass});
  EXPECT_TRUE(support::pressButton(box, IDCANCEL));
  EXPECT_EQ(child.waitForEnd(), static_cast<unsigned long>(STATUS_BREAKPOINT));
}

TEST(InternalError, IsReportedEachTime) {
  ReporterRun run("error error");
  run.answerBox(IDOK);
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{errorText()});
  EXPECT_EQ(run.texts(), (Lines{kErrorLine, kErrorLine}));
}

TEST(InternalError, MayComeFromAnyThread) {
  ReporterRun run("thread:error");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{errorText()});
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "after error, wait 0"}));
  EXPECT_EQ(run.texts(), Lines{kErrorLine});
}

TEST(InternalError, WithoutABoxReturnsSilently) {
  ReporterRun run("-assert nobox window wait error");
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42011, wait 0", "update, wait 0", "after error, wait 3"}));
  EXPECT_EQ(run.texts(), Lines{kErrorLine});
  EXPECT_EQ(run.stops(), 0u);
}

TEST(InternalError, WithoutReleaseAssertionsACancelledBoxDoesNotStop) {
  ReporterRun run("cancelledbox error");
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "after error, wait 0"}));
  EXPECT_EQ(run.stops(), 0u);
}

TEST(InternalError, LeavesAWindowAloneThatClosedWhileTheBoxWasOpen) {
  ReporterRun run("window closingbox error");
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "after error, wait 0"}));
}

TEST(InternalError, UnderSuppressionIsNotInTheLogOfDialogs) {
  ReporterRun run("-no_dialogs -log_reporterdialogs.txt window wait error");
  EXPECT_EQ(run.lines(), (Lines{"update, wait 0", "after error, wait 3"}));
  EXPECT_EQ(run.texts(), Lines{kErrorLine});
  EXPECT_FALSE(support::exists("dialogs.txt"));
}

TEST(InternalError, WithoutAGUIIsOnlyALine) {
  ReporterRun run("-assert error", {{"KIVTEST_NO_GUI", "1"}});
  EXPECT_EQ(run.lines(), Lines{"after error, wait 0"});
  EXPECT_EQ(run.texts(), Lines{kErrorLine});
}

TEST(InternalError, BeforeAndAfterTheApplicationObjectIsNothingAtAll) {
  ReporterRun run("", {{"KIVTEST_EARLY", "1"}});
  EXPECT_EQ(run.lines(), (Lines{"after the early error", "after the late error"}));
  EXPECT_EQ(run.texts(), Lines{});
}

TEST(InternalError, BeforeAndAfterTheApplicationObjectIsNothingAtAllWithADeadNetworkToo) {
  ReporterRun run("", {{"KIVTEST_EARLY", "deadnet"}});
  EXPECT_EQ(run.lines(), (Lines{"after the early error", "after the late error"}));
}

TEST(InternalError, BeforeTheApplicationObjectDoesNotCountAsTheMessageOfADeadNetwork) {
  ReporterRun run("error", {{"KIVTEST_EARLY", "deadnet"}});
  EXPECT_EQ(run.lines(), (Lines{"after the early error", kPlainBox, "after error, wait 0", "after the late error"}));
}

struct NameRow {
  char const * file;
  char const * module;
};
std::ostream & operator<<(std::ostream & out, NameRow const & row) { return out << row.file; }

class ErrorCode : public testing::TestWithParam<NameRow> {};
TEST_P(ErrorCode, IsTheNameInLowerCaseWithoutItsLastFourCharacters) {
  ReporterRun run("error:" + std::string(GetParam().file));
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{errorText(0, errorCode(GetParam().module))});
  EXPECT_EQ(run.texts(),
            Lines{"[dEM] " + std::string(GetParam().file) + " (246): " + errorCode(GetParam().module) + "\n"});
}
INSTANTIATE_TEST_SUITE_P(Names, ErrorCode,
                         testing::Values(NameRow{"aparser.cpp", "aparser"}, NameRow{"AParser.CPP", "aparser"},
                                         NameRow{"folder/a.hpp", "folder/a"}, NameRow{"atwelve.c", "atwel"},
                                         NameRow{"%s%n.cpp", "%s%n"}, NameRow{".cpp", ""}, NameRow{"abc", ""}));

TEST(InternalError, OfANullNameHasAnEmptyOne) {
  ReporterRun run("-no_dialogs nullerror");
  EXPECT_EQ(run.texts(), Lines{"[dEM]  (246): " + errorCode("") + "\n"});
}

TEST(InternalError, HasALineWithoutASign) {
  ReporterRun run("-no_dialogs line:0 error line:4294967295 error");
  std::string const version = std::string(" [") + Kiv_GetPatchBuildVersionString().c_str() + "]\n";
  EXPECT_EQ(run.texts(), (Lines{"[dEM] aEvent.cpp (0): aevent-0" + version,
                                "[dEM] aEvent.cpp (4294967295): aevent-4294967295" + version}));
}

TEST(InternalError, ALongNameIsCutInTheLineAndWholeInTheBox) {
  std::string const name(2000, 'x');
  ReporterRun run("error:" + name + ".cpp");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{errorText(0, errorCode(name))});
  EXPECT_EQ(run.texts(), Lines{("[dEM] " + name).substr(0, 1023)});
}

TEST(InternalError, HasItsCodeAtTheFirstPlaceOfTheTextOnly) {
  ReporterRun run("manager:error_texts.dll error");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{"%d%% %S first " + errorCode() + ", second %s"});
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "after error, wait 0"}));
}

TEST(InternalError, ATextWithoutAPlaceForTheCodeStandsAsItIs) {
  ReporterRun run("manager:codeless_texts.dll error");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{"Something is wrong: 100%"});
  EXPECT_EQ(run.texts(), Lines{"[dEM] aEvent.cpp (246): " + errorCode() + "\n"});
}

TEST(InternalError, AMissingTextIsASevereExceptionAndThenTheBuiltInOne) {
  ReporterRun run("manager:frame_texts.dll error");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{errorText()});
  EXPECT_EQ(run.lines(), (Lines{"exception 0x100 of 0x2002b7e", kPlainBox, "after error, wait 0"}));
}

} // namespace
