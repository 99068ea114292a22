#include "asystray.hpp"

#include "sv/sysdepen.hpp"
#include "tools/winapi.hpp"
#include "ui/tray/traylimits.hpp"

#include <shellapi.h>

#include <cstddef>

namespace {

using kivara::tray::require;

constexpr DWORD kTextIconMessage = NIF_MESSAGE | NIF_ICON | NIF_TIP;
constexpr unsigned long kSizeOfData = 520; // without the last field, which older shells do not know
constexpr std::size_t kTextEnd = 256;
constexpr std::size_t kTitleEnd = 64;

/// Cuts what does not fit; null counts as empty.
template <std::size_t Size> void copyText(char (&target)[Size], char const * text) {
  lstrcpynA(target, text != nullptr ? text : "", static_cast<int>(Size));
}

bool isShorter(char const * text, std::size_t limit) { return static_cast<std::size_t>(lstrlenA(text)) < limit; }

bool isBalloonIcon(unsigned long icon) { return icon <= NIIF_ERROR; }

bool isTimeout(unsigned int seconds) { return seconds >= 10 && seconds <= 30; }

bool hasBalloons() {
  OSVERSIONINFOA version = {};
  version.dwOSVersionInfoSize = sizeof version;
  return GetVersionExA(&version) && version.dwPlatformId == VER_PLATFORM_WIN32_NT && version.dwMajorVersion >= 5;
}

} // namespace

KivSystemTray::KivSystemTray() { Init(); }

KivSystemTray::KivSystemTray(SV::Window * parent, unsigned int uCallbackMessage, SV::String const & tip,
                             SV::Icon const & icon, unsigned int uID, int bHidden, SV::String const & balloonTip,
                             SV::String const & balloonTitle, unsigned long dwBalloonIcon, unsigned int uBalloonTimeout)
    : KivSystemTray() {
  Create(parent, uCallbackMessage, tip, icon, uID, bHidden, balloonTip, balloonTitle, dwBalloonIcon, uBalloonTimeout);
}

KivSystemTray::~KivSystemTray() {
  closeFormer();
  if (m_pThis == this)
    m_pThis = nullptr;
}

void KivSystemTray::Init() {
  m_pThis = this;
  m_tnd = {};
  m_bEnabled = FALSE;
  m_bHidden = TRUE;
  m_bRemoved = TRUE;
  m_bShowIconPending = FALSE;
  m_uIDTimer = 0;
  m_hSavedIcon = nullptr;
  m_hTargetWnd = nullptr;
  m_DefaultMenuItemID = 0;
  m_DefaultMenuItemByPos = TRUE;
  m_uCreationFlags = 0;
  m_bWin2K = hasBalloons();
}

/// The timer of an animation goes with its window.
void KivSystemTray::closeFormer() {
  RemoveIcon();
  if (m_hWnd != nullptr)
    DestroyWindow(m_hWnd);
  m_hWnd = nullptr;
  m_tnd = {};
  m_bHidden = m_bRemoved = TRUE;
  m_uIDTimer = 0;
  m_hSavedIcon = nullptr;
}

bool KivSystemTray::call(unsigned long what) {
  static_assert(sizeof(NotifyIconData) == sizeof(NOTIFYICONDATAA) &&
                kSizeOfData == offsetof(NotifyIconData, hBalloonIcon) &&
                offsetof(NotifyIconData, hIcon) == offsetof(NOTIFYICONDATAA, hIcon) &&
                offsetof(NotifyIconData, szInfo) == offsetof(NOTIFYICONDATAA, szInfo) &&
                offsetof(NotifyIconData, uTimeout) == offsetof(NOTIFYICONDATAA, uTimeout) &&
                offsetof(NotifyIconData, dwInfoFlags) == offsetof(NOTIFYICONDATAA, dwInfoFlags));
  return Shell_NotifyIconA(what, reinterpret_cast<NOTIFYICONDATAA *>(&m_tnd)) != FALSE;
}

