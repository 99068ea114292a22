#include "controls/dialogunits.hpp"
#include "handles/handle.hpp"
#include "sv/application.hpp"
#include "sv/window.hpp"

namespace SV {
namespace {

Size pixelsOfTenthMillimetres(Size const & size) {
  constexpr int kPerInch = 254;
  handles::ScreenDevice const screen(GetDC(nullptr));
  return {MulDiv(size.width, GetDeviceCaps(screen.get(), LOGPIXELSX), kPerInch),
          MulDiv(size.height, GetDeviceCaps(screen.get(), LOGPIXELSY), kPerInch)};
}

Size pixelsOfAppFont(Size const & size) {
  handles::FontObject const font(Application::GetAppFont().CreateSystemFont());
  return detail::pixelsOfUnits(font.get(), size);
}

} // namespace

Size Window::LogicToPixel(Size const & size, MapMode const & mode) const {
  switch (mode.GetMapUnit()) {
  case MAP_10TH_MM: return pixelsOfTenthMillimetres(size);
  case MAP_APPFONT: return pixelsOfAppFont(size);
  default: return size;
  }
}

Point Window::OutputToScreenPixel(Point const & point) const {
  POINT onScreen = {point.x, point.y};
  if (hwnd_)
    ClientToScreen(hwnd_, &onScreen);
  return {onScreen.x, onScreen.y};
}

} // namespace SV
