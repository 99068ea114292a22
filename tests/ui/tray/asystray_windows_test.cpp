// Windows that are minimised to the tray and come back, and where the tray is.
#include "ui/tray/traytest.hpp"

namespace {

using traytest::Tray;

struct Animation {
  HWND window;
  int kind;
  RECT from;
  RECT to;
  HWND parent; ///< of the window, at that moment
};
std::vector<Animation> animations;

BOOL WINAPI keepAnimation(HWND window, int kind, RECT const * from, RECT const * to) {
  animations.push_back({window, kind, *from, *to, GetAncestor(window, GA_PARENT)});
  return TRUE;
}

bool minimiseAnimation;
BOOL WINAPI answerParameter(UINT action, UINT size, void * result, UINT) {
  if (action == 72 && size == 8 && static_cast<ANIMATIONINFO *>(result)->cbSize == 8)
    static_cast<ANIMATIONINFO *>(result)->iMinAnimate = minimiseAnimation;
  if (action == 48)
    *static_cast<RECT *>(result) = {10, 20, 1010, 720};
  return TRUE;
}

std::string textOfArea(RECT const & area) {
  return std::to_string(area.left) + " " + std::to_string(area.top) + " " + std::to_string(area.right) + " " +
         std::to_string(area.bottom);
}

class TrayWindows : public traytest::TrayTest {
protected:
  TrayWindows() {
    animations.clear();
    if (IsWindow(Tray::m_hWndInvisible)) // of a former test of this process
      DestroyWindow(Tray::m_hWndInvisible);
    replace("USER32.dll", {{"DrawAnimatedRects", reinterpret_cast<void *>(keepAnimation)},
                           {"SystemParametersInfoA", reinterpret_cast<void *>(answerParameter)}});
    window.SetPosSizePixel({100, 110}, {300, 200});
    window.Show();
  }

  static std::string trayArea() {
    RECT area = {1, 2, 3, 4};
    Tray::GetTrayWndRect(area);
    return textOfArea(area);
  }

  HWND hwnd() const { return window.GethWnd(); }

