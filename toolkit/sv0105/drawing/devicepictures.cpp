// Drawing of pictures, from bitmaps and other devices, and of gradients.

#include "sv/outputdevice.hpp"

#include "drawing/devicedata.hpp"
#include "drawing/limits.hpp"
#include "drawing/sourcedevice.hpp"
#include "sv/virtualdevice.hpp"

namespace SV {

namespace {

struct Place {
  int x, y, width, height;

  explicit Place(Rectangle const & pixels) {
    RECT const area = detail::systemArea(pixels);
    x = area.left;
    y = area.top;
    width = area.right - area.left;
    height = area.bottom - area.top;
  }

  bool isOf(Size const & size) const { return width == size.width && height == size.height; }
};

void copy(HDC to, Place const & place, HDC from, Point const & start, Size const & size) {
  if (place.isOf(size))
    BitBlt(to, place.x, place.y, place.width, place.height, from, start.x, start.y, SRCCOPY);
  else
    StretchBlt(to, place.x, place.y, place.width, place.height, from, start.x, start.y, size.width, size.height,
               SRCCOPY);
}

/// What can be seen of a place on a device.
Rectangle visiblePart(HDC device, Place const & place) {
  RECT clip = {};
  GetClipBox(device, &clip);
  return Rectangle(clip).GetIntersection(Rectangle({place.x, place.y}, {place.width, place.height}));
}

/// The system makes a bitmap as large as the whole place, and draws nothing when it cannot: one of what is seen will do.
void copyTransparentPart(HDC to, Place const & place, HDC from, Size const & size, COLORREF transparent) {
  Rectangle const part = visiblePart(to, place);
  VirtualDevice stretched;
  if (part.IsEmpty() || !stretched.SetOutputSizePixel(part.GetSize(), false))
    return;
  HDC const seen = stretched.GethDC();
  StretchBlt(seen, place.x - part.Left(), place.y - part.Top(), place.width, place.height, from, 0, 0, size.width,
             size.height, SRCCOPY);
  TransparentBlt(to, part.Left(), part.Top(), part.GetWidth(), part.GetHeight(), seen, 0, 0, part.GetWidth(),
                 part.GetHeight(), transparent);
}

void copyTransparent(HDC to, Place const & place, HDC from, Size const & size, COLORREF transparent) {
  constexpr long kLargeSide = 4096;
  if (place.width > kLargeSide || place.height > kLargeSide)
    copyTransparentPart(to, place, from, size, transparent);
  else
    TransparentBlt(to, place.x, place.y, place.width, place.height, from, 0, 0, size.width, size.height, transparent);
}

void blend(HDC to, Place const & place, HDC from, Size const & size) {
  BLENDFUNCTION const byPixel = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  AlphaBlend(to, place.x, place.y, place.width, place.height, from, 0, 0, size.width, size.height, byPixel);
}

TRIVERTEX vertex(LONG x, LONG y, Color const & color) {
  return {x, y, color.GetRed(), color.GetGreen(), color.GetBlue(), 0};
}

} // namespace

Rectangle OutputDevice::placeOf(Point const & position, Bitmap const & bitmap) const {
  return {LogicToPixel(position), bitmap.GetSizePixel()};
}

void OutputDevice::drawPicture(Rectangle const & pixels, Bitmap const & bitmap, ImageMask mask, Color const & color) {
  DrawingScope const scope(*this);
  if (!context_ || pixels.IsEmpty() || bitmap.IsEmpty())
    return;
  detail::SourceDevice const source(bitmap.GethBitmap());
  Place const place(pixels);
  Size const size = bitmap.GetSizePixel();
  switch (mask) {
  case IMAGE_MASK_COLOR: copyTransparent(context_, place, source.context(), size, color.GetRGB()); break;
  case IMAGE_MASK_ALPHA: blend(context_, place, source.context(), size); break;
  default: copy(context_, place, source.context(), {}, size); break;
  }
}

void OutputDevice::DrawBitmap(Point const & position, Bitmap const & bitmap) {
  drawPicture(placeOf(position, bitmap), bitmap, IMAGE_MASK_NONE, Color());
}

void OutputDevice::DrawBitmap(Rectangle const & area, Bitmap const & bitmap) {
  drawPicture(LogicToPixel(area), bitmap, IMAGE_MASK_NONE, Color());
}

void OutputDevice::DrawTransparentBitmap(Point const & position, Bitmap const & bitmap, Color const & transparent) {
  drawPicture(placeOf(position, bitmap), bitmap, IMAGE_MASK_COLOR, transparent);
}

void OutputDevice::DrawTransparentBitmap(Rectangle const & area, Bitmap const & bitmap, Color const & transparent) {
  drawPicture(LogicToPixel(area), bitmap, IMAGE_MASK_COLOR, transparent);
}

void OutputDevice::DrawImage(Point const & position, Image const & image) {
  drawPicture(placeOf(position, image.GetBitmap()), image.GetBitmap(), image.GetMaskMode(), image.GetMaskColor());
}

void OutputDevice::DrawImage(Rectangle const & area, Image const & image) {
  drawPicture(LogicToPixel(area), image.GetBitmap(), image.GetMaskMode(), image.GetMaskColor());
}

void OutputDevice::DrawOutDev(Point const & to, Size const & toSize, Point const & from, Size const & fromSize,
                              OutputDevice const & source) {
  DrawingScope const scope(*this);
  DrawingScope const sourceScope(source);
  Rectangle const target = LogicToPixel(Rectangle(to, toSize));
  Rectangle const origin = source.LogicToPixel(Rectangle(from, fromSize));
  if (!context_ || !source.context_ || target.IsEmpty() || origin.IsEmpty())
    return;
  Place const place(origin);
  copy(context_, Place(target), source.context_, {place.x, place.y}, {place.width, place.height});
}

void OutputDevice::GradientFill(bool vertical, Rectangle const & area, Color const & first, Color const & last) {
  DrawingScope const scope(*this);
  Rectangle const pixels = LogicToPixel(area);
  if (!context_ || pixels.IsEmpty())
    return;
  RECT const edges = detail::systemArea(pixels);
  TRIVERTEX corners[] = {vertex(edges.left, edges.top, first), vertex(edges.right, edges.bottom, last)};
  GRADIENT_RECT whole = {0, 1};
  ::GradientFill(context_, corners, 2, &whole, 1, vertical ? GRADIENT_FILL_RECT_V : GRADIENT_FILL_RECT_H);
}

Color OutputDevice::GetSolidColor(Color const & color) const {
  DrawingScope const scope(*this);
  COLORREF const shown = context_ ? GetNearestColor(context_, color.GetRGB()) : CLR_INVALID;
  if (shown == CLR_INVALID)
    return color;
  Color solid;
  solid.SetRGB(shown);
  return solid;
}

} // namespace SV
