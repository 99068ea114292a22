// Shows a window titled "Painted" whose client area of 60 by 40 pixels is blue with a red square of 10 pixels in its
// corner; ends with 3 when it is closed.

#include "tools/winapi.hpp"

namespace {

void paint(HWND window) {
  PAINTSTRUCT state;
  HDC const device = BeginPaint(window, &state);
  RECT area;
  GetClientRect(window, &area);
  RECT const square{0, 0, 10, 10};
  HBRUSH const blue = CreateSolidBrush(0xFF0000);
  HBRUSH const red = CreateSolidBrush(0x0000FF);
  FillRect(device, &area, blue);
  FillRect(device, &square, red);
  DeleteObject(blue);
  DeleteObject(red);
  EndPaint(window, &state);
}

LRESULT CALLBACK answer(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_PAINT) {
    paint(window);
    return 0;
  }
  if (message == WM_DESTROY)
    PostQuitMessage(3);
  return DefWindowProcA(window, message, first, second);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  WNDCLASSA kind{};
  kind.lpfnWndProc = answer;
  kind.hInstance = instance;
  kind.lpszClassName = "PaintedWindow";
  RegisterClassA(&kind);
  RECT area{100, 100, 160, 140};
  AdjustWindowRect(&area, WS_POPUP | WS_BORDER | WS_SYSMENU, FALSE);
  CreateWindowExA(0, "PaintedWindow", "Painted", WS_POPUP | WS_BORDER | WS_SYSMENU | WS_VISIBLE, area.left, area.top,
                  area.right - area.left, area.bottom - area.top, nullptr, nullptr, instance, nullptr);
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0)
    DispatchMessageA(&message);
  return static_cast<int>(message.wParam);
}
