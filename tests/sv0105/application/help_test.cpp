#include "sv/help.hpp"

#include "support/data/files.hpp"
#include "support/imports/import_hook.hpp"
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

TEST_F(HelpKeys, StartTheTopicOfTheWindowOrOfTheNextOneAroundItThatHasOne) {
  Application::EnableHelp(SV::HELP_BY_KEY);
  SV::Window outer(nullptr, SV::WB_TITLE);
  SV::Window inner(&outer);
  auto const topicOf = [this](SV::Window const & window) {
    PostMessageA(window.GethWnd(), WM_KEYDOWN, VK_F1, 1);
    Application::Reschedule();
    return help.lastTopic;
  };
  EXPECT_EQ(topicOf(inner), 0u);
  outer.ChangeHelpId(4711);
  EXPECT_EQ(topicOf(inner), 4711u);
  inner.ChangeHelpId(12);
  EXPECT_EQ(topicOf(inner), 12u);
}

TEST_F(HelpKeys, AreReportedAsTheyWereBefore) {
  EXPECT_EQ(Application::EnableHelp(3), 0);
  EXPECT_EQ(Application::EnableHelp(0), 3);
}

/// A question to the system's viewer of topics.
struct Viewed {
  std::string file;
  UINT command;
  DWORD_PTR topic;

  bool operator==(Viewed const &) const = default;
};

std::vector<Viewed> viewed;
bool viewerHasTopic = true;

HWND WINAPI viewTopic(HWND, char const * file, UINT command, DWORD_PTR topic) {
  viewed.push_back({file, command, topic});
  return viewerHasTopic ? GetDesktopWindow() : nullptr;
}

std::vector<std::string> opened;

INT_PTR WINAPI openInstead(HWND, char const *, char const * file, char const *, char const *, int) {
  opened.emplace_back(file);
  return 33;
}

class HelpTopic : public testing::Test {
protected:
  HelpTopic() {
    support::replaceImports(GetModuleHandleA("SV0105.dll"), "hhctrl.ocx",
                            {{"HtmlHelpA", reinterpret_cast<void *>(viewTopic)}});
    support::replaceImports(GetModuleHandleA("SV0105.dll"), "shell32.dll",
                            {{"ShellExecuteA", reinterpret_cast<void *>(openInstead)}});
  }
};

TEST_F(HelpTopic, IsShownByTheSystemsViewer) {
  EXPECT_TRUE(SV::Help("manual.chm").Start(4711));
  EXPECT_TRUE(SV::Help("MANUAL.CHM").Start(1));
  EXPECT_EQ(viewed, (std::vector<Viewed>{{"manual.chm", 0xF, 4711}, {"MANUAL.CHM", 0xF, 1}}));
  EXPECT_TRUE(opened.empty());
}

TEST_F(HelpTopic, ThatTheViewerDoesNotHaveOpensTheFile) {
  viewerHasTopic = false;
  EXPECT_TRUE(SV::Help("manual.chm").Start(4711));
  EXPECT_EQ(viewed.size(), 1u);
  EXPECT_EQ(opened, std::vector<std::string>{"manual.chm"});
}

TEST_F(HelpTopic, OfAnotherKindOfFileAndTheFileAsAWholeAreOpened) {
  EXPECT_TRUE(SV::Help("manual.html").Start(4711));
  EXPECT_TRUE(SV::Help("manual.chm").Start());
  EXPECT_TRUE(viewed.empty());
  EXPECT_EQ(opened, (std::vector<std::string>{"manual.html", "manual.chm"}));
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
