#pragma once
/// \file
/// Image: a picture to be drawn.

#include "sv/bitmap.hpp"
#include "sv/export.hpp"

namespace SV {

/// A picture as products hand it on. Copies share the pixels.
class SV_API Image {
public:
  /// The empty image, of size 0 by 0.
  Image();

  /// Shares the pixels of the bitmap.
  explicit Image(Bitmap const & bitmap);

  /// From a bitmap resource; empty when no manager has it.
  explicit Image(ResId const & id);

  bool IsEmpty() const { return bitmap_.IsEmpty(); } ///< of size 0 by 0
  Size GetSizePixel() const { return bitmap_.GetSizePixel(); }
  Bitmap const & GetBitmap() const { return bitmap_; }

private:
  Bitmap bitmap_;
};

} // namespace SV
