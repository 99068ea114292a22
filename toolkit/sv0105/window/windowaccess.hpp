#pragma once
/// \file
/// What a window is made from, and the parts of it that the free functions of the toolkit reach.

#include "sv/control.hpp"
#include "tools/winapi.hpp"

namespace SV::detail {

inline constexpr char kWindowClass[] = "SV0105.Window";
inline constexpr char kFrameClass[] = "SV0105.MDIFrame";
inline constexpr char kChildClass[] = "SV0105.MDIChild";
inline constexpr char kDialogClass[] = "SV0105.Dialog";

struct WindowSpec {
  char const * className;
  DWORD style;
  DWORD exStyle;
  Window * parent;
  bool isControl = false; ///< the class is the system's: its own procedure is asked for what the toolkit leaves
  void * data = nullptr;  ///< for WM_CREATE
  bool isDialog = false;  ///< the system's dialog procedure is asked for what the toolkit leaves
  WORD id = 0;            ///< of a child, by which dialogs know it
};

/// The window of the system, null when that refuses. A child is of size 0 by 0.
HWND createSystemWindow(WindowSpec const & spec, HWND parent);
HWND createDialogWindow(WindowSpec const & spec, HWND parent);

/// What the toolkit's free functions do with a window.
struct WindowAccess {
  static HWND & handle(Window & window) { return window.hwnd_; }
  static Window *& parent(Window & window) { return window.parent_; }
  static bool hasFont(Window const & window) { return window.hasFont_; }
  static void useFont(Window & window) { window.useFont(); }
  static void destroy(Window & window) { window.Destroy(); }
  static void detach(Window & window) { window.detach(); }
  /// Asks the procedure of a control's class, in its wide form, past the toolkit's, which is not wide.
  static LRESULT askWide(Control const & control, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(control.controlProcedure_, control.hwnd_, message, wParam, lParam);
  }
  static bool notify(Control & control, UINT message, WPARAM wParam, LPARAM lParam, long long & result) {
    return control.Notify(message, wParam, lParam, result);
  }
  static LRESULT handle(Window & window, UINT message, WPARAM wParam, LPARAM lParam) {
    return window.HandleMessage(message, wParam, lParam);
  }
};

} // namespace SV::detail
