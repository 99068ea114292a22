// The tray icon: its states, text and picture, and what the shell is called with.
#include "support/data/files.hpp"
#include "ui/tray/traytest.hpp"

#include <cstddef>
#include <cstring>
#include <new>

namespace {

using traytest::Lines;
using traytest::Picture;
using traytest::Tray;

class SystemTray : public traytest::TrayTest {};

// Construction and creation

TEST_F(SystemTray, IsNothingAtFirst) {
  Tray tray;
  EXPECT_EQ(Tray::m_pThis, &tray);
  EXPECT_EQ(stateOf(tray), "110");
  EXPECT_FALSE(tray.Enabled());
  EXPECT_FALSE(tray.Visible());
  EXPECT_TRUE(tray.m_bWin2K);
  EXPECT_EQ(tray.GetSafeHwnd(), nullptr);
  EXPECT_EQ(tray.GetNotificationWnd(), nullptr);
  EXPECT_EQ(tray.GetTargetWnd(), nullptr);
  EXPECT_EQ(tray.GetIcon(), nullptr);
  EXPECT_EQ(tray.GetCallbackMessage(), 0u);
  EXPECT_EQ(tray.GetTimerID(), 4567u);
  EXPECT_EQ(tray.m_uIDTimer, 0u);
  EXPECT_EQ(tray.m_uCreationFlags, 0u);
  EXPECT_EQ(tray.m_tnd.cbSize, 0u);
  unsigned item = 9;
  int byPosition = 0;
  tray.GetMenuDefaultItem(item, byPosition);
  EXPECT_EQ(item, 0u);
  EXPECT_TRUE(byPosition);
}

TEST_F(SystemTray, IsNothingAtFirstWhateverItsMemoryHeld) {
  alignas(Tray) std::byte memory[sizeof(Tray)];
  std::memset(memory, 0xCC, sizeof memory);
  auto * const tray = new (memory) Tray;
  EXPECT_EQ(stateOf(*tray), "110");
  EXPECT_EQ(tray->GetTargetWnd(), nullptr);
  EXPECT_EQ(tray->m_uIDTimer, 0u);
  EXPECT_FALSE(tray->StopAnimation());
  tray->~Tray();
}

TEST_F(SystemTray, BeforeItsCreationChangesNothing) {
  start();
  Tray tray;
  EXPECT_FALSE(tray.SetTooltipText("Tip"));
  EXPECT_FALSE(tray.SetIcon(LoadIconA(nullptr, IDI_WARNING)));
  EXPECT_FALSE(tray.SetStandardIcon(IDI_WARNING));
  EXPECT_FALSE(tray.SetNotificationWnd(GetDesktopWindow()));
  EXPECT_FALSE(tray.SetCallbackMessage(kMessage));
  EXPECT_FALSE(tray.AddIcon());
  EXPECT_FALSE(tray.ShowIcon());
  EXPECT_TRUE(tray.HideIcon());
  EXPECT_TRUE(tray.RemoveIcon());
  EXPECT_EQ(shell->calls(), Lines());
  EXPECT_EQ(tray.GetTooltipText(), SV::String());
}

TEST_F(SystemTray, AddsItsIconWithPictureTextAndMessage) {
  start();
  Tray tray;
  EXPECT_TRUE(create(tray));
  EXPECT_EQ(stateOf(tray), "000");
  EXPECT_TRUE(tray.Enabled());
  EXPECT_TRUE(tray.Visible());
  EXPECT_EQ(shell->count(), 1);
  EXPECT_EQ(shell->visible(), 1);
  Lines const calls = shell->calls();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_TRUE(calls[0].starts_with("add 5 flags 7 message 8014 state 0/0 tip 'Tip' info '' title '' kind 0 time 0 "))
      << calls[0];
  EXPECT_TRUE(calls[0].ends_with(": taken"));
  EXPECT_EQ(tray.m_tnd.cbSize, 520u);
  EXPECT_EQ(tray.m_uCreationFlags, 7u);
  EXPECT_EQ(textOf(tray.GetTooltipText()), "Tip");
  EXPECT_EQ(tray.GetIcon(), LoadIconA(nullptr, IDI_INFORMATION));
  EXPECT_EQ(tray.GetCallbackMessage(), kMessage);
}

TEST_F(SystemTray, IsCreatedByItsConstructorToo) {
  start();
  Tray const tray(nullptr, kMessage, "Tip", SV::Icon(SV::ICON_STYLE_INFO), kNumber, FALSE, "Text", "Title", 2, 20);
  EXPECT_EQ(stateOf(tray), "000");
  Lines const calls = shell->calls();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_TRUE(calls[0].starts_with(
      "add 5 flags 17 message 8014 state 0/0 tip 'Tip' info 'Text' title 'Title' kind 2 time 20000 "))
      << calls[0];
}

TEST_F(SystemTray, HasAHiddenWindowOfItsOwnClass) {
  start();
  Tray tray;
  create(tray);
  HWND const window = tray.GetSafeHwnd();
  ASSERT_TRUE(IsWindow(window));
  EXPECT_EQ(tray.GetNotificationWnd(), window);
  EXPECT_EQ(tray.GetTargetWnd(), window);
  EXPECT_FALSE(IsWindowVisible(window));
  EXPECT_EQ(support::windowClass(window), "TrayIconClass");
  EXPECT_EQ(GetClassLongPtrA(window, GCL_STYLE), 0xB);
  EXPECT_EQ(GetWindowLongA(window, GWL_STYLE) & WS_POPUP, static_cast<LONG>(WS_POPUP));
  EXPECT_EQ(GetClassLongPtrA(window, GCLP_WNDPROC), reinterpret_cast<LONG_PTR>(&KivSystemTray::WindowProc));
}

TEST_F(SystemTray, OfAParentReportsToThat) {
  start();
  SV::Window parent(nullptr, SV::WB_TITLE);
  Tray tray;
  EXPECT_TRUE(tray.Create(&parent, kMessage, "Tip", SV::Icon(SV::ICON_STYLE_INFO), kNumber));
  EXPECT_EQ(tray.GetNotificationWnd(), parent.GethWnd());
  EXPECT_EQ(tray.GetTargetWnd(), parent.GethWnd());
  EXPECT_NE(tray.GetSafeHwnd(), parent.GethWnd());
}

TEST_F(SystemTray, IsAddedWithTheHiddenStateAloneWhenItIsCreatedHidden) {
  start();
  Tray tray;
  EXPECT_TRUE(create(tray, TRUE));
  EXPECT_EQ(stateOf(tray), "100");
  EXPECT_EQ(tray.m_uCreationFlags, 8u);
  Lines const calls = shell->calls();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_TRUE(calls[0].starts_with("add 5 flags 8 message 0 state 1/1 tip '' ")) << calls[0];
  EXPECT_EQ(shell->visible(), 0);
  EXPECT_EQ(shell->mouse(kNumber, WM_MOUSEMOVE), -1); // it has no callback message
  EXPECT_TRUE(tray.ShowIcon());
  EXPECT_EQ(shell->visible(), 1);
  EXPECT_EQ(shell->mouse(kNumber, WM_MOUSEMOVE), -1);
  EXPECT_TRUE(tray.SetCallbackMessage(kMessage));
  EXPECT_EQ(shell->mouse(kNumber, WM_MOUSEMOVE), 1);
}

TEST_F(SystemTray, DropsABalloonWhenItIsCreatedHidden) {
  start();
  Tray tray;
  EXPECT_TRUE(tray.Create(nullptr, kMessage, "Tip", SV::Icon(), kNumber, TRUE, "Text"));
  EXPECT_EQ(shell->shortCalls(), Lines{"add 5 flags 8: taken"});
}

TEST_F(SystemTray, ShowsItsFirstBalloonOnce) {
  start();
  Tray tray(nullptr, kMessage, "Tip", SV::Icon(), kNumber, FALSE, "Text", "", 1, 10);
  EXPECT_EQ(tray.m_tnd.szInfo[0], '\0');
  EXPECT_EQ(tray.m_uCreationFlags, 0x17u);
  EXPECT_NE(shell->calls().at(0).find("info 'Text' title '' kind 1 time 10000 "), std::string::npos);
  EXPECT_TRUE(tray.AddIcon());
  EXPECT_EQ(shell->shortCalls(), (Lines{"delete 5 flags 0: taken", "add 5 flags 7: taken"}));
}

TEST_F(SystemTray, WithoutABalloonTextIgnoresWhatElseIsGivenForIt) {
  start();
  Tray const tray(nullptr, kMessage, "Tip", SV::Icon(), kNumber, FALSE, "", std::string(100, 't').c_str(), 9, 1);
  EXPECT_EQ(shell->shortCalls(), Lines{"add 5 flags 7: taken"});
}

TEST_F(SystemTray, WaitsForAShellWhereThereIsNone) {
  Tray tray;
  EXPECT_FALSE(create(tray));
  EXPECT_EQ(stateOf(tray), "111");
}

TEST_F(SystemTray, ThatIsCreatedAgainRemovesItsIconAndItsWindow) {
  start();
  Tray tray;
  create(tray);
  HWND const former = tray.GetSafeHwnd();
  EXPECT_TRUE(tray.Create(nullptr, kMessage + 1, "Other", SV::Icon(), kNumber + 1, TRUE));
  EXPECT_FALSE(IsWindow(former));
  EXPECT_EQ(shell->count(), 1);
  EXPECT_EQ(shell->shortCalls(), (Lines{"add 5 flags 7: taken", "delete 5 flags 0: taken", "add 6 flags 8: taken"}));
  EXPECT_EQ(stateOf(tray), "100");
}

TEST_F(SystemTray, LeavesNeitherIconNorWindow) {
  start();
  std::size_t const before = ownTopLevelWindows().size();
  {
    Tray tray;
    create(tray);
    EXPECT_EQ(ownTopLevelWindows().size(), before + 1);
    EXPECT_EQ(shell->count(), 1);
  }
  EXPECT_EQ(ownTopLevelWindows().size(), before);
  EXPECT_EQ(shell->count(), 0);
  EXPECT_EQ(shell->shortCalls(), (Lines{"add 5 flags 7: taken", "delete 5 flags 0: taken"}));
  EXPECT_EQ(Tray::m_pThis, nullptr);
}

TEST_F(SystemTray, ServesTheOneThatWasConstructedLast) {
  start();
  auto first = std::make_unique<Tray>();
  create(*first);
  Tray second;
  second.Create(nullptr, kMessage, "Second", SV::Icon(), kNumber + 1);
  EXPECT_EQ(shell->count(), 2);
  EXPECT_EQ(shell->mouse(kNumber, WM_LBUTTONDBLCLK), 0);
  EXPECT_EQ(shell->mouse(kNumber + 1, WM_LBUTTONDBLCLK), 1);
  EXPECT_EQ(first->doubleClicks, 0);
  EXPECT_EQ(second.doubleClicks, 1);
  create(*first); // a second creation does not make it the one that is served
  EXPECT_EQ(Tray::m_pThis, &second);
  first.reset();
  EXPECT_EQ(Tray::m_pThis, &second);
}

/// A call that checkers of undefined behaviour do not let through.
[[gnu::no_sanitize_undefined]] HWND safeWindowOf(KivSystemTray * tray) { return tray->GetSafeHwnd(); }

TEST_F(SystemTray, GivesNoWindowForANullObject) {
  KivSystemTray * volatile none = nullptr;
  EXPECT_EQ(safeWindowOf(none), nullptr);
}

// Text and picture

TEST_F(SystemTray, ChangesItsText) {
  start();
  Tray tray;
  create(tray);
  shell->calls();
  EXPECT_TRUE(tray.SetTooltipText("Other"));
  EXPECT_EQ(textOf(tray.GetTooltipText()), "Other");
  Lines const calls = shell->calls();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_TRUE(calls[0].starts_with("modify 5 flags 4 message 0 state 0/0 tip 'Other' ")) << calls[0];
}

TEST_F(SystemTray, ShowsTheLastPictureThatItWasGiven) {
  start();
  Picture const red(0xFF0000);
  Picture const blue(0x0000FF);
  Tray tray;
  tray.Create(nullptr, kMessage, "Tip", SV::Icon(CopyIcon(red.get())), kNumber);
  EXPECT_NE(shell->calls().at(0).find("pixel ff0000"), std::string::npos);
  EXPECT_TRUE(tray.SetIcon(blue.get()));
  EXPECT_EQ(tray.GetIcon(), blue.get());
  Lines const calls = shell->calls();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_TRUE(calls[0].starts_with("modify 5 flags 2 ")) << calls[0];
  EXPECT_NE(calls[0].find("pixel 0000ff"), std::string::npos) << calls[0];
  EXPECT_TRUE(tray.SetIcon(SV::Icon(SV::ICON_STYLE_WARNING)));
  EXPECT_EQ(tray.GetIcon(), LoadIconA(nullptr, IDI_WARNING));
}

TEST_F(SystemTray, TakesStandardPicturesByNameAndNumber) {
  start();
  Tray tray;
  create(tray);
  EXPECT_TRUE(tray.SetStandardIcon(IDI_ERROR));
  EXPECT_EQ(tray.GetIcon(), LoadIconA(nullptr, IDI_ERROR));
  EXPECT_TRUE(tray.SetStandardIcon(32515u));
  EXPECT_EQ(tray.GetIcon(), LoadIconA(nullptr, IDI_WARNING));
}

TEST_F(SystemTray, StoresChangesWithoutACallWhileItIsHidden) {
  start();
  Tray tray;
  create(tray, TRUE);
  shell->calls();
  HICON const icon = LoadIconA(nullptr, IDI_ERROR);
  EXPECT_EQ(tray.SetIcon(icon), 1);
  EXPECT_EQ(tray.SetTooltipText("Other"), 1);
  EXPECT_EQ(tray.SetCallbackMessage(kMessage + 1), 1);
  EXPECT_EQ(tray.SetNotificationWnd(GetDesktopWindow()), 1);
  EXPECT_EQ(shell->calls(), Lines());
  EXPECT_EQ(tray.GetIcon(), icon);
  EXPECT_EQ(textOf(tray.GetTooltipText()), "Other");
  EXPECT_EQ(tray.GetCallbackMessage(), kMessage + 1);
  EXPECT_EQ(tray.GetNotificationWnd(), GetDesktopWindow());
}

/// A file with a picture of 16 by 16 in one colour, in the form of the system.
void writeIconFile(std::string const & path, unsigned colour) {
  std::string bytes;
  auto const add = [&bytes](unsigned value, int size) {
    for (int i = 0; i < size; ++i)
      bytes += static_cast<char>(value >> (8 * i));
  };
  std::size_t const size = 40 + 16 * 16 * 4 + 16 * 4;
  for (unsigned const word : {0u, 1u, 1u})
    add(word, 2);
  for (unsigned const byte : {16u, 16u, 0u, 0u})
    add(byte, 1);
  add(1, 2), add(32, 2), add(static_cast<unsigned>(size), 4), add(22, 4);
  add(40, 4), add(16, 4), add(32, 4), add(1, 2), add(32, 2);
  for (int i = 0; i < 6; ++i)
    add(0, 4);
  for (int i = 0; i < 16 * 16; ++i)
    add(0xFF000000 | colour, 4);
  bytes.append(16 * 4, '\0');
  support::writeFile(path, bytes);
}

TEST_F(SystemTray, ReadsAFileWhereTheNameOfAResourceIsGiven) {
  start();
  writeIconFile("green.ico", 0x00FF00);
  Tray tray;
  create(tray);
  shell->calls();
  EXPECT_TRUE(tray.SetIcon("green.ico"));
  EXPECT_NE(shell->calls().at(0).find("pixel 00ff00"), std::string::npos);
  ICONINFO info;
  EXPECT_NE(tray.GetIcon(), nullptr);
  EXPECT_FALSE(GetIconInfo(tray.GetIcon(), &info)); // destroyed at once
}

TEST_F(SystemTray, HasNoPictureAfterAFileThatIsMissing) {
  start();
  Tray tray;
  create(tray);
  EXPECT_TRUE(tray.SetIcon("missing.ico"));
  EXPECT_EQ(tray.GetIcon(), nullptr);
  create(tray);
  EXPECT_TRUE(tray.SetIcon(5u));
  EXPECT_EQ(tray.GetIcon(), nullptr);
}

// Presence

TEST_F(SystemTray, IsHiddenAndShownByItsStateAlone) {
  start();
  Tray tray;
  create(tray);
  shell->calls();
  EXPECT_TRUE(tray.HideIcon());
  EXPECT_EQ(stateOf(tray), "100");
  EXPECT_TRUE(tray.HideIcon());
  EXPECT_EQ(shell->visible(), 0);
  EXPECT_EQ(shell->count(), 1);
  EXPECT_TRUE(tray.ShowIcon());
  EXPECT_EQ(stateOf(tray), "000");
  EXPECT_TRUE(tray.ShowIcon());
  Lines const calls = shell->calls();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_TRUE(calls[0].starts_with("modify 5 flags 8 message 0 state 1/1 ")) << calls[0];
  EXPECT_TRUE(calls[1].starts_with("modify 5 flags 8 message 0 state 0/1 ")) << calls[1];
}

TEST_F(SystemTray, IsStillShownWhenTheShellRefusesToHideIt) {
  start();
  Tray tray;
  create(tray);
  shell->refuse(true);
  EXPECT_FALSE(tray.HideIcon());
  EXPECT_EQ(stateOf(tray), "000");
  shell->refuse(false);
  tray.HideIcon();
  shell->refuse(true);
  EXPECT_FALSE(tray.ShowIcon());
  EXPECT_EQ(stateOf(tray), "100");
}

TEST_F(SystemTray, IsRemovedAndAdded) {
  start();
  Tray tray;
  create(tray);
  shell->calls();
  EXPECT_TRUE(tray.RemoveIcon());
  EXPECT_EQ(stateOf(tray), "110");
  EXPECT_EQ(shell->count(), 0);
  EXPECT_TRUE(tray.RemoveIcon());
  EXPECT_TRUE(tray.HideIcon());
  EXPECT_TRUE(tray.AddIcon());
  EXPECT_EQ(stateOf(tray), "000");
  EXPECT_EQ(shell->count(), 1);
  EXPECT_EQ(shell->shortCalls(), (Lines{"delete 5 flags 0: taken", "add 5 flags 7: taken"}));
  tray.RemoveIcon();
  EXPECT_TRUE(tray.ShowIcon()); // adds it
  EXPECT_EQ(shell->visible(), 1);
}

TEST_F(SystemTray, ThatTheShellDoesNotRemoveIsStillThere) {
  start();
  Tray tray;
  create(tray);
  shell->refuse(true);
  EXPECT_FALSE(tray.RemoveIcon());
  EXPECT_EQ(stateOf(tray), "000");
}

TEST_F(SystemTray, ThatTheShellDoesNotAddWaits) {
  start();
  Tray tray;
  create(tray);
  tray.RemoveIcon();
  shell->refuse(true);
  EXPECT_FALSE(tray.AddIcon());
  EXPECT_EQ(stateOf(tray), "111");
  EXPECT_TRUE(tray.RemoveIcon()); // gives the waiting up
  EXPECT_EQ(stateOf(tray), "110");
}

TEST_F(SystemTray, MovesToTheRightByBeingAddedAnew) {
  start();
  Tray tray;
  create(tray);
  tray.HideIcon();
  shell->calls();
  EXPECT_TRUE(tray.MoveToRight());
  EXPECT_EQ(stateOf(tray), "000");
  EXPECT_EQ(shell->shortCalls(), (Lines{"delete 5 flags 0: taken", "add 5 flags 7: taken"}));
}

TEST_F(SystemTray, GivesTheKeyboardBackToTheShell) {
  start();
  Tray tray;
  create(tray);
  shell->calls();
  tray.SetFocus();
  Lines const calls = shell->shortCalls();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_TRUE(calls[0].starts_with("focus 5 ")) << calls[0];
}

TEST_F(SystemTray, IsNotFoundByTheShellUnderAnotherWindow) {
  start();
  SV::Window other(nullptr);
  Tray tray;
  create(tray);
  HWND const former = tray.GetNotificationWnd();
  shell->calls();
  EXPECT_FALSE(tray.SetNotificationWnd(other.GethWnd()));
  EXPECT_EQ(tray.GetNotificationWnd(), other.GethWnd());
  EXPECT_EQ(shell->shortCalls(), Lines{"modify 5 flags 0: refused"});
  EXPECT_TRUE(tray.SetNotificationWnd(former));
  tray.SetTargetWnd(other.GethWnd());
  EXPECT_EQ(tray.GetTargetWnd(), other.GethWnd());
  EXPECT_EQ(shell->shortCalls(), Lines{"modify 5 flags 0: taken"});
}

TEST_F(SystemTray, GivesTheShellAnotherMessage) {
  start();
  Tray tray;
  create(tray);
  shell->calls();
  EXPECT_TRUE(tray.SetCallbackMessage(kMessage + 7));
  EXPECT_EQ(shell->shortCalls(), Lines{"modify 5 flags 1: taken"});
  EXPECT_EQ(shell->mouse(kNumber, WM_LBUTTONDBLCLK), 1);
  EXPECT_EQ(tray.doubleClicks, 1);
}

// Balloons

TEST_F(SystemTray, ShowsABalloonAndForgetsItsText) {
  start();
  Tray tray;
  create(tray);
  shell->calls();
  EXPECT_TRUE(tray.ShowBalloon("Text", "Title", NIIF_ERROR, 30));
  EXPECT_EQ(tray.m_tnd.szInfo[0], '\0');
  Lines const calls = shell->calls();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_TRUE(calls[0].starts_with("modify 5 flags 10 ")) << calls[0];
  EXPECT_NE(calls[0].find("info 'Text' title 'Title' kind 3 time 30000 "), std::string::npos) << calls[0];
  EXPECT_TRUE(tray.ShowBalloon(nullptr, nullptr, NIIF_NONE, 10));
  EXPECT_NE(shell->calls().at(0).find("info '' title '' kind 0 time 10000 "), std::string::npos);
}

TEST_F(SystemTray, ShowsNoBalloonWithoutAnIcon) {
  start();
  Tray tray;
  EXPECT_FALSE(tray.ShowBalloon("Text", "", NIIF_NONE, 10));
  create(tray);
  tray.RemoveIcon();
  EXPECT_FALSE(tray.ShowBalloon("Text", "", NIIF_NONE, 10));
  EXPECT_EQ(tray.m_tnd.szInfo[0], '\0') << "or a later change would show it";
}

// Older systems

DWORD WINAPI versionThree() { return 3; }
DWORD WINAPI versionFour() { return 4; }

BOOL WINAPI windowsNT4(OSVERSIONINFOA * version) {
  version->dwPlatformId = VER_PLATFORM_WIN32_NT;
  version->dwMajorVersion = 4;
  return TRUE;
}
BOOL WINAPI windows9(OSVERSIONINFOA * version) {
  version->dwPlatformId = VER_PLATFORM_WIN32_WINDOWS;
  version->dwMajorVersion = 5;
  return TRUE;
}

class OlderSystem : public SystemTray {
protected:
  void pretend(DWORD(WINAPI * version)(), BOOL(WINAPI * details)(OSVERSIONINFOA *)) {
    replace("KERNEL32.dll",
            {{"GetVersion", reinterpret_cast<void *>(version)}, {"GetVersionExA", reinterpret_cast<void *>(details)}});
  }
};

TEST_F(OlderSystem, WithoutNotificationAreasLeavesTheTrayDisabled) {
  start();
  pretend(versionThree, windowsNT4);
  Tray tray;
  EXPECT_FALSE(create(tray));
  EXPECT_FALSE(tray.Enabled());
  EXPECT_FALSE(tray.AddIcon());
  EXPECT_FALSE(tray.SetTooltipText("Tip"));
  EXPECT_EQ(shell->calls(), Lines());
  expectedAssertions = {"FALSE (asystray)"};
}

TEST_F(OlderSystem, HasItsIconAddedAndRemovedWhereOthersShowAndHideIt) {
  start();
  for (auto const details : {windowsNT4, windows9}) {
    pretend(versionFour, details);
    Tray tray;
    EXPECT_FALSE(tray.m_bWin2K);
    EXPECT_TRUE(create(tray, TRUE));
    EXPECT_EQ(stateOf(tray), "110");
    EXPECT_EQ(tray.m_uCreationFlags, 7u);
    EXPECT_EQ(shell->calls(), Lines());
    EXPECT_FALSE(tray.ShowBalloon("Text", "", NIIF_NONE, 10));
    EXPECT_TRUE(tray.ShowIcon());
    EXPECT_EQ(stateOf(tray), "000");
    EXPECT_TRUE(tray.HideIcon());
    EXPECT_EQ(stateOf(tray), "110");
    EXPECT_EQ(shell->shortCalls(), (Lines{"add 5 flags 7: taken", "delete 5 flags 0: taken"}));
    EXPECT_TRUE(tray.Create(nullptr, kMessage, "Tip", SV::Icon(), kNumber, FALSE, "Text"));
    EXPECT_EQ(shell->shortCalls(), Lines{"add 5 flags 7: taken"}); // no balloon
    tray.RemoveIcon();
    shell->calls();
  }
}

} // namespace
