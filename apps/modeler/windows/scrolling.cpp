#include "windows/scrolling.hpp"

#include "tools/winapi.hpp"

#include <algorithm>

namespace modeler {
namespace {

constexpr long kLinesPerNotch = 3;

/// A key, and what it does to the bar of its direction.
struct KeyCommand {
  unsigned long long key;
  bool isDown;
  unsigned command;
};
constexpr KeyCommand kKeys[] = {{VK_UP, true, SB_LINEUP},    {VK_DOWN, true, SB_LINEDOWN},
                                {VK_LEFT, false, SB_LINEUP}, {VK_RIGHT, false, SB_LINEDOWN},
                                {VK_PRIOR, true, SB_PAGEUP}, {VK_NEXT, true, SB_PAGEDOWN},
                                {VK_HOME, false, SB_TOP},    {VK_END, false, SB_BOTTOM}};

void setBar(HWND window, int bar, Scroll const & scroll) {
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = std::max(scroll.whole - 1, 0L);
  info.nPage = static_cast<UINT>(scroll.page);
  info.nPos = scroll.position;
  SetScrollInfo(window, bar, &info, TRUE);
}

long trackPosition(HWND window, int bar) {
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS; // the message itself carries 16 bits only
  return GetScrollInfo(window, bar, &info) ? info.nTrackPos : 0;
}

} // namespace

long clampedPosition(Scroll const & scroll, long position) {
  return std::clamp(position, 0L, std::max(scroll.whole - scroll.page, 0L));
}

long scrolledPosition(Scroll const & scroll, unsigned command, long track) {
  long const page = std::max(scroll.page - scroll.line, scroll.line);
  switch (command) {
  case SB_LINEUP: return clampedPosition(scroll, scroll.position - scroll.line);
  case SB_LINEDOWN: return clampedPosition(scroll, scroll.position + scroll.line);
  case SB_PAGEUP: return clampedPosition(scroll, scroll.position - page);
  case SB_PAGEDOWN: return clampedPosition(scroll, scroll.position + page);
  case SB_TOP: return 0;
  case SB_BOTTOM: return clampedPosition(scroll, scroll.whole);
  case SB_THUMBPOSITION:
  case SB_THUMBTRACK: return clampedPosition(scroll, track);
  default: return scroll.position;
  }
}

long revealedPosition(Scroll const & scroll, long start, long length) {
  long const last = std::max(start + length - scroll.page, 0L);
  return clampedPosition(scroll, std::min(std::max(scroll.position, last), start));
}

void ScrollBars::SetWhole(HWND window, SV::Size const & whole, long line) {
  across_.whole = whole.width;
  down_.whole = whole.height;
  across_.line = down_.line = std::max(line, 1L);
  Fit(window);
}

void ScrollBars::Fit(HWND window) {
  if (isFitting_) // a bar that comes or goes changes the size once more
    return;
  isFitting_ = true;
  for (int round = 0; round < 3; ++round) { // each bar may call for the other one
    RECT area = {};
    GetClientRect(window, &area);
    if (across_.page == area.right && down_.page == area.bottom && round > 0)
      break;
    across_.page = area.right;
    down_.page = area.bottom;
    across_.position = clampedPosition(across_, across_.position);
    down_.position = clampedPosition(down_, down_.position);
    setBar(window, SB_HORZ, across_);
    setBar(window, SB_VERT, down_);
  }
  isFitting_ = false;
  InvalidateRect(window, nullptr, FALSE);
}

void ScrollBars::Reveal(HWND window, SV::Rectangle const & part) {
  move(window, false, revealedPosition(across_, part.Left(), part.GetWidth()));
  move(window, true, revealedPosition(down_, part.Top(), part.GetHeight()));
}

bool ScrollBars::Handle(HWND window, unsigned message, unsigned long long wParam) {
  switch (message) {
  case WM_HSCROLL:
    move(window, false, scrolledPosition(across_, LOWORD(wParam), trackPosition(window, SB_HORZ)));
    return true;
  case WM_VSCROLL:
    move(window, true, scrolledPosition(down_, LOWORD(wParam), trackPosition(window, SB_VERT)));
    return true;
  case WM_MOUSEWHEEL:
    turnWheel(window, (LOWORD(wParam) & MK_SHIFT) == 0, static_cast<short>(HIWORD(wParam)));
    return true;
  case WM_MOUSEHWHEEL: turnWheel(window, false, -static_cast<short>(HIWORD(wParam))); return true;
  case WM_KEYDOWN: return handleKey(window, wParam);
  default: return false;
  }
}

void ScrollBars::move(HWND window, bool isDown, long position) {
  Scroll & scroll = isDown ? down_ : across_;
  if (scroll.position == position)
    return;
  scroll.position = position;
  setBar(window, isDown ? SB_VERT : SB_HORZ, scroll);
  InvalidateRect(window, nullptr, FALSE);
}

bool ScrollBars::handleKey(HWND window, unsigned long long key) {
  for (KeyCommand const & row : kKeys)
    if (row.key == key) {
      move(window, row.isDown, scrolledPosition(row.isDown ? down_ : across_, row.command, 0));
      return true;
    }
  return false;
}

void ScrollBars::turnWheel(HWND window, bool isDown, int delta) {
  Scroll const & scroll = isDown ? down_ : across_;
  long const way = kLinesPerNotch * scroll.line * delta / WHEEL_DELTA;
  move(window, isDown, clampedPosition(scroll, scroll.position - way));
}

} // namespace modeler
