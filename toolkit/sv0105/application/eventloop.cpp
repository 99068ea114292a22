#include "sv/application.hpp"

#include "application/dispatch.hpp"

namespace SV {

namespace {

constexpr DWORD kRescheduleMilliseconds = 100;

} // namespace

int Application::Execute() {
  MSG message = {};
  while (GetMessageA(&message, nullptr, 0, 0) > 0)
    detail::dispatch(message);
  return message.message == WM_QUIT ? static_cast<int>(message.wParam) : 1;
}

void Application::Reschedule() {
  DWORD const start = GetTickCount();
  MSG message = {};
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      // It is meant for Execute, in which the caller runs or to which it returns.
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    detail::dispatch(message);
    if (GetTickCount() - start > kRescheduleMilliseconds)
      return;
  }
}

void Application::Quit(int exitCode) { PostQuitMessage(exitCode); }

} // namespace SV
