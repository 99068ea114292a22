#include "sv/window.hpp"

#include "sv/application.hpp"
#include "tools/winapi.hpp"

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
  // A brush that belongs to the device: it follows the system's colours and has to be given back to nobody.
  SetDCBrushColor(device, background_.GetColor().GetRGB());
  FillRect(device, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  return true;
}

unsigned long Window::ChangeHelpId(unsigned long id) { return std::exchange(helpId_, id); }

} // namespace SV
