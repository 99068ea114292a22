#pragma once
/// \file
/// Facts of the process, and the message hook.

#include "sv/export.hpp"

namespace SV {

/// Gets every message of the toolkit's windows before they do. Non-zero if it has handled the message; \p result is then the
/// message's result.
using MessageHook = int (*)(HWND window, unsigned message, unsigned long long wParam, long long lParam,
                            long long & result);

/// The process as the system started it, and the hook of all windows. Static members only; main thread.
class SV_API Sysdepen {
public:
  /// The instance of the executable.
  static HINSTANCE GethInst();
  static unsigned long GetThreadId();
  static int GetShowCommand();

  /// The hook in use; null if there is none. ChangeHook returns the previous one.
  static MessageHook GetHook();
  static MessageHook ChangeHook(MessageHook hook);
};

} // namespace SV
