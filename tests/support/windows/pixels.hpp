#pragma once
/// \file
/// What is drawn, read back pixel by pixel.
///
///     support::Pixels const picture = support::readPixels(device, {0, 0, 16, 16});
///     EXPECT_EQ(picture.at(3, 3), support::Pixel(0x0000FF));  // red: 0x00BBGGRR
///
/// A device of this process is read exactly. A window of another process is read from the screen, where others may
/// cover it: readWindow raises it first, and such a test holds the ctest resource lock "desktop". Blended pixels differ
/// by 1 between machines.

#include <cstddef>
#include <vector>

struct HDC__;
struct HWND__;
struct tagRECT;

namespace support {

/// 0x00BBGGRR.
using Pixel = unsigned long;

class Pixels {
public:
  Pixels(int width, int height, std::vector<Pixel> pixels)
      : width_(width), height_(height), pixels_(std::move(pixels)) {}

  int width() const { return width_; }
  int height() const { return height_; }
  /// Outside the picture: 0xFFFFFFFF, which is no pixel's value.
  Pixel at(int x, int y) const;
  /// How many pixels have that colour.
  std::size_t count(Pixel colour) const;
  /// How many colours there are; 1 means that nothing was drawn.
  std::size_t colours() const;
  bool operator==(Pixels const &) const = default;

private:
  int width_;
  int height_;
  std::vector<Pixel> pixels_;
};

/// Whether each channel differs by at most that much.
bool alike(Pixel left, Pixel right, int tolerance = 1);

/// The pixels of a device in its device coordinates. An empty or unreadable area gives no pixels.
Pixels readPixels(HDC__ * device, tagRECT const & area);
/// The client area of a visible window of any process, as the screen shows it.
Pixels readWindow(HWND__ * window);

} // namespace support
