// What is reported once in a process: the dead network and the exit notice.

#include "diagnostics/report_texts.hpp"
#include "support/data/files.hpp"

#include <gtest/gtest.h>

using namespace kivtest;

namespace {

TEST(DeadNetwork, IsReportedOnceInsteadOfInternalErrors) {
  ReporterRun run("deadnet error error network");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{networkText()});
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "after error, wait 0", "after error, wait 0", "after network"}));
  EXPECT_EQ(run.texts(), Lines{});
}

TEST(DeadNetwork, IsReportedWhenTheDatabaseLayerIsNotConnected) {
  ReporterRun run("link error error");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{networkText()});
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "after error, wait 0", "after error, wait 0"}));
  EXPECT_EQ(run.texts(), Lines{});
}

TEST(DeadNetwork, IsNotReportedWhileTheDatabaseLayerIsConnected) {
  ReporterRun run("link connected:256 error");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{errorText()});
  EXPECT_EQ(run.texts(), Lines{kErrorLine});
}

TEST(DeadNetwork, IsAskedForAtEachInternalError) {
  ReporterRun run("-no_dialogs link connected:1 error connected:0 error connected:-1 error");
  EXPECT_EQ(run.lines(), (Lines{"after error, wait 0", "after error, wait 0", "after error, wait 0"}));
  EXPECT_EQ(run.texts(), (Lines{kErrorLine, kErrorLine}));
}

TEST(DeadNetwork, HasTheOrdinaryPointerInItsBoxAndLeavesTheWindowAlone) {
  ReporterRun run("window wait deadnet error");
  run.answerBox(IDOK);
  EXPECT_EQ(run.lines(), (Lines{"box owner=0 style=0x42010, wait 0", "after error, wait 3"}));
}

TEST(DeadNetwork, CancelStopsInTheDebugger) {
  ReporterRun run("-assert network");
  run.answerBox(IDCANCEL);
  EXPECT_EQ(run.lines(), (Lines{kBoxWithCancel, "after network"}));
  EXPECT_EQ(run.stops(), 1u);
}

TEST(DeadNetwork, WithoutReleaseAssertionsACancelledBoxDoesNotStop) {
  ReporterRun run("cancelledbox network");
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "after network"}));
  EXPECT_EQ(run.stops(), 0u);
}

TEST(DeadNetwork, WithoutABoxCountsAsReported) {
  ReporterRun run("-assert nobox network network");
  EXPECT_EQ(run.lines(), (Lines{kBoxWithCancel, "after network", "after network"}));
  EXPECT_EQ(run.texts(), Lines{});
  EXPECT_EQ(run.stops(), 0u);
}

TEST(DeadNetwork, AFailureInsideOfItsReportDoesNotComeBack) {
  ReporterRun run("manager:frame_texts.dll reportexceptions deadnet error");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{networkText()});
  EXPECT_EQ(run.lines(), (Lines{"exception 0x100 of 0x2000d18", kPlainBox, "after error, wait 0"}));
}

TEST(DeadNetwork, HasTheTextAsItStands) {
  ReporterRun run("manager:error_texts.dll network");
  EXPECT_EQ(run.answerBox(IDOK).texts, Lines{"100% gone: %s"});
}

TEST(DeadNetwork, UnderSuppressionIsLoggedOnce) {
  ReporterRun run("-no_dialogs -assert log:dialogs.txt deadnet error network error");
  EXPECT_EQ(run.lines(), (Lines{"after error, wait 0", "after network", "after error, wait 0"}));
  EXPECT_EQ(run.texts(), Lines{});
  EXPECT_EQ(linesOf(support::readFile("dialogs.txt").value_or("")),
            linesOf("displayDeadNetworkMessage()\n" + networkText()));
}

TEST(DeadNetwork, ThatIsReportedNowhereCountsAsReported) {
  ReporterRun run("-no_dialogs network show network suppress log:dialogs.txt network");
  EXPECT_EQ(run.lines(), (Lines{"after network", "after network", "after network"}));
  EXPECT_FALSE(support::exists("dialogs.txt"));
}

TEST(DeadNetwork, ThatWasOnlyLoggedIsNotShownLater) {
  ReporterRun run("-no_dialogs log:dialogs.txt network show network");
  EXPECT_EQ(run.lines(), (Lines{"after network", "after network"}));
}

TEST(ExitNotice, ThatIsShownNowhereCountsAsShown) {
  ReporterRun run("exit suppress log:dialogs.txt exit");
  EXPECT_EQ(run.lines(), (Lines{"after exit", "after exit"}));
  EXPECT_FALSE(support::exists("dialogs.txt"));
}

TEST(ExitNotice, ThatIsLoggedNowhereCountsAsShown) {
  ReporterRun run("-no_dialogs -assert exit show exit suppress log:dialogs.txt exit");
  EXPECT_EQ(run.lines(), (Lines{"after exit", "after exit", "after exit"}));
  EXPECT_FALSE(support::exists("dialogs.txt"));
}

TEST(ExitNotice, CancelStopsInTheDebugger) {
  ReporterRun run("-assert exit");
  run.answerBox(IDCANCEL);
  EXPECT_EQ(run.lines(), (Lines{kBoxWithCancel, "after exit"}));
  EXPECT_EQ(run.stops(), 1u);
}

TEST(ExitNotice, IsShownOnce) {
  ReporterRun run("-assert exit exit");
  run.answerBox(IDOK);
  EXPECT_EQ(run.lines(), (Lines{kBoxWithCancel, "after exit", "after exit"}));
}

TEST(ExitNotice, WithoutABoxCountsAsShown) {
  ReporterRun run("-assert nobox exit exit");
  EXPECT_EQ(run.lines(), (Lines{kBoxWithCancel, "after exit", "after exit"}));
  EXPECT_EQ(run.stops(), 0u);
}

TEST(ExitNotice, UnderSuppressionIsLoggedOnce) {
  ReporterRun run("-no_dialogs log:dialogs.txt exit exit");
  EXPECT_EQ(run.lines(), (Lines{"after exit", "after exit"}));
  EXPECT_EQ(linesOf(support::readFile("dialogs.txt").value_or("")), Lines{"--- E X I T ---"});
}

} // namespace
