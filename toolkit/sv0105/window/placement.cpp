#include "window/placement.hpp"

#include <algorithm>

namespace SV::detail {
namespace {

RECT freeAreaOf(HMONITOR monitor) {
  MONITORINFO info = {};
  info.cbSize = sizeof info;
  GetMonitorInfoA(monitor, &info);
  return info.rcWork;
}

bool isSeen(HWND window) { return window && IsWindowVisible(window) && !IsIconic(window); }

/// The first coordinate of \p length pixels between \p start and \p end.
long clampedStart(long position, long length, long start, long end) {
  return std::max(std::min(position, end - length), start);
}

} // namespace

Point centredPosition(HWND window, HWND over) {
  RECT own = {};
  RECT area = {};
  HWND const top = over ? GetAncestor(over, GA_ROOT) : nullptr;
  if (!isSeen(top) || !GetWindowRect(top, &area))
    area = freeAreaOf(MonitorFromWindow(top, MONITOR_DEFAULTTOPRIMARY));
  GetWindowRect(window, &own);
  return {area.left + ((area.right - area.left) - (own.right - own.left)) / 2,
          area.top + ((area.bottom - area.top) - (own.bottom - own.top)) / 2};
}

Point insideScreen(Point const & position, Size const & size) {
  RECT const place = {position.x, position.y, position.x + size.width, position.y + size.height};
  RECT const area = freeAreaOf(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST));
  return {clampedStart(position.x, size.width, area.left, area.right),
          clampedStart(position.y, size.height, area.top, area.bottom)};
}

} // namespace SV::detail
