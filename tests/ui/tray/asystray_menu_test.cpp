// The tray icon and the user: mouse messages from another process, the popup menu, the default item.
#include "ui/tray/traytest.hpp"

namespace {

using traytest::Lines;
using traytest::Tray;

class TrayMenu : public traytest::TrayTest {
protected:
  TrayMenu() {
    start();
    create(tray);
    tray.build = [this](SV::PopupMenu & menu) {
      menu.InsertItem(11, "~Restore");
      menu.InsertItem(12, "~Exit");
      menu.ChangeSelectHdl([this](unsigned short id) { selected.push_back(id); });
    };
  }

  /// Clicks with the right button, and waits until the menu has been open and is closed.
  void clickRight() {
    shell->mouseLater(kNumber, WM_RBUTTONUP);
    EXPECT_TRUE(runUntil([this] { return tray.menus == 1 && script->isDone() && openMenu() == nullptr; }));
  }

  Tray tray;
  std::vector<unsigned short> selected;
};

TEST_F(TrayMenu, OpensByARightClickAndGivesTheItemThatIsChosenByKeys) {
  pressInMenu({VK_DOWN, VK_DOWN, VK_RETURN});
  clickRight();
  EXPECT_EQ(selected, (std::vector<unsigned short>{12}));
  EXPECT_EQ(tray.menus, 1);
  EXPECT_EQ(tray.customizations, 0);
  EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(TrayMenu, IsDismissedByEscape) {
  pressInMenu({VK_ESCAPE});
  clickRight();
  EXPECT_EQ(tray.menus, 1);
  EXPECT_TRUE(selected.empty());
  EXPECT_EQ(openMenu(), nullptr);
}

// On a desktop without a display the pointer stays where it is.
BOOL WINAPI tellPointer(POINT * pointer) {
  *pointer = {120, 130};
  return TRUE;
}

TEST_F(TrayMenu, OpensAtThePointerWithTheWindowInFront) {
  replace("USER32.dll", {{"GetCursorPos", reinterpret_cast<void *>(tellPointer)}});
  RECT area = {};
  script->then([&] {
    EXPECT_EQ(GetForegroundWindow(), tray.GetNotificationWnd());
    GetWindowRect(openMenu(), &area);
    pressInMenu({VK_ESCAPE});
  });
  EXPECT_EQ(tray.OnTrayNotification(kNumber, WM_RBUTTONUP), 1);
  EXPECT_EQ(area.left, 120);
  EXPECT_EQ(area.top, 130);
}

TEST_F(TrayMenu, WithoutItemsShowsNothingAndBringsNoWindowToTheFront) {
  tray.build = nullptr;
  SV::Window other(nullptr, SV::WB_TITLE);
  other.Show();
  SetForegroundWindow(other.GethWnd());
  EXPECT_EQ(shell->mouse(kNumber, WM_RBUTTONUP), 1);
  EXPECT_EQ(tray.menus, 1);
  EXPECT_EQ(openMenu(), nullptr);
  EXPECT_EQ(GetForegroundWindow(), other.GethWnd());
}

TEST_F(TrayMenu, OfTheBaseIsEmptyAndItsDoubleClickDoesNothing) {
  KivSystemTray plain(nullptr, kMessage, "Tip", SV::Icon(), 7);
  EXPECT_EQ(shell->mouse(7, WM_RBUTTONUP), 1);
  EXPECT_EQ(shell->mouse(7, WM_LBUTTONDBLCLK), 1);
  plain.CustomizeMenu(nullptr);
  EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(TrayMenu, ADoubleClickBringsTheWindowToTheFrontBeforeTheAction) {
  SV::Window parent(nullptr, SV::WB_TITLE);
  parent.Show();
  SV::Window other(nullptr, SV::WB_TITLE);
  other.Show();
  SetForegroundWindow(other.GethWnd());
  ASSERT_EQ(GetForegroundWindow(), other.GethWnd());
  tray.SetNotificationWnd(parent.GethWnd());
  HWND front = nullptr;
  tray.act = [&] { front = GetForegroundWindow(); };
  EXPECT_EQ(tray.OnTrayNotification(kNumber, WM_LBUTTONDBLCLK), 1);
  EXPECT_EQ(front, parent.GethWnd());
  EXPECT_EQ(tray.doubleClicks, 1);
  tray.SetNotificationWnd(tray.GetSafeHwnd());
}

TEST_F(TrayMenu, OtherMouseMessagesDoNothing) {
  for (LPARAM const message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_RBUTTONDOWN, WM_RBUTTONDBLCLK})
    EXPECT_EQ(shell->mouse(kNumber, message), 1);
  EXPECT_EQ(tray.menus + tray.doubleClicks, 0);
}

TEST_F(TrayMenu, MessagesOfAnotherNumberAreIgnored) {
  EXPECT_EQ(tray.OnTrayNotification(kNumber + 1, WM_LBUTTONDBLCLK), 0);
  EXPECT_EQ(tray.OnTrayNotification(kNumber + 0x100000000, WM_LBUTTONDBLCLK), 0);
  EXPECT_EQ(tray.doubleClicks, 0);
}

TEST_F(TrayMenu, MessagesAreIgnoredWithoutATargetAndANotificationWindow) {
  HWND const window = tray.GetNotificationWnd();
  tray.SetTargetWnd(nullptr);
  EXPECT_EQ(tray.OnTrayNotification(kNumber, WM_LBUTTONDBLCLK), 1); // one of the two is enough
  tray.SetNotificationWnd(nullptr);
  EXPECT_EQ(tray.OnTrayNotification(kNumber, WM_LBUTTONDBLCLK), 0);
  tray.SetTargetWnd(window);
  EXPECT_EQ(tray.OnTrayNotification(kNumber, WM_LBUTTONDBLCLK), 1);
  EXPECT_EQ(tray.doubleClicks, 2);
  tray.SetNotificationWnd(window);
  expectedAssertions = {"FALSE (asystray)"};
}

TEST_F(TrayMenu, AnExceptionOfADerivedClassReachesTheApplication) {
  tray.act = [] { throw std::runtime_error("no"); };
  EXPECT_EQ(shell->mouse(kNumber, WM_LBUTTONDBLCLK), 0);
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, SV::EXC_HANDLER_FAILED);
}

TEST_F(TrayMenu, MayDeleteItsIconInAnActionAndInTheMenu) {
  for (bool const byMenu : {false, true}) {
    auto mortal = std::make_unique<Tray>();
    mortal->Create(nullptr, kMessage, "Tip", SV::Icon(), 7);
    mortal->act = [&] { mortal.reset(); };
    mortal->build = [&](SV::PopupMenu & menu) {
      menu.InsertItem(1, "~End");
      menu.ChangeSelectHdl([&](unsigned short) { mortal.reset(); });
    };
    if (byMenu)
      pressInMenu({VK_DOWN, VK_RETURN});
    EXPECT_EQ(mortal->OnTrayNotification(7, byMenu ? WM_RBUTTONUP : WM_LBUTTONDBLCLK), 1);
    EXPECT_EQ(mortal, nullptr);
    EXPECT_EQ(shell->count(), 1); // the one of the test
  }
}

// The default item

class TrayDefaultItem : public traytest::TrayTest {
protected:
  static std::string pairOf(Tray const & tray) {
    unsigned item = 0;
    int byPosition = 0;
    tray.GetMenuDefaultItem(item, byPosition);
    return std::to_string(item) + " " + std::to_string(byPosition);
  }
};

TEST_F(TrayDefaultItem, IsStoredWhereTheProgramHasTheMenuOfTheNumber) {
  Tray tray;
  create(tray);
  EXPECT_EQ(tray.SetMenuDefaultItem(0, TRUE), 1); // as it is already
  EXPECT_EQ(tray.SetMenuDefaultItem(12, FALSE), 1);
  EXPECT_EQ(pairOf(tray), "12 0");
  EXPECT_EQ(tray.SetMenuDefaultItem(12, FALSE), 1);
  EXPECT_EQ(tray.SetMenuDefaultItem(12, TRUE), 1);
  EXPECT_EQ(pairOf(tray), "12 1");
}

TEST_F(TrayDefaultItem, IsStoredButRefusedWhereTheMenuHasNoSubMenuOrThereIsNone) {
  Tray tray;
  tray.Create(nullptr, kMessage, "Tip", SV::Icon(), 6);
  EXPECT_EQ(tray.SetMenuDefaultItem(1, TRUE), 0);
  EXPECT_EQ(tray.SetMenuDefaultItem(1, TRUE), 1); // unchanged now
  tray.Create(nullptr, kMessage, "Tip", SV::Icon(), 77);
  EXPECT_EQ(tray.SetMenuDefaultItem(2, TRUE), 0);
  EXPECT_EQ(pairOf(tray), "2 1");
}

UINT marked;
UINT markedByPosition;
int destroyed;
int destroyedBeforeTheMark = -1;
BOOL WINAPI mark(HMENU, UINT item, UINT byPosition) {
  destroyedBeforeTheMark = destroyed;
  marked = item;
  markedByPosition = byPosition;
  return TRUE;
}
BOOL WINAPI destroy(HMENU) {
  ++destroyed;
  return TRUE;
}

TEST_F(TrayDefaultItem, IsMarkedInACopyOfTheMenuThatIsDestroyed) {
  replace("USER32.dll",
          {{"SetMenuDefaultItem", reinterpret_cast<void *>(mark)}, {"DestroyMenu", reinterpret_cast<void *>(destroy)}});
  Tray tray;
  create(tray);
  tray.SetMenuDefaultItem(12, FALSE);
  EXPECT_EQ(marked, 12u);
  EXPECT_EQ(markedByPosition, 0u);
  EXPECT_EQ(destroyedBeforeTheMark, 0);
  EXPECT_EQ(destroyed, 2);
}

} // namespace
