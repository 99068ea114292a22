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
/// The record is the file "_kiv_hooks.txt" in the working folder of the moment at which the first window is added. It is
/// appended to, and each line is flushed before the message goes on. WM_SIZE to a watched window becomes
///
/// \code
///   [00010066h] Msg: (  5 |   5h) (lp: 00000000h) (wp: 01E00280h) (WM_SIZE)
/// \endcode
///
/// **"lp" shows the wParam and "wp" the lParam**: tools that read such files expect it so. Handles and parameters are shown
/// by their low 32 bits; a message without a name in the table is "unknown".
///
/// The file is opened once in the life of a process. Where it cannot be opened, nothing is recorded until the process ends,
/// and the operations do nothing. (A file of that name that is there and cannot be read is an internal error of the log.)
/// At the end of the process the record ends with "# -- [end of program session] ---"; the operations then do nothing.
///
/// Messages are seen for the windows of the toolkit only; for any other the lines of adding and removing are all. Nothing is
/// locked: main thread.

#include "export.hpp"
#include "sv/sysdepen.hpp"

#include <set>

/// Starts and ends the watch over windows. Static operations alone.
class KIV_API KivWindowsMessageWatcher {
public:
  KivWindowsMessageWatcher() = default;
  KivWindowsMessageWatcher(KivWindowsMessageWatcher const &) = default;
  /// Assigns nothing.
  KivWindowsMessageWatcher & operator=(KivWindowsMessageWatcher const &);

  /// Records the messages of a window from now on, until it is removed; a window that is destroyed stays among the watched
  /// ones, and so does the next window with its handle. Writes "--- [hooking window 00010066h] --- [name] ---n": without a line end, so that the next entry follows in the
  /// same line. A window that is watched already gets that line again.
  /// \param name  for the record only; null counts as empty
  static void addHookWindow(HWND window, char const * name);

  /// Ends the watch over a window. Writes its line also for a window that is not watched.
  static void removeHookWindow(HWND window);

  /// Writes a text into the record, in the form of the runtime's printf, without a stamp or a line end of its own. A null
  /// format counts as empty. Does nothing before the first window is added.
  static void addMessage(char const * format, ...) __attribute__((format(ms_printf, 1, 2)));
};

/// The watched windows, and the hook that sees their messages. There is one, made when it is first needed and destroyed at
/// the end of the process, which puts back the hook that was there before.
class KIV_API KivWindowsHookManager : public std::set<HWND> {
public:
  KivWindowsHookManager(KivWindowsHookManager const &) = delete;
  KivWindowsHookManager & operator=(KivWindowsHookManager const &) = delete;

  /// The one of the process; not to be used after its end.
  static KivWindowsHookManager & Instance();

  /// Opens the record and installs the hook, at the first call in a process only.
  void install();

  /// What installed the hook before this one; null when there was none.
  SV::MessageHook getPreviousHook() const { return previousHook_; }

private:
  KivWindowsHookManager();
  virtual ~KivWindowsHookManager();

  SV::MessageHook previousHook_ = nullptr;
};
