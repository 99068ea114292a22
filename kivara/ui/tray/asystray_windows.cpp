#include "asystray.hpp"

#include "tools/winapi.hpp"

#include <shellapi.h>

#include <cstring>

namespace {

constexpr int kTitleAnimation = 3; // IDANI_CAPTION
constexpr UINT kRedrawAll = RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW | RDW_FRAME;
constexpr long kClockTolerance = 5; // a clock that ends at most so far above the area lies beside the icons

void setVisible(HWND window, bool visible) {
  LONG const style = GetWindowLongA(window, GWL_STYLE);
  LONG const flag = WS_VISIBLE;
  SetWindowLongA(window, GWL_STYLE, visible ? style | flag : style & ~flag);
}

/// The area of the icons, without the clock.
BOOL CALLBACK narrow(HWND child, LPARAM argument) {
  RECT & area = *reinterpret_cast<RECT *>(argument);
  char name[256] = "";
  GetClassNameA(child, name, sizeof name);
  if (std::strcmp(name, "TrayNotifyWnd") == 0)
    GetWindowRect(child, &area);
  if (std::strcmp(name, "TrayClockWClass") == 0) {
    RECT clock = {};
    GetWindowRect(child, &clock);
    if (clock.bottom >= area.bottom - kClockTolerance)
      area.left = clock.left;
    else
      area.top = clock.bottom;
  }
  return TRUE;
}

/// Where a taskbar of that place usually has its icons.
void guessFrom(APPBARDATA const & bar, RECT & area) {
  RECT const & all = bar.rc;
  if (bar.uEdge == ABE_TOP || bar.uEdge == ABE_BOTTOM)
    area = {all.right - 100, all.top, all.right - 16, all.bottom};
  if (bar.uEdge == ABE_LEFT || bar.uEdge == ABE_RIGHT)
    area = {all.left, all.bottom - 100, all.right, all.bottom - 16};
}

void animate(HWND window, RECT const & from, RECT const & to) {
  DrawAnimatedRects(window, kTitleAnimation, &from, &to);
}

} // namespace

HWND KivSystemTray::m_hWndInvisible = nullptr;

void KivSystemTray::MinimizeToTray(HWND window) {
  if (GetDoWndAnimation()) {
    RECT from = {};
    RECT to = {};
    GetWindowRect(window, &from);
    GetTrayWndRect(to);
    animate(window, from, to);
  }
  RemoveTaskbarIcon(window);
  setVisible(window, false);
}

void KivSystemTray::MaximizeFromTray(HWND window) {
  if (GetDoWndAnimation()) {
    RECT from = {};
    RECT to = {};
    GetTrayWndRect(from);
    GetWindowRect(window, &to);
    SetParent(window, nullptr);
    animate(window, from, to);
  } else
    SetParent(window, nullptr);
  setVisible(window, true);
  RedrawWindow(window, nullptr, nullptr, kRedrawAll);
  if (IsWindow(m_hWndInvisible))
    SetActiveWindow(m_hWndInvisible); // or the window might count as active already
  SetActiveWindow(window);
  SetForegroundWindow(window);
}

/// A window that is inside of a hidden one has no button in the taskbar.
int KivSystemTray::RemoveTaskbarIcon(HWND window) {
  if (!IsWindow(m_hWndInvisible)) {
    m_hWndInvisible = CreateWindowExA(0, "Static", "", WS_POPUP, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                      CW_USEDEFAULT, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    if (m_hWndInvisible == nullptr)
      return FALSE;
  }
  SetParent(window, m_hWndInvisible);
  return TRUE;
}

int KivSystemTray::GetDoWndAnimation() {
  ANIMATIONINFO info = {};
  info.cbSize = sizeof info;
  SystemParametersInfoA(SPI_GETANIMATION, sizeof info, &info, 0);
  return info.iMinAnimate != 0;
}

void KivSystemTray::GetTrayWndRect(tagRECT & rectangle) {
  if (HWND const tray = FindWindowA("Shell_TrayWnd", nullptr)) {
    GetWindowRect(tray, &rectangle);
    EnumChildWindows(tray, narrow, reinterpret_cast<LPARAM>(&rectangle));
    return;
  }
  APPBARDATA bar = {};
  bar.cbSize = sizeof bar;
  if (SHAppBarMessage(ABM_GETTASKBARPOS, &bar) != 0) {
    guessFrom(bar, rectangle);
    return;
  }
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &rectangle, 0);
  rectangle.left = rectangle.right - 150;
  rectangle.top = rectangle.bottom - 30;
}
