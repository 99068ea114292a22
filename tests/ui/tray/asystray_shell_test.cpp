// The tray icon and a shell that ends and begins again.
#include "ui/tray/traytest.hpp"

namespace {

using traytest::Lines;
using traytest::Tray;

class TrayShell : public traytest::TrayTest {};

TEST_F(TrayShell, ThatBeginsLaterGetsTheIconThatCouldNotBeAdded) {
  Tray tray;
  EXPECT_FALSE(create(tray));
  EXPECT_EQ(stateOf(tray), "111");
  start();
  EXPECT_EQ(shell->count(), 1);
  EXPECT_EQ(shell->visible(), 1);
  EXPECT_TRUE(tray.Visible());
  EXPECT_FALSE(tray.m_bRemoved);
  Lines const calls = shell->calls();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_TRUE(calls[0].starts_with("add 5 flags 7 message 8014 ")) << calls[0];
  EXPECT_EQ(shell->mouse(kNumber, WM_LBUTTONDBLCLK), 1);
}

TEST_F(TrayShell, ThatBeginsAgainDoesNotGetTheShownIconAgain) {
  start();
  Tray tray;
  create(tray);
  stop();
  EXPECT_EQ(stateOf(tray), "000");
  start();
  EXPECT_EQ(shell->calls(), Lines());
  EXPECT_EQ(shell->count(), 0);
  EXPECT_TRUE(tray.AddIcon()); // its removal is refused, which does no harm
  EXPECT_EQ(shell->shortCalls(), (Lines{"delete 5 flags 0: refused", "add 5 flags 7: taken"}));
}

TEST_F(TrayShell, ThatBeginsAgainDoesNotGetARemovedOrHiddenIcon) {
  start();
  Tray removed;
  create(removed);
  removed.RemoveIcon();
  stop();
  start();
  EXPECT_EQ(shell->calls(), Lines());
  Tray hidden;
  create(hidden, TRUE);
  stop();
  start();
  EXPECT_EQ(shell->calls(), Lines());
}

TEST_F(TrayShell, ThatBeginsAgainGetsAnIconAgainThatOnceWaited) {
  Tray tray;
  create(tray);
  start();
  EXPECT_EQ(stateOf(tray), "001");
  stop();
  start();
  EXPECT_EQ(shell->shortCalls(), Lines{"add 5 flags 7: taken"});
  EXPECT_EQ(stateOf(tray), "001");
}

TEST_F(TrayShell, ThatBeginsAgainDoesNotGetAnIconThatOnceWaitedAndIsHiddenNow) {
  Tray tray;
  create(tray);
  start();
  tray.HideIcon();
  EXPECT_EQ(stateOf(tray), "101");
  stop();
  start();
  EXPECT_EQ(shell->calls(), Lines());
}

TEST_F(TrayShell, ThatReportsItsBeginningTwiceRefusesAnIconThatOnceWaitedWhichIsReported) {
  Tray tray;
  create(tray);
  start();
  SendMessageA(tray.GetSafeHwnd(), Tray::m_nTaskbarCreatedMsg, 0, 0);
  EXPECT_EQ(stateOf(tray), "110");
  EXPECT_EQ(shell->count(), 1);
  expectedAssertions = {"m_bHidden == FALSE (asystray)"};
}

TEST_F(TrayShell, ThatRefusesTheWaitingIconEndsTheWaitingWhichIsReported) {
  start();
  shell->refuse(true);
  Tray tray;
  create(tray);
  EXPECT_EQ(stateOf(tray), "111");
  tray.OnTaskbarCreated(0, 0);
  EXPECT_EQ(stateOf(tray), "110");
  expectedAssertions = {"m_bHidden == FALSE (asystray)"};
}

TEST_F(TrayShell, GetsTheWaitingIconAsItWasCreated) {
  Tray tray;
  create(tray, TRUE);
  EXPECT_EQ(stateOf(tray), "111");
  start();
  EXPECT_EQ(shell->shortCalls(), Lines{"add 5 flags 8: taken"});
}

TEST_F(TrayShell, GetsTheWaitingIconWhenTheWorkAreaChangesAndTheProgramPassesThatOn) {
  start();
  shell->refuse(true);
  Tray tray;
  create(tray);
  shell->refuse(false);
  shell->calls();
  tray.OnSettingChange(SPI_GETWORKAREA, "");
  EXPECT_EQ(shell->calls(), Lines());
  tray.OnSettingChange(47, nullptr);
  EXPECT_EQ(shell->shortCalls(), Lines{"add 5 flags 7: taken"});
}

TEST_F(TrayShell, DoesNotGetTheWaitingIconByASettingThatTheWindowHears) {
  start();
  shell->refuse(true);
  Tray tray;
  create(tray);
  shell->refuse(false);
  shell->calls();
  for (WPARAM const number : {47, 4567})
    EXPECT_EQ(SendMessageA(tray.GetSafeHwnd(), WM_SETTINGCHANGE, number, 0), 0);
  EXPECT_EQ(shell->calls(), Lines());
  EXPECT_EQ(stateOf(tray), "111");
}

LRESULT defaultAnswer;
UINT defaultMessage;
LRESULT WINAPI answerByDefault(HWND, UINT message, WPARAM, LPARAM) {
  defaultMessage = message;
  return defaultAnswer;
}

TEST_F(TrayShell, OtherMessagesOfTheWindowAreTheSystemsExceptTheSettingWithTheNumberOfTheTimer) {
  Tray tray;
  create(tray);
  HWND const window = tray.GetSafeHwnd();
  replace("USER32.dll", {{"DefWindowProcA", reinterpret_cast<void *>(answerByDefault)}});
  defaultAnswer = 77;
  EXPECT_EQ(KivSystemTray::WindowProc(window, WM_SETTINGCHANGE, 47, 0), 77);
  EXPECT_EQ(KivSystemTray::WindowProc(window, WM_TIMER, 4566, 0), 77);
  EXPECT_EQ(KivSystemTray::WindowProc(window, WM_SETTINGCHANGE, 4567, 0), 0);
  EXPECT_EQ(KivSystemTray::WindowProc(window, Tray::m_nTaskbarCreatedMsg, 0, 0), 0);
  EXPECT_EQ(defaultMessage, static_cast<UINT>(WM_TIMER));
  EXPECT_EQ(KivSystemTray::WindowProc(nullptr, Tray::m_nTaskbarCreatedMsg, 0, 0), 77);
  EXPECT_EQ(KivSystemTray::WindowProc(nullptr, kMessage, kNumber, WM_LBUTTONDBLCLK), 77);
  EXPECT_EQ(tray.doubleClicks, 0);
  defaultAnswer = 0;
  expectedAssertions = {"m_bHidden == FALSE (asystray)"}; // there is no shell
}

TEST_F(TrayShell, ReportsItsBeginningByTheMessageOfThatName) {
  EXPECT_EQ(Tray::m_nTaskbarCreatedMsg, RegisterWindowMessageA("TaskbarCreated"));
}

TEST_F(TrayShell, KeepsNothingOfManyObjectsWhoseIconsItForgot) {
  start();
  std::size_t const windows = ownTopLevelWindows().size();
  for (int i = 0; i < 20; ++i) {
    Tray tray;
    create(tray);
    shell->forget();
    settle();
    tray.AddIcon();
    EXPECT_EQ(shell->count(), 1);
  }
  EXPECT_EQ(shell->count(), 0);
  EXPECT_EQ(ownTopLevelWindows().size(), windows);
}

} // namespace
