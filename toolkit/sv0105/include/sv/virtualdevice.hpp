#pragma once
/// \file
/// VirtualDevice: drawing in memory.

#include "sv/bitmap.hpp"
#include "sv/export.hpp"
#include "sv/outputdevice.hpp"

namespace SV {

/// A device of its own pixels, on no screen. It begins without any pixel, of size 0 by 0.
///
/// \code
///   SV::VirtualDevice buffer;
///   buffer.SetOutputSizePixel({16, 16});
///   buffer.DrawLine({0, 0}, {15, 15});
///   SV::Bitmap const picture = buffer.GetBitmap({0, 0}, {16, 16});
/// \endcode
class SV_API VirtualDevice : public OutputDevice {
public:
  /// \param depth  bits a pixel: 1 for black and white, 4 for the 16 fixed colours, 8 for these and 240 spread over all
  ///               others, 16, 24 or 32; any other number counts as 32
  explicit VirtualDevice(unsigned short depth = 32);
  ~VirtualDevice() override;

  unsigned short GetDepth() const { return depth_; }

  Size GetOutputSizePixel() const override { return size_; }

  /// Gives it this size, a side below 1 none at all.
  /// \param erase  true: all of it is background then; false: what was there stays in the upper left corner, as far as it
  ///               fits, and only the rest is background. Without a background brush it is black
  /// \return false when the system refuses; Application::Exception has then been called as in Bitmap(Size), and the device
  ///         is as it was
  bool SetOutputSizePixel(Size const & size, bool erase = true);

  /// A copy of a part in 32 bits a pixel, with a fourth channel if the device has one; what lies outside of the device is
  /// black. Position and size are in the unit of the map mode. Empty for an empty size, and when the system refuses as in
  /// Bitmap(Size).
  Bitmap GetBitmap(Point const & position, Size const & size) const;

private:
  HBITMAP makePixels(Size const & size) const;
  HBITMAP exchangePixels(HBITMAP pixels);
  void eraseAll();
  void copyBack(HBITMAP pixels, Size const & size);

  unsigned short depth_;
  Size size_;
  HDC memory_;
  HBITMAP pixels_ = nullptr;
  HBITMAP former_ = nullptr;
};

} // namespace SV