int KivSystemTray::Create(SV::Window * parent, unsigned int uCallbackMessage, SV::String const & tip,
                          SV::Icon const & icon, unsigned int uID, int bHidden, SV::String const & balloonTip,
                          SV::String const & balloonTitle, unsigned long dwBalloonIcon, unsigned int uBalloonTimeout) {
  closeFormer();
  m_hInstance = SV::Sysdepen::GethInst();
  m_bEnabled = LOBYTE(GetVersion()) >= 4;
  require(m_bEnabled != FALSE, kivara::tray::kSystem);
  if (!m_bEnabled)
    return FALSE;
  m_nMaxTooltipLength = 128;
  require(uCallbackMessage >= WM_APP, kivara::tray::kCreationMessage);
  require(isShorter(tip.c_str(), m_nMaxTooltipLength + 1), kivara::tray::kCreationTip);
  RegisterClassA(m_hInstance);
  m_hWnd = CreateWindowExA(0, kWindowClass, "", WS_POPUP, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                           nullptr, nullptr, m_hInstance, nullptr);
  fill(parent != nullptr ? parent->GethWnd() : nullptr, uCallbackMessage, tip, icon.GethIcon(), uID);
  if (m_bWin2K && balloonTip.Len() != 0)
    addBalloon(balloonTip, balloonTitle, dwBalloonIcon, uBalloonTimeout);
  return addFirst(bHidden);
}

void KivSystemTray::fill(HWND parent, unsigned int message, SV::String const & tip, HICON icon, unsigned int number) {
  m_tnd.cbSize = kSizeOfData;
  m_tnd.uFlags = kTextIconMessage;
  m_tnd.hWnd = parent != nullptr ? parent : m_hWnd;
  m_tnd.uID = number;
  m_tnd.hIcon = icon;
  m_tnd.uCallbackMessage = message;
  copyText(m_tnd.szTip, tip.c_str());
}

void KivSystemTray::addBalloon(SV::String const & text, SV::String const & title, unsigned long icon,
                               unsigned int timeout) {
  require(isShorter(text.c_str(), kTextEnd), kivara::tray::kCreationBalloonText);
  require(isShorter(title.c_str(), kTitleEnd), kivara::tray::kCreationBalloonTitle);
  require(isBalloonIcon(icon), kivara::tray::kCreationBalloonIcon);
  require(isTimeout(timeout), kivara::tray::kCreationBalloonTimeout);
  m_tnd.uFlags |= NIF_INFO;
  storeBalloon(text.c_str(), title.c_str(), icon, timeout);
}

void KivSystemTray::storeBalloon(char const * text, char const * title, unsigned long icon, unsigned int timeout) {
  copyText(m_tnd.szInfo, text);
  copyText(m_tnd.szInfoTitle, title);
  m_tnd.dwInfoFlags = icon;
  m_tnd.uTimeout = timeout * 1000;
}

int KivSystemTray::addFirst(int hidden) {
  m_bHidden = hidden;
  m_hTargetWnd = m_tnd.hWnd;
  if (m_bWin2K && hidden) {
    // Alone: the shell gets neither picture nor text nor message then, and programs set them when they show the icon.
    m_tnd.uFlags = NIF_STATE;
    m_tnd.dwState = m_tnd.dwStateMask = NIS_HIDDEN;
  }
  m_uCreationFlags = m_tnd.uFlags;
  int result = TRUE;
  if (!hidden || m_bWin2K)
    result = addToShell(m_tnd.uFlags);
  m_tnd.szInfo[0] = '\0'; // or each later change would show the balloon again
  return result;
}

/// NIM_ADD. A failed one leaves the icon waiting for the shell.
bool KivSystemTray::addToShell(unsigned int flags) {
  m_tnd.uFlags = flags;
  bool const added = call(NIM_ADD);
  m_bRemoved = m_bShowIconPending = !added;
  if (!added)
    m_bHidden = TRUE;
  return added;
}

int KivSystemTray::changeUnlessHidden(unsigned int flags) {
  m_tnd.uFlags = flags;
  return m_bHidden ? TRUE : call(NIM_MODIFY);
}

int KivSystemTray::SetTooltipText(SV::String const & tip) {
  require(isShorter(tip.c_str(), m_nMaxTooltipLength), kivara::tray::kTip);
  if (!m_bEnabled)
    return FALSE;
  copyText(m_tnd.szTip, tip.c_str());
  return changeUnlessHidden(NIF_TIP);
}

SV::String KivSystemTray::GetTooltipText() const { return m_tnd.szTip; }

