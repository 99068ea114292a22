#pragma once
/// \file
/// Image: a picture to be drawn.

#include "sv/bitmap.hpp"
#include "sv/color.hpp"
#include "sv/export.hpp"

namespace SV {

/// Which pixels of an image are left out when it is drawn.
enum ImageMask : unsigned short {
  IMAGE_MASK_NONE = 0,  ///< none
  IMAGE_MASK_COLOR = 1, ///< those of exactly the mask colour
  /// Each as far as its fourth channel says, in a bitmap of 32 bits whose colours are multiplied by it; so are pictures of
  /// an ImagePool that have such a channel.
  IMAGE_MASK_ALPHA = 2
};

/// How Rescale chooses a pixel.
enum ImageFilter : unsigned short {
  IMAGE_FILTER_NEAREST = 0 ///< the pixel that the middle of the new one lies in
};

/// A picture as products hand it on. Copies share the pixels; a change of one leaves the others as they are.
///
/// \code
///   SV::Image image(SV::ResId(10), SV::IMAGE_MASK_COLOR, SV::COL_WHITE);
///   image.Rescale({32, 32});
///   device.DrawImage({4, 4}, image);
/// \endcode
class SV_API Image {
public:
  /// The empty image, of size 0 by 0.
  Image();

  /// Shares the pixels of the bitmap.
  /// \param color  of the mask, for IMAGE_MASK_COLOR
  explicit Image(Bitmap const & bitmap, ImageMask mask = IMAGE_MASK_NONE, Color const & color = Color());

  /// From a bitmap resource; empty when no manager has it.
  explicit Image(ResId const & id, ImageMask mask = IMAGE_MASK_NONE, Color const & color = Color());

  bool IsEmpty() const { return bitmap_.IsEmpty(); } ///< of size 0 by 0
  Size GetSizePixel() const { return bitmap_.GetSizePixel(); }
  Bitmap const & GetBitmap() const { return bitmap_; }
  ImageMask GetMaskMode() const { return mask_; }
  Color const & GetMaskColor() const { return color_; }

  /// Gives it this size, a side below 1 the empty image. False for an empty image, which stays so, and when the system
  /// refuses the new bitmap, as in Bitmap(Size); the image is then as it was.
  bool Rescale(Size const & size, ImageFilter filter = IMAGE_FILTER_NEAREST);

  /// Keeps the part that lies in the rectangle, which may reach beyond the image; without any it is empty. False as for
  /// Rescale.
  bool Crop(Rectangle const & part);

private:
  Bitmap bitmap_;
  ImageMask mask_ = IMAGE_MASK_NONE;
  Color color_;
};

} // namespace SV
