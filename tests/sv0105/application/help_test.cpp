#include "sv/help.hpp"

#include "support/files.hpp"
#include "sv0105/application/testapplication.hpp"

namespace {

using SV::Application;

class CountingHelp : public SV::Help {
public:
  bool Start(unsigned long topic) override {
    ++starts;
    lastTopic = topic;
    return true;
  }
  int starts = 0;
  unsigned long lastTopic = 0;
};

class CountingApplication : public TestApplication {
public:
  void ActivateExtHelp() override { ++helpBegins; }
  void DeactivateExtHelp() override { ++helpEnds; }
  int helpBegins = 0;
  int helpEnds = 0;
};

class HelpKeys : public ToolkitTest {
protected:
  HelpKeys() {
    Application::ChangeHelp(&help);
    Application::EnableHelp(0);
  }

  static void setShift(bool down) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_SHIFT] = down ? 0x80 : 0;
    SetKeyboardState(keys);
  }

  static void send(UINT message, WPARAM wParam = 0) {
    PostThreadMessageA(GetCurrentThreadId(), message, wParam, 0);
    Application::Reschedule();
  }

  static void pressShiftF1() {
    setShift(true);
    send(WM_KEYDOWN, VK_F1);
    setShift(false);
  }

  CountingApplication counting;
  CountingHelp help;
};

TEST_F(HelpKeys, DoNothingUntilTheyAreSwitchedOn) {
  EXPECT_EQ(Application::EnableHelp(0), 0);
  send(WM_KEYDOWN, VK_F1);
  pressShiftF1();
  EXPECT_EQ(help.starts, 0);
  EXPECT_EQ(counting.helpBegins, 0);
}

TEST_F(HelpKeys, StartTheHelpWithF1) {
  Application::EnableHelp(SV::HELP_BY_KEY);
  send(WM_KEYDOWN, VK_F1);
  EXPECT_EQ(help.starts, 1);
  pressShiftF1();
  send(WM_KEYDOWN, VK_F2);
  EXPECT_EQ(help.starts, 1);
  EXPECT_EQ(counting.helpBegins, 0);
}

TEST_F(HelpKeys, WaitForAClickAfterShiftF1) {
  Application::EnableHelp(SV::HELP_EXTENDED);
  pressShiftF1();
  EXPECT_EQ(counting.helpBegins, 1);
  EXPECT_EQ(help.starts, 0);
  send(WM_LBUTTONDOWN);
  EXPECT_EQ(counting.helpEnds, 1);
  EXPECT_EQ(help.starts, 1);
  send(WM_LBUTTONDOWN);
  EXPECT_EQ(help.starts, 1);
}

TEST_F(HelpKeys, GiveUpTheClickWithEscape) {
  Application::EnableHelp(SV::HELP_BY_KEY | SV::HELP_EXTENDED);
  pressShiftF1();
  send(WM_KEYDOWN, VK_ESCAPE);
  EXPECT_EQ(counting.helpEnds, 1);
  send(WM_LBUTTONDOWN);
  EXPECT_EQ(help.starts, 0);
}

TEST_F(HelpKeys, GoOnWaitingForTheClickAtEveryOtherKey) {
  Application::EnableHelp(SV::HELP_EXTENDED);
  pressShiftF1();
  send(WM_KEYDOWN, 'A');
  send(WM_KEYUP, VK_ESCAPE);
  send(WM_RBUTTONDOWN);
  EXPECT_EQ(counting.helpEnds, 0);
  send(WM_LBUTTONDOWN);
  EXPECT_EQ(counting.helpEnds, 1);
  EXPECT_EQ(help.starts, 1);
}

TEST_F(HelpKeys, NeedAHelpToStart) {
  Application::ChangeHelp(nullptr);
  Application::EnableHelp(SV::HELP_BY_KEY);
  send(WM_KEYDOWN, VK_F1);
  EXPECT_EQ(help.starts, 0);
}

TEST_F(HelpKeys, AreToldAsTheyWereBefore) {
  EXPECT_EQ(Application::EnableHelp(3), 0);
  EXPECT_EQ(Application::EnableHelp(0), 3);
}

TEST(HelpFile, LoadsTheShellOnlyWhenItIsOpened) {
  ASSERT_EQ(GetModuleHandleA("shell32.dll"), nullptr);
  SV::Help().Start();
  ASSERT_EQ(GetModuleHandleA("shell32.dll"), nullptr);
  SV::Help("C:\\no such folder\\manual.chm").Start();
  EXPECT_NE(GetModuleHandleA("shell32.dll"), nullptr);
}

TEST(HelpFile, ThatIsMissingOrHasNoNameIsNotStarted) {
  EXPECT_FALSE(SV::Help().Start());
  EXPECT_FALSE(SV::Help("C:\\no such folder\\manual.chm").Start());
}

TEST(HelpFile, IsOpenedByItsProgram) {
  // A program is its own: this one ends by itself.
  EXPECT_TRUE(SV::Help((support::binFolder() + "command_line_printer.exe").c_str()).Start());
}

} // namespace
