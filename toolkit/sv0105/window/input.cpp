#include "sv/window.hpp"

#include "window/keys.hpp"

#include <utility>

namespace SV {
namespace {

/// A message of a button of the mouse.
struct ButtonMessage {
  unsigned message;
  unsigned short button;
  unsigned short clicks; ///< 0: the button went up
};

constexpr ButtonMessage kButtonMessages[] = {
    {WM_LBUTTONDOWN, MOUSE_LEFT, 1},   {WM_LBUTTONDBLCLK, MOUSE_LEFT, 2},   {WM_LBUTTONUP, MOUSE_LEFT, 0},
    {WM_MBUTTONDOWN, MOUSE_MIDDLE, 1}, {WM_MBUTTONDBLCLK, MOUSE_MIDDLE, 2}, {WM_MBUTTONUP, MOUSE_MIDDLE, 0},
    {WM_RBUTTONDOWN, MOUSE_RIGHT, 1},  {WM_RBUTTONDBLCLK, MOUSE_RIGHT, 2},  {WM_RBUTTONUP, MOUSE_RIGHT, 0},
};

unsigned short heldButtons(unsigned long long wParam) {
  int const held = ((wParam & MK_LBUTTON) ? MOUSE_LEFT : 0) | ((wParam & MK_MBUTTON) ? MOUSE_MIDDLE : 0) |
                   ((wParam & MK_RBUTTON) ? MOUSE_RIGHT : 0);
  return static_cast<unsigned short>(held);
}

/// Both coordinates of a message are signed: the mouse may be left of the screen, or of the window.
POINT pointOf(long long lParam) { return {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))}; }

MouseEvent mouseEvent(unsigned long long wParam, POINT const & point) {
  MouseEvent event;
  event.position = {point.x, point.y};
  event.held = heldButtons(wParam);
  event.modifiers = detail::heldModifiers();
  return event;
}

ButtonMessage const * buttonMessage(unsigned message) {
  for (ButtonMessage const & row : kButtonMessages)
    if (row.message == message)
      return &row;
  return nullptr;
}

KeyEvent keyEvent(unsigned long long wParam, long long lParam) {
  constexpr long long wasDown = 1LL << 30;
  KeyCode const code = detail::codeOfKey(wParam);
  KeyEvent event;
  event.code = code != 0 ? static_cast<KeyCode>(code | detail::heldModifiers()) : code;
  event.repeated = (lParam & wasDown) != 0;
  return event;
}

} // namespace

void Window::MouseMove(MouseEvent const &) {}

void Window::MouseButtonDown(MouseEvent const &) {}

void Window::MouseButtonUp(MouseEvent const &) {}

bool Window::MouseWheel(MouseEvent const &) { return false; }

void Window::CaptureLost() {}

bool Window::KeyInput(KeyEvent const &) { return false; }

bool Window::CharInput(char) { return false; }

void Window::GotFocus() {}

void Window::LostFocus() {}

void Window::CaptureMouse() {
  if (!hwnd_)
    return;
  SetCapture(hwnd_);
  mouseCaptured_ = GetCapture() == hwnd_;
}

void Window::ReleaseMouse() {
  if (std::exchange(mouseCaptured_, false))
    ReleaseCapture();
}

/// Has the handlers called. True: the message has been dealt with.
bool Window::handleMouse(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == WM_MOUSEMOVE) {
    MouseMove(mouseEvent(wParam, pointOf(lParam)));
  } else if (message == WM_MOUSEWHEEL) {
    POINT point = pointOf(lParam); // of the screen, other than in all else
    ScreenToClient(hwnd_, &point);
    MouseEvent event = mouseEvent(LOWORD(wParam), point);
    event.notches = static_cast<double>(static_cast<short>(HIWORD(wParam))) / WHEEL_DELTA;
    return MouseWheel(event);
  } else if (ButtonMessage const * const row = buttonMessage(message)) {
    MouseEvent event = mouseEvent(wParam, pointOf(lParam));
    event.button = row->button;
    event.clicks = row->clicks;
    row->clicks == 0 ? MouseButtonUp(event) : MouseButtonDown(event);
  }
  return false;
}

bool Window::handleInput(unsigned message, unsigned long long wParam, long long lParam) {
  switch (message) {
  case WM_KEYDOWN:
  case WM_SYSKEYDOWN: return KeyInput(keyEvent(wParam, lParam));
  case WM_CHAR: return CharInput(static_cast<char>(wParam));
  case WM_CAPTURECHANGED:
    // It also comes when the window that has the mouse captures it once more.
    if (reinterpret_cast<HWND>(lParam) != hwnd_ && std::exchange(mouseCaptured_, false))
      CaptureLost();
    return false;
  default: return message >= WM_MOUSEFIRST && message <= WM_MOUSELAST && handleMouse(message, wParam, lParam);
  }
}

} // namespace SV
