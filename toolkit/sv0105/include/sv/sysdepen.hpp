#pragma once
/// \file
/// What the toolkit shares of the system below it.

#include "sv/export.hpp"

namespace SV {

/// Sees every message of the toolkit's windows before they do. Non-zero: the message is done, and \p result is its answer.
using MessageHook = int (*)(HWND window, unsigned message, unsigned long long wParam, long long lParam,
                            long long & result);

/// The process as the system started it, and the hook of all windows. Static members alone; main thread.
class SV_API Sysdepen {
public:
  /// The instance of the executable.
  static HINSTANCE GethInst();
  static unsigned long GetThreadId();
  static int GetShowCommand();

  /// The hook in use, null when there is none; ChangeHook gives the former one.
  static MessageHook GetHook();
  static MessageHook ChangeHook(MessageHook hook);
};

} // namespace SV
