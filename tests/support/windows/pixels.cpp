#include "support/windows/pixels.hpp"

#include "support/windows/windows.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace support {
namespace {

int channel(Pixel pixel, int shift) { return static_cast<int>(pixel >> shift & 0xFF); }

/// Copies the area into 32-bit rows, the top one first.
std::vector<Pixel> copyOf(HDC device, RECT const & area, int width, int height) {
  BITMAPINFO layout{};
  layout.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void * bits = nullptr;
  HBITMAP const bitmap = CreateDIBSection(nullptr, &layout, DIB_RGB_COLORS, &bits, nullptr, 0);
  HDC const memory = CreateCompatibleDC(device);
  HGDIOBJ const former = SelectObject(memory, bitmap);
  POINT start{area.left, area.top};
  DPtoLP(device, &start, 1);
  BOOL const copied = BitBlt(memory, 0, 0, width, height, device, start.x, start.y, SRCCOPY);
  GdiFlush();
  std::vector<Pixel> pixels;
  auto const * const quads = static_cast<RGBQUAD const *>(bits);
  for (int i = 0; copied && i < width * height; ++i)
    pixels.push_back(static_cast<Pixel>(quads[i].rgbRed | quads[i].rgbGreen << 8 | quads[i].rgbBlue << 16));
  SelectObject(memory, former);
  DeleteDC(memory);
  DeleteObject(bitmap);
  return pixels;
}

} // namespace

Pixel Pixels::at(int x, int y) const {
  bool const inside = x >= 0 && y >= 0 && x < width_ && y < height_;
  return inside ? pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)]
                : 0xFFFFFFFF;
}

std::size_t Pixels::count(Pixel colour) const {
  return static_cast<std::size_t>(std::count(pixels_.begin(), pixels_.end(), colour));
}

std::size_t Pixels::colours() const { return std::set<Pixel>(pixels_.begin(), pixels_.end()).size(); }

bool alike(Pixel left, Pixel right, int tolerance) {
  for (int shift = 0; shift < 24; shift += 8)
    if (std::abs(channel(left, shift) - channel(right, shift)) > tolerance)
      return false;
  return true;
}

Pixels readPixels(HDC device, RECT const & area) {
  int const width = area.right - area.left;
  int const height = area.bottom - area.top;
  if (width <= 0 || height <= 0)
    return {0, 0, {}};
  std::vector<Pixel> pixels = copyOf(device, area, width, height);
  return pixels.empty() ? Pixels(0, 0, {}) : Pixels(width, height, std::move(pixels));
}

Pixels readWindow(HWND window) {
  SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  UpdateWindow(window);
  pause(0.2); // the window's own process draws it
  HDC const screen = GetDC(nullptr);
  Pixels pixels = readPixels(screen, clientRectangle(window));
  ReleaseDC(nullptr, screen);
  SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  return pixels;
}

} // namespace support
