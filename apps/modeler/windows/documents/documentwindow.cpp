#include "windows/documents/documentwindow.hpp"

#include "tools/winapi.hpp"
#include "windows/documents/windowlist.hpp"

namespace modeler {
namespace {

constexpr LONG kBars = WS_HSCROLL | WS_VSCROLL;

RECT placeIn(HWND client, HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  MapWindowPoints(nullptr, client, reinterpret_cast<POINT *>(&place), 2);
  return place;
}

/// The bars that are needed to see all of the windows. A maximised one covers the others.
LONG neededBars(HWND client) {
  RECT area = {};
  GetClientRect(client, &area);
  LONG bars = 0;
  for (HWND const window : openWindows(client)) {
    if (IsZoomed(window))
      return 0;
    RECT const place = placeIn(client, window);
    bars |= place.left < area.left || place.right > area.right ? WS_HSCROLL : 0;
    bars |= place.top < area.top || place.bottom > area.bottom ? WS_VSCROLL : 0;
  }
  return bars;
}

/// The client area works out by itself where its bars stand and when they go. But some systems do so only when its size changes, and
/// do not look for bars that have gone.
void fitBars(HWND client) {
  LONG const needed = neededBars(client);
  LONG const shown = GetWindowLongA(client, GWL_STYLE) & kBars;
  if (needed == 0 && shown == 0)
    return;
  if ((needed & ~shown & WS_HSCROLL) != 0)
    ShowScrollBar(client, SB_HORZ, TRUE);
  if ((needed & ~shown & WS_VSCROLL) != 0)
    ShowScrollBar(client, SB_VERT, TRUE);
  RECT area = {};
  GetClientRect(client, &area);
  SendMessageA(client, WM_SIZE, SIZE_RESTORED, MAKELPARAM(area.right, area.bottom));
}

} // namespace

long long DocumentWindow::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  HWND const client = ::GetParent(GethWnd());
  long long const result = MDIChild::HandleMessage(message, wParam, lParam);
  if (message == WM_WINDOWPOSCHANGED)
    fitBars(client);
  return result;
}

void fitClientBars(SV::MDIFrame & frame) { fitBars(frame.GetClient().GethWnd()); }

} // namespace modeler
