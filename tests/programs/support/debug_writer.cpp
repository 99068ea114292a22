// Tells the debugger two lines and an empty text, and ends with 5.

#include "tools/winapi.hpp"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  OutputDebugStringA("first line\n");
  OutputDebugStringA("");
  OutputDebugStringA("second \x84line\x93\n");
  return 5;
}
