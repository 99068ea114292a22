#include "ui/themes/closebutton.hpp"

#include "handles/handle.hpp"
#include "sv/visualstyles.hpp"
#include "tools/winapi.hpp"
#include "ui/themes/fading.hpp"
#include "ui/themes/filling.hpp"

using SV::Color;

namespace kivara {

namespace {

constexpr int kCloseButton = 18; // of the visual style "Window"
constexpr int kUsual = 1;

/// A picture in memory that is selected into a device for drawing on it.
class MemoryPicture {
public:
  MemoryPicture(HDC like, SV::Size const & size) : device_(CreateCompatibleDC(like)) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, size.width, size.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void * pixels;
    bitmap_.reset(CreateDIBSection(device_.get(), &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    if (bitmap_)
      former_ = SelectObject(device_.get(), bitmap_.get());
  }
  MemoryPicture(MemoryPicture const &) = delete;
  MemoryPicture & operator=(MemoryPicture const &) = delete;
  ~MemoryPicture() {
    if (former_)
      SelectObject(device_.get(), former_);
  }

  explicit operator bool() const { return former_ != nullptr; }
  HDC device() const { return device_.get(); }

private:
  handles::MemoryDevice device_;
  handles::BitmapObject bitmap_;
  HGDIOBJ former_ = nullptr;
};

void drawTopAndLeft(SV::OutputDevice & device, SV::Rectangle const & area, Color const & color) {
  if (area.IsEmpty())
    return;
  device.ChangePen(SV::Pen(color));
  device.DrawLine(area.TopLeft(), {area.Right(), area.Top()});
  device.DrawLine(area.TopLeft(), {area.Left(), area.Bottom()});
}

void drawBottomAndRight(SV::OutputDevice & device, SV::Rectangle const & area, Color const & color) {
  if (area.IsEmpty())
    return;
  device.ChangePen(SV::Pen(color));
  device.DrawLine({area.Left(), area.Bottom()}, {area.Right(), area.Bottom()});
  device.DrawLine({area.Right(), area.Top()}, {area.Right(), area.Bottom()});
}

void drawEdges(SV::OutputDevice & device, SV::Rectangle const & area, bool pressed) {
  Color const dark(0x4000, 0x4000, 0x4000);
  SV::Rectangle const inner({area.Left() + 1, area.Top() + 1}, {area.GetWidth() - 2, area.GetHeight() - 2});
  drawTopAndLeft(device, area, pressed ? dark : SV::COL_LIGHT);
  drawBottomAndRight(device, area, pressed ? SV::COL_LIGHT : dark);
  if (pressed)
    drawTopAndLeft(device, inner, SV::COL_SHADOW);
  else
    drawBottomAndRight(device, inner, SV::COL_SHADOW);
}

void drawCross(SV::OutputDevice & device, SV::Rectangle const & area, SV::Bitmap const & cross, bool pressed) {
  SV::Size const size = cross.GetSizePixel();
  long const moved = pressed ? 1 : 0;
  Color gray;
  gray.SetRGB(0xC0C0C0);
  device.DrawTransparentBitmap({area.Left() + (area.GetWidth() - size.width) / 2 + moved,
                                area.Top() + (area.GetHeight() - size.height) / 2 + moved},
                               cross, device.GetSolidColor(gray));
}

} // namespace

void drawStyledCloseButton(void * theme, SV::OutputDevice & device, SV::Rectangle const & area, int state) {
  SV::CVisualStylesXP::DrawThemeBackground(theme, device.GethDC(), kCloseButton, state, area);
}

void drawFadedCloseButton(void * theme, SV::OutputDevice & device, SV::Rectangle const & area) {
  HDC const target = device.GethDC();
  MemoryPicture const picture(target, area.GetSize());
  if (!picture)
    return;
  BitBlt(picture.device(), 0, 0, area.GetWidth(), area.GetHeight(), target, area.Left(), area.Top(), SRCCOPY);
  SV::CVisualStylesXP::DrawThemeBackground(theme, picture.device(), kCloseButton, kUsual, {{0, 0}, area.GetSize()});
  blendHalf(target, area, picture.device());
}

void drawCloseButtonByHand(SV::OutputDevice & device, SV::Rectangle const & area, SV::Bitmap const & cross,
                           bool pressed) {
  PenAndBrush const drawing(device, SV::Pen(), SV::Brush(SV::COL_FACE));
  device.DrawRect(area);
  drawEdges(device, area, pressed);
  drawCross(device, area, cross, pressed);
}

} // namespace kivara
