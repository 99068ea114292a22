#include "sv/window.hpp"

#include "sv/application.hpp"
#include "tools/winapi.hpp"
#include "window/handlemap.hpp"

#include <utility>

namespace SV {

void Window::SetEnabled(bool enabled) {
  if (hwnd_)
    EnableWindow(hwnd_, enabled);
}

bool Window::IsEnabled() const { return hwnd_ && IsWindowEnabled(hwnd_); }

void Window::ToTop() {
  HWND const top = hwnd_ ? GetAncestor(hwnd_, GA_ROOT) : nullptr;
  if (!top || !IsWindowVisible(top))
    return;
  BringWindowToTop(top);
  SetForegroundWindow(top);
}

void Window::GrabFocus() {
  if (hwnd_)
    SetFocus(hwnd_);
}

Brush Window::ChangeBackgroundBrush(Brush const & brush) {
  Brush const former = std::exchange(background_, Brush(brush));
  Invalidate();
  return former;
}

bool Window::fillBackground(HDC device) const {
  RECT area;
  if (background_.IsNone() || !GetClientRect(hwnd_, &area))
    return false;
  // A brush that belongs to the device: it follows the system's colours and is never freed.
  SetDCBrushColor(device, background_.GetColor().GetRGB());
  FillRect(device, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  return true;
}

Point Window::OutputToScreenPixel(Point const & point) const {
  POINT onScreen = {point.x, point.y};
  if (hwnd_)
    ClientToScreen(hwnd_, &onScreen);
  return {onScreen.x, onScreen.y};
}

Point Window::ScreenToOutputPixel(Point const & point) const {
  POINT inside = {point.x, point.y};
  if (hwnd_)
    ScreenToClient(hwnd_, &inside);
  return {inside.x, inside.y};
}

Window * Window::FindAt(Point const & onScreen) {
  // The system passes over a disabled child by itself, but not over a disabled window of the desktop.
  for (HWND each = WindowFromPoint({onScreen.x, onScreen.y}); each; each = GetAncestor(each, GA_PARENT))
    if (Window * const window = detail::windowOf(each))
      return IsWindowEnabled(each) ? window : nullptr;
  return nullptr;
}

unsigned long Window::ChangeHelpId(unsigned long id) { return std::exchange(helpId_, id); }

} // namespace SV