  SV::Window window{nullptr, SV::WB_TITLE};
};

TEST_F(TrayWindows, DisappearInAHiddenWindowAndComeBackToTheFront) {
  minimiseAnimation = false;
  SV::Window other(nullptr, SV::WB_TITLE);
  other.Show();
  RECT before = {};
  GetWindowRect(hwnd(), &before);
  KivSystemTray::MinimizeToTray(hwnd());
  EXPECT_FALSE(IsWindowVisible(hwnd()));
  EXPECT_EQ(GetWindowLongA(hwnd(), GWL_STYLE) & WS_VISIBLE, 0);
  EXPECT_EQ(GetAncestor(hwnd(), GA_PARENT), Tray::m_hWndInvisible);
  EXPECT_EQ(support::windowClass(Tray::m_hWndInvisible), "Static");
  EXPECT_FALSE(IsWindowVisible(Tray::m_hWndInvisible));
  SetForegroundWindow(other.GethWnd());

  KivSystemTray::MaximizeFromTray(hwnd());
  EXPECT_TRUE(IsWindowVisible(hwnd()));
  EXPECT_EQ(GetAncestor(hwnd(), GA_PARENT), GetDesktopWindow());
  EXPECT_EQ(GetForegroundWindow(), hwnd());
  EXPECT_EQ(GetActiveWindow(), hwnd());
  RECT after = {};
  GetWindowRect(hwnd(), &after);
  EXPECT_EQ(textOfArea(after), textOfArea(before));
  EXPECT_TRUE(animations.empty());
}

TEST_F(TrayWindows, ShareOneHiddenWindow) {
  minimiseAnimation = false;
  SV::Window other(nullptr, SV::WB_TITLE);
  other.Show();
  KivSystemTray::MinimizeToTray(hwnd());
  HWND const hidden = Tray::m_hWndInvisible;
  std::size_t const windows = ownTopLevelWindows().size();
  KivSystemTray::MinimizeToTray(other.GethWnd());
  EXPECT_EQ(Tray::m_hWndInvisible, hidden);
  EXPECT_EQ(ownTopLevelWindows().size(), windows - 1);
  KivSystemTray::MaximizeFromTray(other.GethWnd());
  KivSystemTray::MaximizeFromTray(hwnd());
  EXPECT_EQ(ownTopLevelWindows().size(), windows + 1);
  for (int i = 0; i < 10; ++i) {
    KivSystemTray::MinimizeToTray(hwnd());
    KivSystemTray::MaximizeFromTray(hwnd());
  }
  EXPECT_EQ(ownTopLevelWindows().size(), windows + 1);
}

TEST_F(TrayWindows, FlyToTheTrayAndBackWhenTheUserHasThatAnimation) {
  minimiseAnimation = true;
  start();
  RECT area = {};
  GetWindowRect(hwnd(), &area);
  KivSystemTray::MinimizeToTray(hwnd());
  ASSERT_EQ(animations.size(), 1u);
  EXPECT_EQ(animations[0].window, hwnd());
  EXPECT_EQ(animations[0].kind, 3);
  EXPECT_EQ(textOfArea(animations[0].from), textOfArea(area));
  EXPECT_EQ(textOfArea(animations[0].to), trayArea());
  EXPECT_EQ(animations[0].parent, GetDesktopWindow());
  RECT hidden = {};
  GetWindowRect(hwnd(), &hidden);
  KivSystemTray::MaximizeFromTray(hwnd());
  ASSERT_EQ(animations.size(), 2u);
  EXPECT_EQ(textOfArea(animations[1].from), trayArea());
  EXPECT_EQ(textOfArea(animations[1].to), textOfArea(hidden));
  EXPECT_EQ(animations[1].parent, GetDesktopWindow());
  EXPECT_TRUE(IsWindowVisible(hwnd()));
}

TEST_F(TrayWindows, AnimationIsTheUsersChoice) {
  for (bool const on : {true, false}) {
    minimiseAnimation = on;
    EXPECT_EQ(Tray::GetDoWndAnimation(), on ? 1 : 0);
  }
}

UINT redrawFlags;
BOOL WINAPI keepRedraw(HWND, RECT const *, HRGN, UINT flags) {
  redrawFlags = flags;
  return TRUE;
}

TEST_F(TrayWindows, AreDrawnAnewWithAllInThem) {
  minimiseAnimation = false;
  replace("USER32.dll", {{"RedrawWindow", reinterpret_cast<void *>(keepRedraw)}});
  KivSystemTray::MinimizeToTray(hwnd());
  KivSystemTray::MaximizeFromTray(hwnd());
  EXPECT_EQ(redrawFlags, 0x585u);
}

HWND WINAPI refuseWindow(DWORD, LPCSTR, LPCSTR, DWORD, int, int, int, int, HWND, HMENU, HINSTANCE, LPVOID) {
  return nullptr;
}

TEST_F(TrayWindows, StayWhereTheyAreButHiddenWhenThereIsNoHiddenWindow) {
  minimiseAnimation = false;
  replace("USER32.dll", {{"CreateWindowExA", reinterpret_cast<void *>(refuseWindow)}});
  EXPECT_FALSE(Tray::RemoveTaskbarIcon(hwnd()));
  KivSystemTray::MinimizeToTray(hwnd());
  EXPECT_EQ(GetAncestor(hwnd(), GA_PARENT), GetDesktopWindow());
  EXPECT_FALSE(IsWindowVisible(hwnd()));
  KivSystemTray::MaximizeFromTray(hwnd());
  EXPECT_TRUE(IsWindowVisible(hwnd()));
}

std::vector<HWND> activated;
HWND inFront;
HWND WINAPI keepActive(HWND window) {
  activated.push_back(window);
  return nullptr;
}
BOOL WINAPI keepFront(HWND window) {
  inFront = window;
  return TRUE;
}

TEST_F(TrayWindows, AreMadeActiveAfterTheHiddenOneAndThenComeToTheFront) {
  minimiseAnimation = false;
  KivSystemTray::MinimizeToTray(hwnd());
  replace("USER32.dll", {{"SetActiveWindow", reinterpret_cast<void *>(keepActive)},
                         {"SetForegroundWindow", reinterpret_cast<void *>(keepFront)}});
  KivSystemTray::MaximizeFromTray(hwnd());
  EXPECT_EQ(activated, (std::vector<HWND>{Tray::m_hWndInvisible, hwnd()}));
  EXPECT_EQ(inFront, hwnd());
}

// Where the tray is

TEST_F(TrayWindows, TrayIsTheAreaFromTheClockOn) {
  start(); // the bar is (0, 570, 800, 600), the area begins at 600, the clock at 720
  EXPECT_EQ(trayArea(), "720 570 800 600");
}

TEST_F(TrayWindows, TrayBesideTheScreenIsTheAreaBelowTheClock) {
  start("side"); // the bar is (0, 0, 60, 600), the area begins at 400, the clock ends at 440
  EXPECT_EQ(trayArea(), "0 440 60 600");
}

TEST_F(TrayWindows, TrayHasTheClockBesideItUpToFivePixelsAboveItsEdge) {
  start("gap5");
  EXPECT_EQ(trayArea(), "720 570 800 600");
  stop();
  start("gap6");
  EXPECT_EQ(trayArea(), "600 594 800 600");
}

UINT edge;
UINT barAnswer = 1;
UINT_PTR WINAPI answerBar(DWORD message, APPBARDATA * bar) {
  EXPECT_EQ(message, 5u);
  EXPECT_EQ(bar->cbSize, sizeof(APPBARDATA));
  bar->uEdge = edge;
  bar->rc = {5, 600, 1029, 640};
  return barAnswer;
}

TEST_F(TrayWindows, TrayWithoutItsWindowIsGuessedFromTheTaskbar) {
  support::replaceImports(traytest::library(), "SHELL32.dll",
                          {{"SHAppBarMessage", reinterpret_cast<void *>(answerBar)}});
  std::pair<UINT, char const *> const rows[] = {{ABE_TOP, "929 600 1013 640"},
                                                {ABE_BOTTOM, "929 600 1013 640"},
                                                {ABE_LEFT, "5 540 1029 624"},
                                                {ABE_RIGHT, "5 540 1029 624"},
                                                {7, "1 2 3 4"}};
  for (auto const & [which, area] : rows) {
    edge = which;
    EXPECT_EQ(trayArea(), area) << which;
  }
}

TEST_F(TrayWindows, TrayWithoutATaskbarIsTheCornerOfTheWorkArea) {
  support::replaceImports(traytest::library(), "SHELL32.dll",
                          {{"SHAppBarMessage", reinterpret_cast<void *>(answerBar)}});
  barAnswer = 0;
  EXPECT_EQ(trayArea(), "860 690 1010 720");
  barAnswer = 1;
}

} // namespace
