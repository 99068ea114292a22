#pragma once
/// \file
/// Windows of another process, found, read and used from outside.
///
///     support::ChildProcess child({.program = "message_box"});
///     HWND const box = support::waitForWindow({.processId = child.processId(), .className = support::kBoxClass});
///     EXPECT_EQ(support::readBox(box).title, "Caption");
///     support::pressButton(box, "OK");
///
/// All tests share one desktop, so a window is always looked for by its process. Texts are bytes of the ANSI code page.
/// A window that is gone or does not answer within 5 seconds yields an empty text, no children or false, and never
/// blocks a test.

#include "support/processes/child_process.hpp"

#include <string>
#include <string_view>
#include <vector>

struct HWND__;
struct tagRECT;

namespace support {

/// The window class of the boxes of MessageBoxA, and of every dialog of the system.
inline constexpr char kBoxClass[] = "#32770";

/// Which top-level window is meant; an empty title or class matches any.
struct WindowQuery {
  unsigned long processId;
  std::string title = {};
  std::string className = {};
  /// False: windows that are not visible match too.
  bool visible = true;
};

/// All top-level windows that match, the front one first.
std::vector<HWND__ *> findWindows(WindowQuery const & query);
/// The front one of them; null when there is none within the time.
HWND__ * waitForWindow(WindowQuery const & query, double seconds = kTimeLimit);
/// Waits until the window is destroyed; false when it still is there after the time.
bool waitUntilGone(HWND__ * window, double seconds = kTimeLimit);

std::string windowClass(HWND__ * window);
/// The text of any window or control: a title, a label, the contents of an edit field.
std::string windowText(HWND__ * window);

/// The children of all depths, in the order of the dialog.
std::vector<HWND__ *> children(HWND__ * window);
/// The child with that identifier; null when there is none.
HWND__ * childById(HWND__ * window, int id);

/// All that a user reads in a box. Mnemonic signs are left out of the buttons ("&Retry" is "Retry").
struct BoxTexts {
  std::string title;
  std::vector<std::string> texts;   ///< visible static controls with a text
  std::vector<std::string> buttons; ///< visible buttons
};
BoxTexts readBox(HWND__ * box);

/// Clicks the button of that label, given without mnemonic sign; false when the box has none. It does not wait for what
/// follows.
bool pressButton(HWND__ * box, std::string_view label);
/// Clicks the button with that identifier (IDOK, IDCANCEL, ...), whose label depends on the user's language.
bool pressButton(HWND__ * box, int id);
/// Asks the window to close, as a click on its closing button does. It does not wait for what follows.
bool closeWindow(HWND__ * window);

/// In screen pixels.
tagRECT windowRectangle(HWND__ * window);
/// The client area in screen pixels.
tagRECT clientRectangle(HWND__ * window);

} // namespace support
