#include "sv/fixed.hpp"

#include "controls/controlspec.hpp"

#include <utility>

namespace SV {

// Drawn here: the system's way changes the size of the control to that of the icon.
FixedIcon::FixedIcon(Window * parent, WinBits style)
    : Control(detail::controlSpec("STATIC", parent, style, SS_OWNERDRAW)) {}

Icon FixedIcon::ChangeIcon(Icon const & icon) {
  Icon const former = std::exchange(icon_, Icon(icon));
  Invalidate();
  return former;
}

Icon FixedIcon::ChangeIcon(IconStyle style) { return ChangeIcon(Icon(style)); }

bool FixedIcon::Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) {
  if (message != WM_DRAWITEM)
    return Control::Notify(message, wParam, lParam, result);
  auto const & draw = *reinterpret_cast<DRAWITEMSTRUCT const *>(lParam);
  long long brush = 0;
  if (!Control::Notify(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(draw.hDC), reinterpret_cast<LPARAM>(GethWnd()),
                       brush))
    brush = reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_3DFACE));
  FillRect(draw.hDC, &draw.rcItem, reinterpret_cast<HBRUSH>(brush));
  Size const size = GetOutputSizePixel();
  if (!icon_.IsEmpty())
    DrawIconEx(draw.hDC, 0, 0, icon_.GethIcon(), size.width, size.height, 0, nullptr, DI_NORMAL);
  result = TRUE;
  return true;
}

} // namespace SV
