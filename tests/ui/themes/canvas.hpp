#pragma once
/// \file
/// A picture with a pattern, on which themes and their model draw.

#include "sv/window.hpp"
#include "tools/winapi.hpp"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <ostream>
#include <vector>

namespace themetest {

/// 0x00RRGGBB, as it lies in memory.
using Quad = std::uint32_t;

inline int red(Quad quad) { return static_cast<int>(quad >> 16 & 0xFF); }
inline int green(Quad quad) { return static_cast<int>(quad >> 8 & 0xFF); }
inline int blue(Quad quad) { return static_cast<int>(quad & 0xFF); }

inline Quad quadOf(int r, int g, int b) { return static_cast<Quad>(r << 16 | g << 8 | b); }
inline Quad quadOf(COLORREF color) { return quadOf(GetRValue(color), GetGValue(color), GetBValue(color)); }

inline bool alike(Quad a, Quad b) {
  return std::abs(red(a) - red(b)) <= 1 && std::abs(green(a) - green(b)) <= 1 && std::abs(blue(a) - blue(b)) <= 1;
}

class Canvas {
public:
  explicit Canvas(int width = 330, int height = 330) : width_(width), height_(height) {
    BITMAPINFO layout{};
    layout.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void * bits = nullptr;
    bitmap_ = CreateDIBSection(nullptr, &layout, DIB_RGB_COLORS, &bits, nullptr, 0);
    bits_ = static_cast<Quad *>(bits);
    former_ = SelectObject(context_, bitmap_);
    reset();
  }
  Canvas(Canvas const &) = delete;
  Canvas & operator=(Canvas const &) = delete;
  ~Canvas() {
    SelectObject(context_, former_);
    DeleteObject(bitmap_);
    DeleteDC(context_);
  }

  /// Each pixel has another colour than those beside it, so that it shows what was drawn, and half drawn.
  void reset() {
    GdiFlush();
    if (pattern_.empty())
      for (int y = 0; y < height_; ++y)
        for (int x = 0; x < width_; ++x)
          pattern_.push_back(patternAt(x, y));
    std::memcpy(bits_, pattern_.data(), pattern_.size() * sizeof(Quad));
  }

  static Quad patternAt(int x, int y) { return quadOf(x * 7 & 0xFF, y * 5 & 0xFF, (x + y) * 3 & 0xFF); }

  HDC context() const { return context_; }
  int width() const { return width_; }
  int height() const { return height_; }

  bool holds(int x, int y) const { return x >= 0 && y >= 0 && x < width_ && y < height_; }
  Quad & at(int x, int y) { return bits_[y * width_ + x]; }
  Quad at(int x, int y) const { return bits_[y * width_ + x] & 0xFFFFFF; }

  /// The first place that differs by more than one in a channel.
  std::optional<POINT> difference(Canvas const & other) const {
    GdiFlush();
    for (int y = 0; y < height_; ++y) {
      if (std::memcmp(&bits_[y * width_], &other.bits_[y * width_], static_cast<std::size_t>(width_) * sizeof(Quad)) ==
          0)
        continue;
      for (int x = 0; x < width_; ++x)
        if (!alike(at(x, y), other.at(x, y)))
          return POINT{x, y};
    }
    return std::nullopt;
  }

  bool isUntouched() const { return !difference(Canvas(width_, height_)); }

private:
  int width_;
  int height_;
  HDC context_ = CreateCompatibleDC(nullptr);
  HBITMAP bitmap_;
  HGDIOBJ former_;
  Quad * bits_;
  std::vector<Quad> pattern_;
};

/// A real window that draws on a canvas in place of the screen.
class CanvasWindow : public SV::Window {
public:
  explicit CanvasWindow(Canvas & canvas) : Window(nullptr), canvas_(canvas) {}

  SV::Size GetOutputSizePixel() const override { return {canvas_.width(), canvas_.height()}; }

protected:
  HDC fetchContext() const override { return canvas_.context(); }
  void releaseContext(HDC) const override {}

private:
  Canvas & canvas_;
};

} // namespace themetest
