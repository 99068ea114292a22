#pragma once
/// \file
/// What the shell of the tests and those who use it agree on.

#include "tools/winapi.hpp"

namespace trayshell {

/// Messages to its window of the class "Shell_TrayWnd", each answered at once.
enum Command : UINT {
  Count = WM_APP + 1, ///< how many icons there are
  CountVisible,       ///< those of them that are not hidden
  Refuse,             ///< from now on each call is refused, or with wParam 0 taken again
  Forget,             ///< loses all icons and broadcasts that it has begun, as one that was started anew
  Mouse, ///< sends the icon of the number wParam the mouse message lParam; the icon's answer, or -1 without an icon
  Mark,  ///< writes "mark" and the number
  End,   ///< the program ends
};

} // namespace trayshell
