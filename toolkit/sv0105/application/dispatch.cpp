#include "application/dispatch.hpp"

#include "application/accelerators.hpp"
#include "application/guard.hpp"
#include "application/helpkeys.hpp"
#include "application/toolkit.hpp"
#include "sv/dialog.hpp"
#include "window/dialogaround.hpp"

namespace SV::detail {
namespace {

/// Both call handlers of the program, but not from a window procedure.
bool isTaken(MSG const & message) {
  bool taken = false;
  return !guarded([&] { taken = isHelpMessage(message) || isAccelerator(message); }) || taken;
}

bool isDialogKey(MSG & message) {
  bool const mayBe = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  Dialog const * const dialog = mayBe ? dialogAround(message.hwnd) : nullptr;
  return dialog && IsDialogMessageA(dialog->GethWnd(), &message);
}

/// The MDI frame's keys work only in the frame itself: in a dialog over it they would close a document.
bool isMdiKey(MSG & message) {
  HWND const client = toolkit().mdiClient;
  return client && message.hwnd && GetAncestor(message.hwnd, GA_ROOT) == GetAncestor(client, GA_ROOT) &&
         TranslateMDISysAccel(client, &message);
}

} // namespace

void dispatch(MSG & message) {
  if (isTaken(message) || isDialogKey(message) || isMdiKey(message))
    return;
  TranslateMessage(&message);
  DispatchMessageA(&message);
}

void dispatchUntil(bool const & ended, HWND window) {
  MSG message = {};
  while (!ended && IsWindow(window)) {
    if (GetMessageA(&message, nullptr, 0, 0) <= 0) {
      if (message.message == WM_QUIT)
        PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    dispatch(message);
  }
}

} // namespace SV::detail