int KivSystemTray::SetIcon(SV::Icon const & icon) { return SetIcon(icon.GethIcon()); }

int KivSystemTray::SetIcon(HICON icon) {
  if (!m_bEnabled)
    return FALSE;
  m_tnd.hIcon = icon;
  return changeUnlessHidden(NIF_ICON);
}

int KivSystemTray::SetIcon(char const * resource) {
  auto const icon = static_cast<HICON>(LoadImageA(m_hInstance, resource, IMAGE_ICON, 0, 0, LR_LOADFROMFILE));
  int const result = SetIcon(icon);
  DestroyIcon(icon); // the shell has made a copy
  return result;
}

int KivSystemTray::SetIcon(unsigned int resource) {
  // The number in the form of a text: as a number it would be read as the address of the file's name.
  char name[16];
  wsprintfA(name, "#%u", resource);
  return SetIcon(name);
}

int KivSystemTray::SetStandardIcon(char const * name) { return SetIcon(LoadIconA(nullptr, name)); }

int KivSystemTray::SetStandardIcon(unsigned int resource) { return SetStandardIcon(MAKEINTRESOURCEA(resource)); }

void KivSystemTray::SetFocus() { call(NIM_SETFOCUS); }

int KivSystemTray::RemoveIcon() {
  m_bShowIconPending = FALSE;
  if (!m_bEnabled || m_bRemoved)
    return TRUE;
  m_tnd.uFlags = 0;
  if (call(NIM_DELETE))
    m_bHidden = m_bRemoved = TRUE;
  return m_bRemoved;
}

int KivSystemTray::AddIcon() {
  if (!m_bRemoved)
    RemoveIcon();
  if (m_bEnabled && addToShell(kTextIconMessage))
    m_bHidden = FALSE;
  return !m_bRemoved;
}

/// NIM_MODIFY of whether the icon is visible; whether the shell has taken it.
bool KivSystemTray::changeState(unsigned long state) {
  m_tnd.uFlags = NIF_STATE;
  m_tnd.dwState = state;
  m_tnd.dwStateMask = NIS_HIDDEN;
  return call(NIM_MODIFY);
}

int KivSystemTray::HideIcon() {
  if (!m_bEnabled || m_bRemoved || m_bHidden)
    return TRUE;
  if (m_bWin2K)
    m_bHidden = changeState(NIS_HIDDEN);
  else
    RemoveIcon();
  return m_bHidden;
}

int KivSystemTray::ShowIcon() {
  if (m_bRemoved || (m_bHidden && !m_bWin2K))
    AddIcon();
  else if (m_bHidden)
    m_bHidden = !changeState(0);
  return !m_bHidden;
}

int KivSystemTray::MoveToRight() {
  RemoveIcon();
  return AddIcon();
}

int KivSystemTray::ShowBalloon(char const * text, char const * title, unsigned long icon, unsigned int timeout) {
  if (!m_bWin2K)
    return FALSE;
  require(isShorter(text, kTextEnd), kivara::tray::kBalloonText);
  require(isShorter(title, kTitleEnd), kivara::tray::kBalloonTitle);
  require(isBalloonIcon(icon), kivara::tray::kBalloonIcon);
  require(isTimeout(timeout), kivara::tray::kBalloonTimeout);
  m_tnd.uFlags = NIF_INFO;
  storeBalloon(text, title, icon, timeout);
  bool const shown = call(NIM_MODIFY);
  m_tnd.szInfo[0] = '\0';
  return shown;
}

int KivSystemTray::SetNotificationWnd(HWND window) {
  if (!m_bEnabled)
    return FALSE;
  require(IsWindow(window) != FALSE, kivara::tray::kNotificationWindow);
  m_tnd.hWnd = window;
  return changeUnlessHidden(0);
}

int KivSystemTray::SetCallbackMessage(unsigned int message) {
  if (!m_bEnabled)
    return FALSE;
  require(message >= WM_APP, kivara::tray::kCallbackMessage);
  m_tnd.uCallbackMessage = message;
  return changeUnlessHidden(NIF_MESSAGE);
}

HWND KivSystemTray::GetSafeHwnd() const { return this != nullptr ? m_hWnd : nullptr; }
