#include "frame/product_run.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace {

using Lines = std::vector<std::string>;

bool contains(Lines const & lines, std::string const & line) {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

/// The first six letters say what is valid at the step: c the command line, f the font, s the suppression settings,
/// d the start directory, l the labels of the buttons, e that the end has begun.
TEST(Frame, TakesItsStepsInOrder) {
  ProductRun run("frame_order", "-trace -no_windows -trftrace.txt -pidfilepid.txt");
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), (Lines{
                              "------ constructed",
                              "------ GetCommandLineA",
                              "------ InitSV",
                              "------ SetPrinterSwitches",
                              "c----- fopen trace.txt wt",
                              "c----- ChangeAppFont",
                              "cf---- SetModalDialogSuppression",
                              "cf---- SetModalDialogSuppressionLogfileName",
                              "cf---- SetShowWindowSuppression",
                              "cfs--- SetPoolFile",
                              "cfs--- fopen " + support::binFolder() + "lang.ini rt",
                              "cfs--- fclose",
                              "cfs--- fopen " + support::binFolder() + "language\\2057\\kivml.dll rb",
                              "cfs--- fclose",
                              "cfs--- fopen " + support::binFolder() + "language\\1031\\kivml.dll rb",
                              "cfs--- fclose",
                              "cfs--- _getpid",
                              "cfs--- fopen pid.txt w",
                              "cfs--- fclose",
                              "cfs--- GetCurrentDirectoryA",
                              "cfsd-- prepareApplication",
                              "prepareApplication",
                              "cfsd-- LoadString 200290b",
                              "cfsd-- ChangeAppFont",
                              "cfsd-- LoadString 2002922",
                              "cfsd-- LoadString 2002923",
                              "cfsd-- LoadString 2002924",
                              "cfsd-- ChangeAppInternational",
                              "cfsdl- runApplication",
                              "runApplication",
                              "cfsdle fclose",
                              "cfsdle SetResManager",
                              "cfsdle DeInitSV",
                              "destroyed, toolkit down",
                          }));
}

TEST(Frame, OpensTheConsoleRightAfterTheCommandLine) {
  ProductRun run("frame_order", "-console -trace -trftrace.txt");
  EXPECT_EQ(run.exitCode(), 0u);
  Lines const steps = run.record();
  ASSERT_GE(steps.size(), 11u);
  EXPECT_EQ(Lines(steps.begin() + 2, steps.begin() + 11),
            (Lines{"------ InitSV", "------ SetPrinterSwitches", "c----- AllocConsole", "c----- _open_osfhandle",
                   "c----- _open_osfhandle", "c----- _open_osfhandle", "c----- SetConsoleTitleA",
                   "c----- SetConsoleCtrlHandler", "c----- fopen trace.txt wt"}));
  // Its routine at exit runs when the library goes, after the program's own objects.
  EXPECT_EQ(Lines(steps.end() - 4, steps.end()), (Lines{"destroyed, toolkit down", "console listener deleted",
                                                        "cf-dl- SetConsoleCtrlHandler", "cf-dl- FreeConsole"}));
}

TEST(Frame, AnExitCodeOfZeroPassesThroughDeInitSV) {
  ProductRun run("frame_order", "");
  EXPECT_EQ(run.exitCode(), 0u);
  Lines const steps = run.record();
  EXPECT_TRUE(contains(steps, "-f-dle DeInitSV"));
  EXPECT_FALSE(contains(steps, "-f-dle exit"));
  EXPECT_EQ(steps.back(), "destroyed, toolkit down");
}

TEST(Frame, AnotherExitCodeSkipsDeInitSVButNotTheEndOfMain) {
  ProductRun run("frame_order", "-trftrace.txt", {{"RUN", "7"}});
  EXPECT_EQ(run.exitCode(), 7u);
  Lines const steps = run.record();
  EXPECT_EQ(Lines(steps.end() - 4, steps.end()),
            (Lines{"-f-dle fclose", "-f-dle SetResManager", "-f-dle exit", "destroyed, toolkit up"}));
}

class ExitCode : public testing::TestWithParam<int> {};
TEST_P(ExitCode, IsTheResultOfRunApplication) {
  ProductRun run("frame_order", "", {{"RUN", std::to_string(GetParam())}});
  EXPECT_EQ(run.exitCode(), static_cast<unsigned long>(GetParam()));
  EXPECT_EQ(run.record().back(), GetParam() == 0 ? "destroyed, toolkit down" : "destroyed, toolkit up");
}
INSTANTIATE_TEST_SUITE_P(Codes, ExitCode, testing::Values(0, 1, 2, 255, 256, 0x7FFFFFFF, -1));

TEST(Frame, PrepareApplicationThatRefusesGivesTheExitCode) {
  ProductRun run("frame_order", "-trftrace.txt", {{"PREPARE", "5"}});
  EXPECT_EQ(run.exitCode(), 5u);
  Lines const steps = run.record();
  auto const prepared = std::find(steps.begin(), steps.end(), "-f-d-- prepareApplication");
  ASSERT_NE(prepared, steps.end());
  EXPECT_EQ(Lines(prepared, steps.end()), (Lines{"-f-d-- prepareApplication", "prepareApplication", "-f-d-e fclose",
                                                 "-f-d-e SetResManager", "-f-d-e exit", "destroyed, toolkit up"}));
}

TEST(Frame, ASecondHelpObjectIsNotMade) {
  ProductRun run("frame_facts", "");
  EXPECT_EQ(run.fact("help object"), "1");
  EXPECT_EQ(run.fact("same help object"), "1");
  EXPECT_EQ(run.exitCode(), 0u);
}

TEST(Frame, KnowsWhetherItHasAGUI) {
  EXPECT_EQ(ProductRun("frame_facts", "").fact("with GUI"), "1");
  EXPECT_EQ(ProductRun("frame_facts", "", {{"GUI", "0"}}).fact("with GUI"), "0");
}

TEST(Frame, HearsOfChangesOfTheSystem) {
  ProductRun run("frame_changes", "");
  ASSERT_TRUE(run.waitForRecord("waiting"));
  HWND const listener =
      support::waitForWindow({.processId = run.child().processId(), .className = "SV0105.Listener", .visible = false});
  ASSERT_TRUE(listener);
  for (int const message : {WM_SYSCOLORCHANGE, WM_DISPLAYCHANGE, WM_FONTCHANGE, WM_THEMECHANGED})
    PostMessageA(listener, static_cast<UINT>(message), 0, 0);
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(),
            (Lines{"prepareApplication", "runApplication", "waiting", "change 1", "change 3", "change 5", "change 4"}));
}

} // namespace
