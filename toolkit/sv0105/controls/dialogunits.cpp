#include "controls/dialogunits.hpp"

#include "handles/handle.hpp"

namespace SV::detail {
namespace {

constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr int kLetterCount = sizeof kLetters - 1;

/// Width and height of a character.
SIZE characterOf(HFONT font) {
  handles::ScreenDevice const screen(GetDC(nullptr));
  HGDIOBJ const former = SelectObject(screen.get(), font);
  SIZE size = {};
  TEXTMETRICA metrics = {};
  GetTextExtentPoint32A(screen.get(), kLetters, kLetterCount, &size);
  GetTextMetricsA(screen.get(), &metrics);
  SelectObject(screen.get(), former);
  // Rounded as the system rounds.
  return {(size.cx / (kLetterCount / 2) + 1) / 2, metrics.tmHeight};
}

} // namespace

Size pixelsOfUnits(HFONT font, Size const & units) {
  SIZE const character = characterOf(font);
  return {MulDiv(units.width, character.cx, 4), MulDiv(units.height, character.cy, 8)};
}

} // namespace SV::detail
