// Where the focus is after the box of an error, with real keys. The window of the test has to be in front.

#include "diagnostics/report_texts.hpp"

#include <gtest/gtest.h>

#include <algorithm>

using namespace kivtest;

namespace {

void pressKey(WORD key) {
  INPUT inputs[2] = {};
  for (INPUT & input : inputs) {
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
  }
  inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
  SendInput(2, inputs, sizeof *inputs);
}

void handleMessages() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
    DispatchMessageA(&message);
}

/// Closes the box with the key for its button.
void answerByKey(ReporterRun const & run) {
  HWND const box = run.box();
  ASSERT_TRUE(support::eventually([&] { return GetForegroundWindow() == box; }));
  pressKey(VK_RETURN);
  ASSERT_TRUE(support::waitUntilGone(box));
}

/// Presses a letter until the program says that it got one: while the desktop is busy with the box, a key may be lost.
bool isKeyRead(ReporterRun const & run, std::ptrdiff_t times) {
  return support::eventually([&] {
    pressKey('X');
    Lines const lines = linesOf(run.debugger().process().output());
    return std::count(lines.begin(), lines.end(), "got a key: 1") == times;
  });
}

TEST(ErrorBox, LeavesTheKeysToTheWindowThatHadThem) {
  ReporterRun run("-assert front error key network key exit key fail:x key");
  for (int box = 1; box <= 4; ++box) {
    ASSERT_NO_FATAL_FAILURE(answerByKey(run)) << box;
    ASSERT_TRUE(isKeyRead(run, box)) << run.debugger().process().output();
  }
  EXPECT_EQ(run.lines(), (Lines{kBoxWithCancel, "update, wait 0", "after error, wait 0", "got a key: 1", kBoxWithCancel,
                                "after network", "got a key: 1", kBoxWithCancel, "after exit", "got a key: 1",
                                kPlainBox, "assertion 0", "got a key: 1"}));
}

TEST(ErrorBox, GivesTheFocusBackToTheFieldThatHadIt) {
  ReporterRun run("-assert field error focus");
  ASSERT_NO_FATAL_FAILURE(answerByKey(run));
  EXPECT_EQ(run.lines(), (Lines{kBoxWithCancel, "update, wait 0", "after error, wait 0", "has the focus: 1"}));
}

TEST(ErrorBox, LeavesAnotherProgramInFrontThatCameThereMeanwhile) {
  ReporterRun run("front error focus");
  ASSERT_TRUE(support::eventually([&] { return GetForegroundWindow() == run.box(); }));
  HWND const other = CreateWindowExA(0, "EDIT", "Another program", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 300, 200, 100,
                                     nullptr, nullptr, nullptr, nullptr);
  SetForegroundWindow(other);
  ASSERT_TRUE(support::eventually([&] { return handleMessages(), GetForegroundWindow() == other; }));
  run.answerBox(IDOK);
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "update, wait 0", "after error, wait 0", "has the focus: 1"}));
  handleMessages();
  EXPECT_EQ(GetForegroundWindow(), other);
  DestroyWindow(other);
}

TEST(ErrorBox, GivesNoFocusToAWindowThatWasHiddenMeanwhile) {
  ReporterRun run("front hidingbox error focus");
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, "update, wait 0", "after error, wait 0", "has the focus: 0"}));
}

TEST(ErrorBox, OfAFieldThatReportsAnErrorWithTheFocusComesToAnEnd) {
  ReporterRun run("field reportfocus error");
  ASSERT_NO_FATAL_FAILURE(answerByKey(run));
  ASSERT_NO_FATAL_FAILURE(answerByKey(run));
  EXPECT_EQ(run.lines(), (Lines{kPlainBox, kPlainBox, "update, wait 0", "update, wait 0", "after error, wait 0"}));
}

} // namespace
