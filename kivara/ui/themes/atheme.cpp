#include "atheme.hpp"

#include "acolor.hpp"
#include "base/pictureids.hpp"
#include "sv/visualstyles.hpp"
#include "sv/window.hpp"
#include "ui/themes/captionparts.hpp"
#include "ui/themes/captiontext.hpp"
#include "ui/themes/closebutton.hpp"
#include "ui/themes/directfill.hpp"
#include "ui/themes/filling.hpp"
#include "ui/themes/systemcolor.hpp"
#include "ui/themes/themehandle.hpp"

#include <algorithm>
#include <cstdint>

using SV::Color;
using SV::String;

namespace {

// Parts and states of the visual style "Window"
constexpr int kSmallCaption = 2;
constexpr int kSmallFrameLeft = 10; // right and bottom follow
constexpr int kActive = 1;
constexpr int kInactive = 2;
constexpr int kUsual = 1;
constexpr int kHot = 2;
constexpr int kPressed = 3;

kivara::ThemeHandle openWindowTheme(SV::Window const & window) {
  return kivara::ThemeHandle(KivThemeManager::Instance().OpenWindowTheme(window));
}

int stylePartOf(KivThemeClass part) {
  return kivara::isCaption(part) ? kSmallCaption : kSmallFrameLeft + (part - FrameLeftActive) / 2;
}

/// The style's caption has a frame, which lies outside of the rectangle.
SV::Rectangle withFrame(SV::Rectangle const & area) {
  auto const wide = [](std::int64_t value) {
    return static_cast<long>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
  };
  return SV::Rectangle(wide(std::int64_t{area.Left()} - 2), wide(std::int64_t{area.Top()} - 2),
                       wide(std::int64_t{area.Right()} + 2), area.Bottom());
}

void drawStyled(void * theme, SV::Window & window, KivThemeClass part, SV::Rectangle const & area) {
  bool const hasFrame = part == CaptionActive || part == CaptionInactive;
  SV::CVisualStylesXP::DrawThemeBackground(theme, window.GethDC(), stylePartOf(part),
                                           kivara::isActive(part) ? kActive : kInactive,
                                           hasFrame ? withFrame(area) : area);
}

/// An area with every other line in another colour, the first of them below the top edge.
void drawStripes(SV::Window & window, SV::Rectangle const & area, Color const & ground, Color const & stripe) {
  SV::Rectangle const seen = area.GetIntersection(kivara::wholeOf(window));
  if (seen.IsEmpty())
    return;
  kivara::DirectFill const drawing(window.GethDC());
  drawing.fill(seen, ground);
  std::int64_t const offset = std::int64_t{seen.Top()} - area.Top();
  for (long line = seen.Top() + (offset % 2 == 0 ? 1 : 0); line <= seen.Bottom(); line += 2)
    drawing.fill({{seen.Left(), line}, {seen.GetWidth(), 1}}, stripe);
}

/// Light captions have a dark text.
Color textColorOver(Color const & first, Color const & second) {
  return grayValue(first.GetRGB()) + grayValue(second.GetRGB()) > 2 * 150 ? SV::COL_BLACK : SV::COL_WHITE;
}

kivara::CaptionColors systemCaptionColors(bool active) {
  Color const text = kivara::systemColor(active ? COLOR_CAPTIONTEXT : COLOR_INACTIVECAPTIONTEXT);
  Color const caption = kivara::systemColor(COLOR_ACTIVECAPTION);
  Color const shadow = grayValue(text.GetRGB()) <= 128 ? caption : srcOver(caption, SV::COL_BLACK, 0.5);
  return {text, shadow, active};
}

} // namespace

KivTheme::KivTheme(String const & theName) : name(theName) {}
KivTheme::KivTheme(KivTheme const &) = default;
KivTheme & KivTheme::operator=(KivTheme const &) = default;
KivTheme::~KivTheme() = default;

String KivTheme::GetName() const { return name; }

KivThemeClassic::KivThemeClassic() : KivTheme("Classic") {}
KivThemeClassic::KivThemeClassic(KivThemeClassic const &) = default;
KivThemeClassic & KivThemeClassic::operator=(KivThemeClassic const &) = default;
KivThemeClassic::~KivThemeClassic() = default;

SV::Bitmap const & KivTheme::GetAnnoDazumalCloseBitmap() {
  static SV::Bitmap const cross{SV::ResId(kivara::pictures::kCloseCross)};
  return cross;
}

void KivTheme::Draw(SV::Window & window, KivThemeClass part, SV::Rectangle const & area) const {
  if (area.IsEmpty() || (!kivara::isCaption(part) && !kivara::isFrame(part)))
    return;
  SV::DrawingScope const scope(window);
  kivara::ThemeHandle const theme = openWindowTheme(window);
  if (theme) {
    drawStyled(theme.get(), window, part, area);
  } else if (kivara::isCaption(part)) {
    bool const active = kivara::isActive(part);
    drawStripes(window, area, GetColor(active ? 7 : 5), GetColor(active ? 8 : 6));
  }
}

void KivTheme::DrawText(SV::Window & window, KivThemeClass part, SV::Rectangle const & area,
                        String const & text) const {
  if (area.IsEmpty() || !kivara::isCaption(part))
    return;
  bool const active = kivara::isActive(part);
  Color const first = GetColor(active ? 7 : 5);
  kivara::CaptionColors const byHand = {textColorOver(first, GetColor(active ? 8 : 6)), first, true};
  bool const styled = static_cast<bool>(openWindowTheme(window));
  kivara::drawCaptionText(window, area, text, styled ? systemCaptionColors(active) : byHand);
}

void KivTheme::DrawCloseButton(SV::Window & window, KivThemeClass part, SV::Rectangle const & area, bool hot,
                               bool pressed) const {
  if (area.IsEmpty() || !kivara::isCaption(part))
    return;
  SV::DrawingScope const scope(window);
  kivara::ThemeHandle const theme = openWindowTheme(window);
  if (!theme)
    kivara::drawCloseButtonByHand(window, area, GetAnnoDazumalCloseBitmap(), pressed);
  else if (kivara::isActive(part) || hot || pressed)
    kivara::drawStyledCloseButton(theme.get(), window, area, pressed ? kPressed : hot ? kHot : kUsual);
  else
    kivara::drawFadedCloseButton(theme.get(), window, area);
}
