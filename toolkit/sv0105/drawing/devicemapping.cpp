#include "sv/outputdevice.hpp"

#include "application/toolkit.hpp"
#include "controls/dialogunits.hpp"
#include "handles/handle.hpp"

#include <algorithm>
#include <climits>

namespace SV {

namespace {

/// Pixels are units times \p pixels divided by \p units.
struct Ratio {
  long pixels;
  long units;
};

struct Scale {
  Ratio x;
  Ratio y;

  Scale inverse() const { return {{x.units, x.pixels}, {y.units, y.pixels}}; }
};

Scale scaleOfResolution(HDC context) {
  constexpr long kPerInch = 254;
  return {{GetDeviceCaps(context, LOGPIXELSX), kPerInch}, {GetDeviceCaps(context, LOGPIXELSY), kPerInch}};
}

Scale scaleOfDialogs() {
  Size & character = detail::toolkit().dialogCharacter;
  if (character == Size()) {
    HFONT const font = Application::GetAppFont().CreateSystemFont();
    // As many units as a character has are as many pixels as it has.
    character = detail::pixelsOfUnits(font, {4, 8});
    DeleteObject(font);
  }
  return {{character.width, 4}, {character.height, 8}};
}

Scale scaleOf(OutputDevice const & device, MapMode const & mode) {
  if (mode.GetMapUnit() == MAP_APPFONT)
    return scaleOfDialogs();
  DrawingScope const scope(device);
  if (device.GethDC())
    return scaleOfResolution(device.GethDC());
  handles::ScreenDevice const screen(GetDC(nullptr));
  return scaleOfResolution(screen.get());
}

bool countsPixels(MapMode const & mode) { return mode.GetMapUnit() != MAP_10TH_MM && mode.GetMapUnit() != MAP_APPFONT; }

long scaled(long value, Ratio const & ratio) {
  if (ratio.units == 0)
    return value;
  long long const doubled = 2LL * value * ratio.pixels;
  long long const half = doubled < 0 ? -ratio.units : ratio.units;
  return static_cast<long>(std::clamp<long long>((doubled + half) / (2LL * ratio.units), LONG_MIN, LONG_MAX));
}

Point scaled(Point const & point, Scale const & scale) { return {scaled(point.x, scale.x), scaled(point.y, scale.y)}; }

Size scaled(Size const & size, Scale const & scale) {
  return {scaled(size.width, scale.x), scaled(size.height, scale.y)};
}

Rectangle scaled(Rectangle const & rectangle, Scale const & scale) {
  RECT const edges = rectangle.ToSystem();
  return Rectangle(RECT{scaled(edges.left, scale.x), scaled(edges.top, scale.y), scaled(edges.right, scale.x),
                        scaled(edges.bottom, scale.y)});
}

template <class T> T toPixel(OutputDevice const & device, T const & value, MapMode const & mode) {
  return countsPixels(mode) ? value : scaled(value, scaleOf(device, mode));
}

template <class T> T toLogic(OutputDevice const & device, T const & value, MapMode const & mode) {
  return countsPixels(mode) ? value : scaled(value, scaleOf(device, mode).inverse());
}

} // namespace

Point OutputDevice::LogicToPixel(Point const & point) const { return toPixel(*this, point, GetMapMode()); }

Size OutputDevice::LogicToPixel(Size const & size) const { return toPixel(*this, size, GetMapMode()); }

Rectangle OutputDevice::LogicToPixel(Rectangle const & rectangle) const {
  return toPixel(*this, rectangle, GetMapMode());
}

Point OutputDevice::LogicToPixel(Point const & point, MapMode const & mode) const {
  return toPixel(*this, point, mode);
}

Size OutputDevice::LogicToPixel(Size const & size, MapMode const & mode) const { return toPixel(*this, size, mode); }

Rectangle OutputDevice::LogicToPixel(Rectangle const & rectangle, MapMode const & mode) const {
  return toPixel(*this, rectangle, mode);
}

Point OutputDevice::PixelToLogic(Point const & point) const { return toLogic(*this, point, GetMapMode()); }

Size OutputDevice::PixelToLogic(Size const & size) const { return toLogic(*this, size, GetMapMode()); }

Rectangle OutputDevice::PixelToLogic(Rectangle const & rectangle) const {
  return toLogic(*this, rectangle, GetMapMode());
}

Point OutputDevice::PixelToLogic(Point const & point, MapMode const & mode) const {
  return toLogic(*this, point, mode);
}

Size OutputDevice::PixelToLogic(Size const & size, MapMode const & mode) const { return toLogic(*this, size, mode); }

Rectangle OutputDevice::PixelToLogic(Rectangle const & rectangle, MapMode const & mode) const {
  return toLogic(*this, rectangle, mode);
}

} // namespace SV
