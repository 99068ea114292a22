#pragma once
/// \file
/// The pixels of a bitmap in memory. Internal.

#include "sv/bitmap.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace SV::detail {

/// A bitmap of 32 bits a pixel whose pixels can be read and written as 0xAARRGGBB, the top line first.
class BitmapPixels {
public:
  /// A black one. When the system refuses it, Application::Exception is called as in Bitmap(Size); false afterwards.
  explicit BitmapPixels(Size const & size);

  explicit operator bool() const { return pixels_ != nullptr; }

  /// Lines lie in memory with the bottom one first.
  std::uint32_t * line(std::size_t y) { return pixels_ + (lines_ - 1 - y) * width_; }
  std::uint32_t const * line(std::size_t y) const { return pixels_ + (lines_ - 1 - y) * width_; }
  Bitmap const & bitmap() const { return bitmap_; }

private:
  Bitmap bitmap_;
  std::uint32_t * pixels_ = nullptr;
  std::size_t width_;
  std::size_t lines_ = 0;
};

/// A copy of the bitmap, whatever its depth; the fourth channel of one that has none is 0. False when the system refuses.
BitmapPixels pixelsOf(Bitmap const & bitmap);

} // namespace SV::detail
