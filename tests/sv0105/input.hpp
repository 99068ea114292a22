#pragma once
/// \file
/// Keys and clicks, as they come out of the queue or out of the display.

#include "tools/winapi.hpp"

#include <initializer_list>
#include <vector>

namespace svtest {

/// Puts a key into the queue of the window that has the keyboard; the event loop then makes of it what it does with a real
/// one.
inline void postKey(WPARAM key) {
  UINT const code = MapVirtualKeyA(static_cast<UINT>(key), MAPVK_VK_TO_VSC);
  LPARAM const down = 1 | static_cast<LPARAM>(code) << 16;
  PostMessageA(GetFocus(), WM_KEYDOWN, key, down);
  PostMessageA(GetFocus(), WM_KEYUP, key, down | 0xC0000000);
}

/// A character with Alt, by which mnemonics are chosen.
inline void postMnemonic(char letter) {
  PostMessageA(GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(static_cast<unsigned char>(letter)), 1 << 29);
}

/// While it lives, the keys count as held for messages.
class HeldKeys {
public:
  HeldKeys(std::initializer_list<int> keys) {
    GetKeyboardState(before_);
    BYTE now[256];
    GetKeyboardState(now);
    for (int const key : keys)
      now[key] = 0x80;
    SetKeyboardState(now);
  }
  HeldKeys(HeldKeys const &) = delete;
  HeldKeys & operator=(HeldKeys const &) = delete;
  ~HeldKeys() { SetKeyboardState(before_); }

private:
  BYTE before_[256];
};

/// Presses and releases keys of the display; the window in front gets them.
inline void pressKeys(std::vector<WORD> const & keys) {
  for (WORD const key : keys)
    keybd_event(static_cast<BYTE>(key), 0, 0, 0);
  for (auto key = keys.rbegin(); key != keys.rend(); ++key)
    keybd_event(static_cast<BYTE>(*key), 0, KEYEVENTF_KEYUP, 0);
}

/// A click with the left button, in the middle of a window.
inline void postClick(HWND window) {
  RECT area;
  GetClientRect(window, &area);
  LPARAM const place = MAKELPARAM(area.right / 2, area.bottom / 2);
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
  PostMessageA(window, WM_LBUTTONUP, 0, place);
}

} // namespace svtest
