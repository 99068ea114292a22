// A paint through the buffer that is kept, beside a bitmap that is made for each paint: both begin white, get the same ten
// rectangles and are copied to a bitmap in place of a window. The buffer is as large as all screens, and white all over each time.

#include "adrawcch.hpp"
#include "support/ratio.hpp"
#include "sv/virtualdevice.hpp"
#include "tools/winapi.hpp"

namespace {

constexpr int kRectangles = 10;

/// What stands for the window.
struct Target {
  explicit Target(SV::Size const & size) : width(static_cast<int>(size.width)), height(static_cast<int>(size.height)) {
    device.SetOutputSizePixel(size);
  }

  int width;
  int height;
  SV::VirtualDevice device;
};

void drawInto(HDC device) {
  HGDIOBJ const former = SelectObject(device, GetStockObject(GRAY_BRUSH));
  for (int place = 0; place < kRectangles; ++place)
    Rectangle(device, 10 * place, 5 * place, 10 * place + 50, 5 * place + 30);
  SelectObject(device, former);
}

void paintThroughBuffer(Target & target) {
  HDC const device = KivPaintBuffer::VD().GethDC();
  drawInto(device);
  BitBlt(target.device.GethDC(), 0, 0, target.width, target.height, device, 0, 0, SRCCOPY);
}

void paintThroughNewBitmap(Target & target) {
  HDC const window = target.device.GethDC();
  HDC const device = CreateCompatibleDC(window);
  HBITMAP const bitmap = CreateCompatibleBitmap(window, target.width, target.height);
  HGDIOBJ const former = SelectObject(device, bitmap);
  PatBlt(device, 0, 0, target.width, target.height, WHITENESS);
  drawInto(device);
  BitBlt(window, 0, 0, target.width, target.height, device, 0, 0, SRCCOPY);
  SelectObject(device, former);
  DeleteObject(bitmap);
  DeleteDC(device);
}

bench::Body painting(SV::Size const & size, void (*paint)(Target &)) {
  return [size, paint](benchmark::State & state) {
    Target target(size);
    for (auto _ : state)
      paint(target);
  };
}

bench::Pair const smallWindow{"KivPaintBuffer: a paint of 300 x 200 pixels", bench::shown(),
                              painting({300, 200}, paintThroughBuffer), "CreateCompatibleBitmap for each paint",
                              painting({300, 200}, paintThroughNewBitmap)};

bench::Pair const largeWindow{"KivPaintBuffer: a paint of 1,200 x 900 pixels", bench::shown(),
                              painting({1200, 900}, paintThroughBuffer), "CreateCompatibleBitmap for each paint",
                              painting({1200, 900}, paintThroughNewBitmap)};

} // namespace
