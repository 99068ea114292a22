#include "drawing/colortable.hpp"

#include "sv/color.hpp"

namespace SV::detail {

namespace {

RGBQUAD entry(unsigned red, unsigned green, unsigned blue) {
  return {static_cast<BYTE>(blue), static_cast<BYTE>(green), static_cast<BYTE>(red), 0};
}

RGBQUAD entryOf(ColorName name) {
  unsigned long const packed = Color(name).GetRGB();
  return entry(packed & 0xFF, packed >> 8 & 0xFF, packed >> 16 & 0xFF);
}

void addFixedColors(PictureLayout & layout) {
  for (unsigned short number = COL_BLACK; number <= COL_WHITE; ++number)
    layout.colors[number] = entryOf(static_cast<ColorName>(number));
}

/// 6 by 6 by 6 colours, and the rest grey.
void addSpreadColors(PictureLayout & layout) {
  std::size_t next = COL_WHITE + 1;
  for (unsigned red = 0; red < 6; ++red)
    for (unsigned green = 0; green < 6; ++green)
      for (unsigned blue = 0; blue < 6; ++blue)
        layout.colors[next++] = entry(red * 51, green * 51, blue * 51);
  unsigned const first = static_cast<unsigned>(next);
  for (; next < layout.colors.size(); ++next) {
    unsigned const gray = (static_cast<unsigned>(next) - first + 1) * 255 / 25;
    layout.colors[next] = entry(gray, gray, gray);
  }
}

} // namespace

PictureLayout pictureLayout(LONG width, LONG height, WORD depth) {
  PictureLayout layout = {};
  layout.header = {sizeof layout.header, width, height, 1, depth, BI_RGB, 0, 0, 0, 0, 0};
  if (depth == 1) {
    layout.colors[1] = entryOf(COL_WHITE);
  } else if (depth <= 8) {
    addFixedColors(layout);
    addSpreadColors(layout);
  }
  return layout;
}

} // namespace SV::detail
