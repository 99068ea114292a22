#include "sv/image.hpp"

#include "drawing/bitmappixels.hpp"

namespace SV {

namespace {

/// The place in the old row or column that the middle of the new pixel lies in.
std::size_t nearest(std::size_t place, std::size_t oldSide, std::size_t newSide) {
  return (2 * place + 1) * oldSide / (2 * newSide);
}

std::size_t unsignedOf(long side) { return static_cast<std::size_t>(side); }

} // namespace

Image::Image() = default;

Image::Image(Bitmap const & bitmap, ImageMask mask, Color const & color)
    : bitmap_(bitmap), mask_(mask), color_(color) {}

Image::Image(ResId const & id, ImageMask mask, Color const & color) : bitmap_(id), mask_(mask), color_(color) {}

bool Image::Rescale(Size const & size, ImageFilter) {
  Size const from = GetSizePixel();
  if (IsEmpty() || size == from)
    return !IsEmpty();
  if (size.width < 1 || size.height < 1) {
    bitmap_ = Bitmap();
    return true;
  }
  detail::BitmapPixels target(size);
  detail::BitmapPixels const source = detail::pixelsOf(bitmap_);
  if (!target || !source)
    return false;
  std::vector<std::size_t> columns;
  for (std::size_t x = 0; x < unsignedOf(size.width); ++x)
    columns.push_back(nearest(x, unsignedOf(from.width), unsignedOf(size.width)));
  for (std::size_t y = 0; y < unsignedOf(size.height); ++y) {
    std::uint32_t const * const line = source.line(nearest(y, unsignedOf(from.height), unsignedOf(size.height)));
    std::uint32_t * next = target.line(y);
    for (std::size_t const column : columns)
      *next++ = line[column];
  }
  bitmap_ = target.bitmap();
  return true;
}

bool Image::Crop(Rectangle const & part) {
  if (IsEmpty())
    return false;
  Rectangle const whole({0, 0}, GetSizePixel());
  Rectangle const kept = whole.GetIntersection(part);
  if (kept == whole)
    return true;
  if (kept.IsEmpty()) {
    bitmap_ = Bitmap();
    return true;
  }
  detail::BitmapPixels target(kept.GetSize());
  detail::BitmapPixels const source = detail::pixelsOf(bitmap_);
  if (!target || !source)
    return false;
  for (std::size_t y = 0; y < unsignedOf(kept.GetHeight()); ++y) {
    std::uint32_t const * const line = source.line(y + unsignedOf(kept.Top())) + kept.Left();
    std::copy(line, line + kept.GetWidth(), target.line(y));
  }
  bitmap_ = target.bitmap();
  return true;
}

} // namespace SV
