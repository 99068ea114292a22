#include "application/pointer.hpp"

#include "application/toolkit.hpp"

namespace SV::detail {

namespace {

HWND ownWindowBelowPointer() {
  POINT position;
  if (!GetCursorPos(&position))
    return nullptr;
  HWND const window = WindowFromPoint(position);
  return window && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() ? window : nullptr;
}

} // namespace

bool showStatePointer() {
  if (toolkit().wait != 0)
    SetCursor(LoadCursorA(nullptr, IDC_WAIT));
  else if (toolkit().helpPointer)
    SetCursor(LoadCursorA(nullptr, IDC_HELP));
  else
    return false;
  return true;
}

void updatePointer() {
  if (showStatePointer())
    return;
  SetCursor(LoadCursorA(nullptr, IDC_ARROW));
  // The window below may need another pointer than the arrow; the system only asks it at the next move.
  if (HWND const window = ownWindowBelowPointer())
    PostMessageA(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
}

} // namespace SV::detail
