// Shows one box and ends with the number of the button that was pressed.

#include "tools/winapi.hpp"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  return MessageBoxA(nullptr, "First line\nSecond line & more", "A caption", MB_RETRYCANCEL | MB_ICONHAND);
}
