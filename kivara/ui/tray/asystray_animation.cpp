#include "asystray.hpp"

#include "tools/winapi.hpp"
#include "ui/tray/traylimits.hpp"

#include <time.h>

int KivSystemTray::SetIconList(unsigned int first, unsigned int last) {
  if (first > last)
    return FALSE;
  m_IconList.clear();
  for (unsigned long long number = first; number <= last; ++number)
    m_IconList.push_back(LoadIconA(m_hInstance, MAKEINTRESOURCEA(number)));
  return TRUE;
}

int KivSystemTray::SetIconList(HICON * icons, unsigned int count) {
  m_IconList.clear();
  if (icons == nullptr)
    return FALSE;
  // With the one at the index count: callers pass the index of the last icon.
  m_IconList.assign(icons, icons + std::size_t{count} + 1);
  return TRUE;
}

int KivSystemTray::Animate(unsigned int delayMs, int seconds) {
  if (m_IconList.empty())
    return FALSE;
  StopAnimation();
  m_nCurrentIcon = 0;
  m_StartTime = _time64(nullptr);
  m_nAnimationPeriod = seconds;
  m_hSavedIcon = m_bEnabled ? m_tnd.hIcon : nullptr;
  // Without a window the system would make a timer of the thread, whose messages reach no window.
  m_uIDTimer = m_hWnd != nullptr ? SetTimer(m_hWnd, kTimerId, delayMs, nullptr) : 0;
  return m_uIDTimer != 0;
}

int KivSystemTray::StepAnimation() {
  if (m_IconList.empty())
    return FALSE;
  if (++m_nCurrentIcon >= m_IconList.size())
    m_nCurrentIcon = 0;
  return SetIcon(m_IconList[m_nCurrentIcon]);
}

int KivSystemTray::StopAnimation() {
  int const result = m_uIDTimer != 0 ? KillTimer(m_hWnd, m_uIDTimer) : FALSE;
  m_uIDTimer = 0;
  if (m_hSavedIcon != nullptr)
    SetIcon(m_hSavedIcon);
  m_hSavedIcon = nullptr;
  return result;
}

void KivSystemTray::OnTimer(unsigned long long id) {
  kivara::tray::require(id == m_uIDTimer, kivara::tray::kTimer);
  if (m_nAnimationPeriod > 0 && _time64(nullptr) - m_StartTime > m_nAnimationPeriod)
    StopAnimation();
  else
    StepAnimation();
}
