#include "asystray.hpp"

#include "sv/application.hpp"
#include "tools/winapi.hpp"
#include "ui/tray/traylimits.hpp"

#include <shellapi.h>

namespace {

constexpr UINT kClassStyle = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS;

} // namespace

KivSystemTray * KivSystemTray::m_pThis = nullptr;
unsigned int KivSystemTray::m_nMaxTooltipLength = 128;
unsigned int const KivSystemTray::m_nTaskbarCreatedMsg = RegisterWindowMessageA("TaskbarCreated");

/// One that exists already serves as well.
unsigned short KivSystemTray::RegisterClassA(HINSTANCE instance) {
  WNDCLASSEXA description = {};
  description.cbSize = sizeof description;
  description.style = kClassStyle;
  description.lpfnWndProc = WindowProc;
  description.hInstance = instance;
  description.lpszClassName = kWindowClass;
  return RegisterClassExA(&description);
}

long long KivSystemTray::WindowProc(HWND window, unsigned int message, unsigned long long wParam, long long lParam) {
  if (m_pThis == nullptr || window != m_pThis->m_hWnd)
    return DefWindowProcA(window, message, wParam, lParam);
  try {
    return m_pThis->serve(message, wParam, lParam);
  } catch (...) { // of a derived class: it cannot pass through the system, which has called
    if (SV::Application * const application = SV::GetpApp())
      application->Exception(SV::EXC_HANDLER_FAILED, 0);
    return 0;
  }
}

long long KivSystemTray::serve(unsigned int message, unsigned long long wParam, long long lParam) {
  if (message == m_nTaskbarCreatedMsg)
    return OnTaskbarCreated(wParam, lParam);
  if (message == WM_TIMER && wParam == kTimerId) {
    OnTimer(wParam);
    return 0;
  }
  // The number of the timer is meant: OnSettingChange is for programs that pass the message on.
  if (message == WM_SETTINGCHANGE && wParam == kTimerId)
    return 0;
  if (message == m_tnd.uCallbackMessage)
    return OnTrayNotification(wParam, lParam);
  return DefWindowProcA(m_hWnd, message, wParam, lParam);
}

long long KivSystemTray::OnTaskbarCreated(unsigned long long, long long) {
  InstallIconPending();
  return 0;
}

void KivSystemTray::OnSettingChange(unsigned int flags, char const *) {
  if (flags == SPI_SETWORKAREA)
    InstallIconPending();
}

void KivSystemTray::InstallIconPending() {
  bool const isHidden = m_bHidden && !m_bRemoved; // a failed add has set both
  if (!m_bShowIconPending || isHidden)
    return;
  m_tnd.uFlags = m_uCreationFlags;
  m_bShowIconPending = call(NIM_ADD); // stays set when it succeeds: such an icon is added again by the next shell
  m_bHidden = m_bRemoved = !m_bShowIconPending;
  kivara::tray::require(m_bHidden == FALSE, kivara::tray::kPendingAdd);
}

long long KivSystemTray::OnTrayNotification(unsigned long long wParam, long long lParam) {
  if (wParam != m_tnd.uID || (m_hTargetWnd == nullptr && m_tnd.hWnd == nullptr))
    return 0;
  if (lParam == WM_RBUTTONUP)
    openMenu();
  if (lParam == WM_LBUTTONDBLCLK) {
    SetForegroundWindow(m_tnd.hWnd);
    DoDoubleClickAction();
  }
  return 1;
}

void KivSystemTray::openMenu() {
  SV::PopupMenu menu;
  BuildPopupMenu(menu);
  if (menu.GetItemCount() == 0)
    return;
  POINT pointer = {};
  GetCursorPos(&pointer);
  SetForegroundWindow(m_tnd.hWnd); // or the menu would stay open when the user clicks elsewhere
  menu.Execute({pointer.x, pointer.y});
}

void KivSystemTray::CustomizeMenu(HMENU) {}

void KivSystemTray::BuildPopupMenu(SV::PopupMenu &) {}

void KivSystemTray::DoDoubleClickAction() {}

void KivSystemTray::GetMenuDefaultItem(unsigned int & item, int & byPosition) const {
  item = m_DefaultMenuItemID;
  byPosition = m_DefaultMenuItemByPos;
}

int KivSystemTray::SetMenuDefaultItem(unsigned int item, int byPosition) {
  if (item == m_DefaultMenuItemID && byPosition == m_DefaultMenuItemByPos)
    return TRUE;
  m_DefaultMenuItemID = item;
  m_DefaultMenuItemByPos = byPosition;
  HMENU const menu = LoadMenuA(m_hInstance, MAKEINTRESOURCEA(m_tnd.uID));
  if (menu == nullptr)
    return FALSE;
  HMENU const subMenu = GetSubMenu(menu, 0);
  if (subMenu != nullptr) {
    ::SetMenuDefaultItem(subMenu, item, static_cast<UINT>(byPosition));
    DestroyMenu(subMenu);
  }
  DestroyMenu(menu);
  return subMenu != nullptr;
}
