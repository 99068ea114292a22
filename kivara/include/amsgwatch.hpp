#pragma once
/// \file
/// A record of the messages that reach windows, for debugging.
///
/// \code
///   KivWindowsMessageWatcher::addHookWindow(window.GethWnd(), "main window");
///   KivWindowsMessageWatcher::addMessage("now the dialog opens\n");
///   ...
///   KivWindowsMessageWatcher::removeHookWindow(window.GethWnd());
/// \endcode
///
/// The record is the file "_kiv_hooks.txt" in the folder that is the working folder when the first window is added. Lines are
/// appended, and each line is flushed before the message is passed on. WM_SIZE to a watched window becomes
///
/// \code
///   [00010066h] Msg: (  5 |   5h) (lp: 00000000h) (wp: 01E00280h) (WM_SIZE)
/// \endcode
///
/// **"lp" shows the wParam and "wp" the lParam**: tools that read such files expect this. Of handles and parameters the low
/// 32 bits are shown; a message without a name in the table is "unknown".
///
/// The file is opened once in a process. If it cannot be opened, nothing is recorded until the process ends, and the operations do
/// nothing. (An existing file of that name that cannot be read is an internal error of the log.)
/// At the end of the process the record ends with "# -- [end of program session] ---"; the operations then do nothing.
///
/// Messages are recorded for the toolkit's windows only; for any other window there are just the lines about adding and removing
/// it. Main thread only.

#include "export.hpp"
#include "sv/sysdepen.hpp"

#include <set>

/// Starts and stops the recording for windows. Static operations only.
class KIV_API KivWindowsMessageWatcher {
public:
  KivWindowsMessageWatcher() = default;
  KivWindowsMessageWatcher(KivWindowsMessageWatcher const &) = default;
  /// Assigns nothing.
  KivWindowsMessageWatcher & operator=(KivWindowsMessageWatcher const &);

  /// Records the messages of a window from now on, until it is removed. A window that is destroyed is not removed, so the next
  /// window with the same handle is recorded too. Writes "--- [hooking window 00010066h] --- [name] ---n" without a line
  /// end, so that the next entry follows on the same line. If the window is already recorded, the line is written again.
  /// \param name  for the record only; null counts as empty
  static void addHookWindow(HWND window, char const * name);

  /// Stops the recording for a window. Its line is written even if the window is not recorded.
  static void removeHookWindow(HWND window);

  /// Writes a text to the record, formatted as by the runtime's printf; no stamp or line end is added. A null format counts as
  /// empty. Does nothing before the first window is added.
  static void addMessage(char const * format, ...) __attribute__((format(ms_printf, 1, 2)));
};

/// The recorded windows, and the hook that gets their messages. There is one, created on first use. At the end of the process it is
/// destroyed, and the previous hook is restored.
class KIV_API KivWindowsHookManager : public std::set<HWND> {
public:
  KivWindowsHookManager(KivWindowsHookManager const &) = delete;
  KivWindowsHookManager & operator=(KivWindowsHookManager const &) = delete;

  /// The one of the process; must not be used after the end of the process.
  static KivWindowsHookManager & Instance();

  /// Opens the record and installs the hook, but only in the first call in a process.
  void install();

  /// The previous hook; null if there was none.
  SV::MessageHook getPreviousHook() const { return previousHook_; }

private:
  KivWindowsHookManager();
  virtual ~KivWindowsHookManager();

  SV::MessageHook previousHook_ = nullptr;
};
