#pragma once
/// \file
/// Codes of keys. Kiv_GetSVKeysFromWinKeys makes them from the names of keys.

namespace SV {

/// A key by its place on the keyboard, with what is held along with it joined by |. 0 is no key.
using KeyCode = unsigned short;

inline constexpr KeyCode KEY_0 = 0x100;  ///< to 0x109 for the digits, those of the number pad too
inline constexpr KeyCode KEY_A = 0x200;  ///< to 0x219 for the letters
inline constexpr KeyCode KEY_F1 = 0x300; ///< to 0x317 for F24

inline constexpr KeyCode KEY_DOWN = 0x400;
inline constexpr KeyCode KEY_UP = 0x401;
inline constexpr KeyCode KEY_LEFT = 0x402;
inline constexpr KeyCode KEY_RIGHT = 0x403;
inline constexpr KeyCode KEY_HOME = 0x404;
inline constexpr KeyCode KEY_END = 0x405;
inline constexpr KeyCode KEY_PAGEUP = 0x406;
inline constexpr KeyCode KEY_PAGEDOWN = 0x407;

inline constexpr KeyCode KEY_RETURN = 0x500;
inline constexpr KeyCode KEY_ESCAPE = 0x501;
inline constexpr KeyCode KEY_TAB = 0x502;
inline constexpr KeyCode KEY_BACKSPACE = 0x503;
inline constexpr KeyCode KEY_SPACE = 0x504;
inline constexpr KeyCode KEY_INSERT = 0x505;
inline constexpr KeyCode KEY_DELETE = 0x506;
inline constexpr KeyCode KEY_ADD = 0x507; ///< this one and the next five are on the number pad
inline constexpr KeyCode KEY_SUBTRACT = 0x508;
inline constexpr KeyCode KEY_MULTIPLY = 0x509;
inline constexpr KeyCode KEY_DIVIDE = 0x50A;
inline constexpr KeyCode KEY_DECIMAL = 0x50B;
inline constexpr KeyCode KEY_SEPARATOR = 0x50C;
inline constexpr KeyCode KEY_CONTEXTMENU = 0x51B;

inline constexpr KeyCode KEY_SHIFT = 0x1000; ///< held along
inline constexpr KeyCode KEY_CONTROL = 0x2000;
inline constexpr KeyCode KEY_ALT = 0x4000;
inline constexpr KeyCode KEY_MODIFIERS = KEY_SHIFT | KEY_CONTROL | KEY_ALT;

} // namespace SV
