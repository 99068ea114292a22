// The least that a program with the window of apps/minimal can be: shown, closed, and gone.

#include "tools/winapi.hpp"

namespace {

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY)
    PostQuitMessage(0);
  return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int showCommand) {
  WNDCLASSA windowClass = {};
  windowClass.lpfnWndProc = procedure;
  windowClass.hInstance = instance;
  windowClass.hIcon = LoadIconA(nullptr, IDI_APPLICATION);
  windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  windowClass.lpszClassName = "BareWindow";
  RegisterClassA(&windowClass);
  HWND const window = CreateWindowExA(0, "BareWindow", "The smallest program", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                                      CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
  if (!window)
    return 1;
  ShowWindow(window, showCommand);
  PostMessageA(window, WM_CLOSE, 0, 0);
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return static_cast<int>(message.wParam);
}
