#pragma once
/// \file
/// A white bitmap to draw on, read back pixel by pixel.

#include "support/windows/pixels.hpp"
#include "sv0105/application/testapplication.hpp"

namespace svtest {

constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kBlack = 0x000000;
constexpr COLORREF kYellow = 0x00FFFF;
constexpr COLORREF kRed = 0x0000FF;
constexpr COLORREF kGreen = 0x00FF00;
constexpr COLORREF kBlue = 0xFF0000;

class Page {
public:
  explicit Page(SV::Size const & size = {40, 30})
      : size_(size), bitmap_(size), context_(CreateCompatibleDC(nullptr)),
        former_(SelectObject(context_, bitmap_.GethBitmap())) {
    wipe();
  }
  Page(Page const &) = delete;
  Page & operator=(Page const &) = delete;
  ~Page() {
    SelectObject(context_, former_);
    DeleteDC(context_);
  }

  void wipe() { PatBlt(context_, 0, 0, size_.width, size_.height, WHITENESS); }

  HDC context() const { return context_; }
  COLORREF pixel(int x, int y) const { return GetPixel(context_, x, y); }
  support::Pixels pixels() const { return support::readPixels(context_, {0, 0, size_.width, size_.height}); }

  /// The number of pixels that are not white.
  std::size_t drawn() const {
    return static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height) - pixels().count(kWhite);
  }

private:
  SV::Size size_;
  SV::Bitmap bitmap_;
  HDC context_;
  HGDIOBJ former_;
};

/// A page and a device on it.
class DrawingTest : public testing::Test {
protected:
  COLORREF pixel(int x, int y) const { return page.pixel(x, y); }
  std::size_t drawn() const { return page.drawn(); }
  HDC context() const { return page.context(); }

  /// Fills in that colour without an edge.
  static void fillIn(SV::OutputDevice & device, SV::Color const & color, SV::Rectangle const & area) {
    device.ChangePen(SV::Pen());
    device.ChangeFillInBrush(SV::Brush(color));
    device.DrawRect(area);
  }

  Page page;
  SV::OutputDevice device{page.context()};
};

/// The colour of a pixel of a bitmap.
inline COLORREF pixelOf(SV::Bitmap const & bitmap, int x, int y) {
  HDC const context = CreateCompatibleDC(nullptr);
  HGDIOBJ const former = SelectObject(context, bitmap.GethBitmap());
  COLORREF const color = GetPixel(context, x, y);
  SelectObject(context, former);
  DeleteDC(context);
  return color;
}

/// A bitmap of equal squares of one pixel: red at the top left, then green, blue and white, line by line over and over.
inline SV::Bitmap squares(SV::Size const & size) {
  constexpr COLORREF kColors[] = {kRed, kGreen, kBlue, kWhite};
  SV::Bitmap const bitmap(size);
  HDC const context = CreateCompatibleDC(nullptr);
  HGDIOBJ const former = SelectObject(context, bitmap.GethBitmap());
  for (int y = 0; y < size.height; ++y)
    for (int x = 0; x < size.width; ++x)
      SetPixelV(context, x, y, kColors[(y * size.width + x) % 4]);
  SelectObject(context, former);
  DeleteDC(context);
  return bitmap;
}

} // namespace svtest
