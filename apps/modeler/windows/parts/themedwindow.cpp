#include "windows/parts/themedwindow.hpp"

#include "tools/winapi.hpp"
#include "windows/scaling.hpp"

namespace modeler {

void ThemedWindow::watchMouse() {
  TRACKMOUSEEVENT event = {};
  event.cbSize = sizeof event;
  event.dwFlags = TME_LEAVE;
  event.hwndTrack = GethWnd();
  TrackMouseEvent(&event);
}

long long ThemedWindow::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == WM_ERASEBKGND)
    return 1;
  if (message == WM_MOUSELEAVE)
    MouseLeft();
  return Window::HandleMessage(message, wParam, lParam);
}

SV::Font ThemedWindow::font() const {
  SV::Font font = GetFont();
  font.ChangeColor(SV::COL_WINDOWTEXT);
  font.ChangeTransparent(true);
  return font;
}

SV::Size ThemedWindow::textSize(SV::String const & text) const {
  ruler_.ChangeFont(GetFont());
  return ruler_.GetTextSize(text);
}

long ThemedWindow::lineHeight() const { return textSize("Ag").height + scaledDown(4); }

} // namespace modeler
