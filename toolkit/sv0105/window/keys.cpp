#include "window/keys.hpp"

namespace SV::detail {
namespace {

/// Virtual keys that follow each other, and the code of the first one.
struct KeyRange {
  WPARAM first;
  WPARAM last;
  KeyCode code;
};

constexpr KeyRange kKeys[] = {
    {'0', '9', KEY_0},
    {VK_NUMPAD0, VK_NUMPAD9, KEY_0},
    {'A', 'Z', KEY_A},
    {VK_F1, VK_F24, KEY_F1},
    {VK_DOWN, VK_DOWN, KEY_DOWN},
    {VK_UP, VK_UP, KEY_UP},
    {VK_LEFT, VK_LEFT, KEY_LEFT},
    {VK_RIGHT, VK_RIGHT, KEY_RIGHT},
    {VK_HOME, VK_HOME, KEY_HOME},
    {VK_END, VK_END, KEY_END},
    {VK_PRIOR, VK_NEXT, KEY_PAGEUP},
    {VK_RETURN, VK_RETURN, KEY_RETURN},
    {VK_ESCAPE, VK_ESCAPE, KEY_ESCAPE},
    {VK_TAB, VK_TAB, KEY_TAB},
    {VK_BACK, VK_BACK, KEY_BACKSPACE},
    {VK_SPACE, VK_SPACE, KEY_SPACE},
    {VK_INSERT, VK_DELETE, KEY_INSERT},
    {VK_ADD, VK_ADD, KEY_ADD},
    {VK_SUBTRACT, VK_SUBTRACT, KEY_SUBTRACT},
    {VK_MULTIPLY, VK_MULTIPLY, KEY_MULTIPLY},
    {VK_DIVIDE, VK_DIVIDE, KEY_DIVIDE},
    {VK_DECIMAL, VK_DECIMAL, KEY_DECIMAL},
    {VK_SEPARATOR, VK_SEPARATOR, KEY_SEPARATOR},
    {VK_APPS, VK_APPS, KEY_CONTEXTMENU},
};

bool isHeld(int virtualKey) { return GetKeyState(virtualKey) < 0; }

} // namespace

KeyCode codeOfKey(WPARAM virtualKey) {
  for (KeyRange const & range : kKeys)
    if (virtualKey >= range.first && virtualKey <= range.last)
      return static_cast<KeyCode>(range.code + (virtualKey - range.first));
  return 0;
}

KeyCode heldModifiers() {
  int const held =
      (isHeld(VK_SHIFT) ? KEY_SHIFT : 0) | (isHeld(VK_CONTROL) ? KEY_CONTROL : 0) | (isHeld(VK_MENU) ? KEY_ALT : 0);
  return static_cast<KeyCode>(held);
}

} // namespace SV::detail
