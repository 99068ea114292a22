#include "stopsignal.hpp"

#include "tools/winapi.hpp"

namespace service {
namespace {

HANDLE signalEvent = nullptr;

/// Runs on a thread of the system's own.
BOOL WINAPI answer(DWORD event) {
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT && event != CTRL_CLOSE_EVENT)
    return FALSE;
  SetEvent(signalEvent);
  if (event == CTRL_CLOSE_EVENT)
    Sleep(INFINITE); // the system ends the process when this returns; the main thread ends it in order before
  return TRUE;
}

} // namespace

void * stopSignal() {
  if (signalEvent == nullptr) {
    signalEvent = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(answer, TRUE);
  }
  return signalEvent;
}

} // namespace service
