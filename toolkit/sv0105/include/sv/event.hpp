#pragma once
/// \file
/// What a window learns of mouse and keyboard.

#include "sv/geometry.hpp"
#include "sv/keycodes.hpp"

namespace SV {

inline constexpr unsigned short MOUSE_LEFT = 1;
inline constexpr unsigned short MOUSE_MIDDLE = 2;
inline constexpr unsigned short MOUSE_RIGHT = 4;

/// The mouse over a window, or anywhere while the window has captured it.
struct MouseEvent {
  Point position;            ///< in pixels of the client area; outside of it while the mouse is captured
  unsigned short button = 0; ///< the one that went down or up, MOUSE_LEFT, ...; 0 for a move and the wheel
  unsigned short clicks = 0; ///< when a button went down: 1, or 2 for the second one of a double click
  unsigned short held = 0;   ///< the buttons that are down now, joined by |
  KeyCode modifiers = 0;     ///< the keys that are held: KEY_SHIFT, KEY_CONTROL and KEY_ALT, joined by |
  double notches = 0;        ///< of the wheel, away from the user; 0 for all else
};

/// A key that went down.
struct KeyEvent {
  KeyCode code = 0;      ///< with the modifiers; 0 for a key that has no code
  bool repeated = false; ///< the user holds it down
};

} // namespace SV
