#include "ui/themes/fading.hpp"

#include "tools/winapi.hpp"

namespace kivara {

void blendHalf(HDC target, SV::Rectangle const & area, HDC source) {
  BLENDFUNCTION const half = {AC_SRC_OVER, 0, 0x80, 0};
  AlphaBlend(target, area.Left(), area.Top(), area.GetWidth(), area.GetHeight(), source, 0, 0, area.GetWidth(),
             area.GetHeight(), half);
}

} // namespace kivara
