// The colours of the themes.

#include "acolor.hpp"
#include "atheme.hpp"
#include "ui/themes/systemcolor.hpp"

#include <iterator>

using SV::Color;

namespace {

constexpr unsigned long kModern[] = {0xF9DAC3, 0xFEEBDC, 0xEEC2A2, 0xFEECDD, 0xCB8C6A, 0xD08050,
                                     0xC07040, 0xD36624, 0xA74E18, 0x764127, 0xFFFFFF, 0xC1A187};

} // namespace

Color KivThemeClassic::GetColor(long index) const {
  Color const face = SV::COL_FACE;
  switch (index) {
  case 0: return face;
  case 1: return mulColor(face, 1.05);
  case 2: return mulColor(face, 0.98);
  case 3: return mulColor(face, 1.25);
  case 4: return mulColor(face, 0.8);
  case 5: return srcOver(face, SV::COL_GRAY, 0.3);
  case 6: return srcOver(face, SV::COL_GRAY, 0.2);
  case 7: return srcOver(face, SV::COL_HIGHLIGHT, 0.4);
  case 8: return srcOver(face, SV::COL_HIGHLIGHT, 0.3);
  case 9: return mulColor(srcOver(face, SV::COL_HIGHLIGHT, 0.5), 0.8);
  case 10: return mulColor(face, 1.25);
  case 11: return kivara::systemColor(COLOR_APPWORKSPACE);
  default: return SV::COL_BLACK;
  }
}

Color KivThemeModern::GetColor(long index) const {
  if (index < 0 || index >= std::ssize(kModern))
    return SV::COL_BLACK;
  Color color;
  color.SetRGB(kModern[index]);
  return color;
}
