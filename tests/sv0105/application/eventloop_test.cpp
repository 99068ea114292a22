#include "sv0105/application/testapplication.hpp"

namespace {

using SV::Application;

class EventLoop : public ToolkitTest {};

TEST_F(EventLoop, EndsWithTheCodeGivenToQuit) {
  Application::Quit(42);
  EXPECT_EQ(Application::Execute(), 42);
  Application::Quit();
  EXPECT_EQ(Application::Execute(), 0);
}

TEST_F(EventLoop, DeliversPostedEventsInTheirOrder) {
  int data = 0;
  EXPECT_TRUE(Application::PostUserEvent(7, &data));
  EXPECT_TRUE(Application::PostAppEvent(8, nullptr));
  EXPECT_TRUE(Application::PostUserEvent(0xFFFFFFFF, nullptr));
  EXPECT_TRUE(application.userEvents.empty());
  Application::Reschedule();
  EXPECT_EQ(application.userEvents, (decltype(application.userEvents){{7, &data}, {0xFFFFFFFF, nullptr}}));
  EXPECT_EQ(application.appEvents, (decltype(application.appEvents){{8, nullptr}}));
}

TEST_F(EventLoop, TakesEventsFromOtherThreads) {
  HANDLE const thread = CreateThread(
      nullptr, 0, [](void *) -> DWORD { return Application::PostUserEvent(9, nullptr); }, nullptr, 0, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  Application::Reschedule();
  EXPECT_EQ(application.userEvents.size(), 1u);
}

TEST_F(EventLoop, LeavesTheEndToExecuteWhenItIsRescheduled) {
  Application::Quit(5);
  Application::PostUserEvent(1, nullptr);
  Application::Reschedule();
  Application::Reschedule();
  EXPECT_EQ(Application::Execute(), 5);
}

TEST_F(EventLoop, ReturnsFromReschedulingThoughMessagesKeepComing) {
  class Repeating : public TestApplication {
  public:
    void UserEvent(unsigned long event, void * data) override { PostUserEvent(event, data); }
  } repeating;
  Application::PostUserEvent(1, nullptr);
  Application::Reschedule();
}

TEST(EventLoopOfNobody, TakesNoEventsBeforeTheToolkitIsUpAndAfterIt) {
  EXPECT_FALSE(Application::PostUserEvent(1, nullptr));
  SV::InitSV(0, nullptr);
  EXPECT_TRUE(Application::PostUserEvent(1, nullptr));
  SV::DeInitSV();
  EXPECT_FALSE(Application::PostAppEvent(1, nullptr));
}

TEST(StartUp, CanBeRepeatedAfterTheEnd) {
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(SV::InitSV(0, nullptr));
    EXPECT_TRUE(SV::InitSV(0, nullptr));
    SV::DeInitSV();
    EXPECT_TRUE(ownTopLevelWindows().empty());
  }
}

TEST(StartUp, FailsWhenItsWindowClassesCannotBeRegistered) {
  for (char const * name : {"SV0105.Listener", "SV0105.Window", "SV0105.MDIFrame", "SV0105.MDIChild"}) {
    WNDCLASSA taken = {};
    taken.lpfnWndProc = DefWindowProcA;
    taken.hInstance = SV::Sysdepen::GethInst();
    taken.lpszClassName = name;
    ASSERT_NE(RegisterClassA(&taken), 0) << name;
    EXPECT_FALSE(SV::InitSV(0, nullptr)) << name;
    UnregisterClassA(name, taken.hInstance);
    EXPECT_TRUE(SV::InitSV(0, nullptr)) << name;
    SV::DeInitSV();
  }
}

class SystemChanges : public ToolkitTest {
protected:
  /// As the system does it, but to this process alone.
  void broadcast(UINT message, WPARAM wParam, char const * text) {
    for (HWND window : ownTopLevelWindows())
      SendMessageA(window, message, wParam, reinterpret_cast<LPARAM>(text));
  }
};

TEST_F(SystemChanges, AreTheirNumbers) {
  EXPECT_EQ(SV::SYSCHANGE_COLORS, 1);
  EXPECT_EQ(SV::SYSCHANGE_SETTINGS, 2);
  EXPECT_EQ(SV::SYSCHANGE_DISPLAY, 3);
  EXPECT_EQ(SV::SYSCHANGE_THEME, 4);
  EXPECT_EQ(SV::SYSCHANGE_FONTS, 5);
  EXPECT_EQ(SV::SYSCHANGE_LOCALE, 6);
}

TEST_F(SystemChanges, AreReportedOncePerChangeThoughSeveralWindowsHearOfThem) {
  SV::Window first(nullptr, SV::WB_TITLE);
  SV::Window second(nullptr, SV::WB_TITLE);
  SV::MDIFrame frame("Frame");
  ASSERT_GE(ownTopLevelWindows().size(), 4u);
  struct {
    UINT message;
    char const * text;
    SV::SysChangeType expected;
  } const rows[] = {{WM_SYSCOLORCHANGE, nullptr, SV::SYSCHANGE_COLORS},
                    {WM_SETTINGCHANGE, nullptr, SV::SYSCHANGE_SETTINGS},
                    {WM_SETTINGCHANGE, "Environment", SV::SYSCHANGE_SETTINGS},
                    {WM_SETTINGCHANGE, "intl", SV::SYSCHANGE_LOCALE},
                    {WM_DISPLAYCHANGE, nullptr, SV::SYSCHANGE_DISPLAY},
                    {WM_THEMECHANGED, nullptr, SV::SYSCHANGE_THEME},
                    {WM_FONTCHANGE, nullptr, SV::SYSCHANGE_FONTS}};
  for (auto const & row : rows) {
    application.changes.clear();
    broadcast(row.message, 0, row.text);
    EXPECT_EQ(application.changes, std::vector{row.expected}) << row.message << ' ' << (row.text ? row.text : "");
  }
}

TEST_F(SystemChanges, AreHeardWithoutAnyWindowOfTheProgram) {
  broadcast(WM_SYSCOLORCHANGE, 0, nullptr);
  EXPECT_EQ(application.changes, std::vector{SV::SYSCHANGE_COLORS});
}

TEST_F(SystemChanges, ReportWhenTheProgramComesToTheFrontAndLeavesIt) {
  SV::Window window(nullptr, SV::WB_TITLE);
  broadcast(WM_ACTIVATEAPP, TRUE, nullptr);
  EXPECT_EQ(application.activations, 1);
  EXPECT_EQ(application.deactivations, 0);
  broadcast(WM_ACTIVATEAPP, FALSE, nullptr);
  EXPECT_EQ(application.deactivations, 1);
}

} // namespace
