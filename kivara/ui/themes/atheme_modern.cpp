// Drawings of the theme "Modern".

#include "aplatfrm.hpp"
#include "atheme.hpp"
#include "sv/imagepool.hpp"
#include "sv/virtualdevice.hpp"
#include "sv/window.hpp"
#include "ui/themes/bars.hpp"
#include "ui/themes/captionparts.hpp"
#include "ui/themes/captiontext.hpp"
#include "ui/themes/fading.hpp"
#include "ui/themes/filling.hpp"

using SV::Color;
using SV::String;

namespace {

// Across a menu. They look like colours of the palette, but menus keep them.
constexpr unsigned long kMenuLeft = 0xF5BE9E;
constexpr unsigned long kMenuRight = 0xF9DAC3;

Color colorOf(unsigned long packed) {
  Color color;
  color.SetRGB(packed);
  return color;
}

bool isFramedCaption(KivThemeClass part) { return part == CaptionActive || part == CaptionInactive; }

/// Only what is seen takes memory.
void drawFaded(SV::Window & window, SV::Rectangle const & area, SV::Image const & image) {
  SV::Rectangle const seen = area.GetIntersection(kivara::wholeOf(window));
  SV::VirtualDevice device;
  if (seen.IsEmpty() || !device.SetOutputSizePixel(seen.GetSize()))
    return;
  device.DrawOutDev({0, 0}, seen.GetSize(), seen.TopLeft(), seen.GetSize(), window);
  device.DrawImage({area.Left() - seen.Left(), area.Top() - seen.Top()}, image);
  kivara::blendHalf(window.GethDC(), seen, device.GethDC());
}

} // namespace

KivThemeModern::KivThemeModern() : KivTheme("Modern") {}
KivThemeModern::KivThemeModern(KivThemeModern const &) = default;
KivThemeModern & KivThemeModern::operator=(KivThemeModern const &) = default;
KivThemeModern::~KivThemeModern() = default;

void KivThemeModern::Draw(SV::Window & window, KivThemeClass part, SV::Rectangle const & area) const {
  if (!isFramedCaption(part))
    KivTheme::Draw(window, part, area);
  else if (kivara::isActive(part))
    window.GradientFill(true, area, GetColor(7), GetColor(8));
  else
    window.GradientFill(true, area, GetColor(5), GetColor(6));
}

void KivThemeModern::DrawText(SV::Window & window, KivThemeClass part, SV::Rectangle const & area,
                              String const & text) const {
  if (!isFramedCaption(part)) {
    KivTheme::DrawText(window, part, area, text);
    return;
  }
  if (area.IsEmpty())
    return;
  kivara::CaptionColors const active = {SV::COL_WHITE, GetColor(8), true};
  kivara::CaptionColors const inactive = {GetColor(3), GetColor(6), true};
  kivara::drawCaptionText(window, area, text, kivara::isActive(part) ? active : inactive);
}

void KivThemeModern::DrawCloseButton(SV::Window & window, KivThemeClass part, SV::Rectangle const & area, bool hot,
                                     bool pressed) const {
  if (area.IsEmpty() || !kivara::isCaption(part))
    return;
  SV::Image const image = SV::ImagePool::GetImage("control/close.png");
  if (image.IsEmpty())
    return;
  SV::DrawingScope const scope(window);
  if (kivara::isActive(part) || hot || pressed)
    window.DrawImage(area.TopLeft(), image);
  else
    drawFaded(window, area, image);
}

void KivThemeModern::DrawMenuBackground(SV::OutputDevice & device) const {
  device.GradientFill(false, kivara::wholeOf(device), colorOf(kMenuLeft), colorOf(kMenuRight));
}

void KivThemeModern::DrawToolbarBackground(SV::OutputDevice & device, bool vertical, SV::Rectangle const & area) const {
  kivara::drawBarGradient(*this, device, vertical, area);
}

void KivThemeModern::DrawToolbarButton(SV::Window & window, SV::OutputDevice & device, SV::Rectangle const & area,
                                       bool checked, bool hot, bool pressed, bool whiteWhenPressed) const {
  kivara::ButtonState const state = {checked, hot, pressed};
  if (!Kiv_IsAtLeastWindowsVista() || !kivara::drawStyledButton(window, device, area, state))
    kivara::drawButtonByHand(*this, window, device, area, state, whiteWhenPressed);
}

void KivThemeModern::DrawStatusBarBackground(SV::OutputDevice & device, SV::Rectangle const & area) const {
  DrawToolbarBackground(device, true, area);
}
