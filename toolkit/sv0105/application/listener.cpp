#include "application/listener.hpp"

#include "application/guard.hpp"
#include "application/hook.hpp"
#include "application/timers.hpp"
#include "application/toolkit.hpp"

#include <cstring>

namespace SV::detail {

namespace {

constexpr char kClassName[] = "SV0105.Listener";
constexpr UINT kUserEvent = WM_APP + 1;
constexpr UINT kAppEvent = WM_APP + 2;

// The system notifies every top-level window of a change; only this one reports it, so that it is reported once.
SysChangeType changeOf(UINT message, LPARAM area) {
  switch (message) {
  case WM_SYSCOLORCHANGE: return SYSCHANGE_COLORS;
  case WM_DISPLAYCHANGE: return SYSCHANGE_DISPLAY;
  case WM_THEMECHANGED: return SYSCHANGE_THEME;
  case WM_FONTCHANGE: return SYSCHANGE_FONTS;
  case WM_SETTINGCHANGE:
    if (auto const name = reinterpret_cast<char const *>(area); name && std::strcmp(name, "intl") == 0)
      return SYSCHANGE_LOCALE;
    return SYSCHANGE_SETTINGS;
  default: return SysChangeType{};
  }
}

bool tellApplication(Application & application, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case kUserEvent:
    application.UserEvent(static_cast<unsigned long>(wParam), reinterpret_cast<void *>(lParam));
    return true;
  case kAppEvent:
    application.AppEvent(static_cast<unsigned long>(wParam), reinterpret_cast<void *>(lParam));
    return true;
  case WM_ACTIVATEAPP: wParam ? application.Activate() : application.Deactivate(); return true;
  default:
    if (SysChangeType const change = changeOf(message, lParam); change != SysChangeType{}) {
      application.SysChange(change);
      return true;
    }
    return false;
  }
}

LRESULT CALLBACK listen(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  LRESULT result = 0;
  bool done = false;
  bool const passed = guarded([&] {
    Application * const application = toolkit().application;
    done = askHook(window, message, wParam, lParam, result);
    if (!done && message == WM_TIMER)
      timeOut(wParam);
    else if (!done)
      done = application && tellApplication(*application, message, wParam, lParam);
  });
  return done || !passed ? result : DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

bool registerListener() {
  WNDCLASSEXA description = {};
  description.cbSize = sizeof description;
  description.lpfnWndProc = listen;
  description.hInstance = toolkit().instance;
  description.lpszClassName = kClassName;
  return RegisterClassExA(&description) != 0;
}

void openListener() {
  // A top-level window that is never shown: the system does not notify message-only windows of a change.
  toolkit().listener = CreateWindowExA(WS_EX_TOOLWINDOW, kClassName, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                       toolkit().instance, nullptr);
}

void closeListener() {
  if (toolkit().listener)
    DestroyWindow(toolkit().listener);
  toolkit().listener = nullptr;
  UnregisterClassA(kClassName, toolkit().instance);
}

bool post(Posted kind, unsigned long event, void * data) {
  HWND const listener = toolkit().listener;
  return listener &&
         PostMessageA(listener, kind == Posted::User ? kUserEvent : kAppEvent, event, reinterpret_cast<LPARAM>(data));
}

} // namespace SV::detail

namespace SV {

bool Application::PostUserEvent(unsigned long event, void * data) {
  return detail::post(detail::Posted::User, event, data);
}

bool Application::PostAppEvent(unsigned long event, void * data) {
  return detail::post(detail::Posted::App, event, data);
}

} // namespace SV
