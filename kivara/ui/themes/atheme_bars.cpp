// Menus, tool bars and status bars.

#include "acolor.hpp"
#include "atheme.hpp"
#include "sv/visualstyles.hpp"
#include "sv/window.hpp"
#include "tools/winapi.hpp"
#include "ui/themes/bars.hpp"
#include "ui/themes/filling.hpp"
#include "ui/themes/themehandle.hpp"

using SV::Color;

namespace kivara {

namespace {

constexpr int kToolbarButton = 1; // of the visual style "Toolbar"

/// Nothing is drawn outside of a rectangle, nor of the limit that the device has; afterwards that holds again.
class ClippedTo {
public:
  ClippedTo(SV::OutputDevice & device, SV::Rectangle const & area)
      : device_(device), former_(device.ChangeClipRegion(SV::Region())) {
    SV::Region clip = former_;
    clip.Intersect(area);
    device.ChangeClipRegion(clip);
  }
  ClippedTo(ClippedTo const &) = delete;
  ClippedTo & operator=(ClippedTo const &) = delete;
  ~ClippedTo() { device_.ChangeClipRegion(former_); }

private:
  SV::OutputDevice & device_;
  SV::Region former_;
};

TRIVERTEX vertex(SV::Point const & place, Color const & color) {
  return {place.x, place.y, color.GetRed(), color.GetGreen(), color.GetBlue(), 0};
}

int buttonState(ButtonState const & state) {
  if (state.pressed)
    return 3;
  if (state.hot)
    return state.checked ? 6 : 2;
  return state.checked ? 5 : 1;
}

} // namespace

void drawBarGradient(KivTheme const & theme, SV::OutputDevice & device, bool vertical, SV::Rectangle const & area) {
  if (area.IsEmpty())
    return;
  SV::DrawingScope const scope(device);
  ClippedTo const clip(device, area);
  SV::Size const size = device.GetOutputSizePixel();
  TRIVERTEX corners[] = {vertex({0, 0}, theme.GetColor(1)), vertex({size.width, size.height}, theme.GetColor(2))};
  GRADIENT_RECT whole = {0, 1};
  GradientFill(device.GethDC(), corners, 2, &whole, 1, vertical ? GRADIENT_FILL_RECT_V : GRADIENT_FILL_RECT_H);
}

bool drawStyledButton(SV::Window const & window, SV::OutputDevice & device, SV::Rectangle const & area,
                      ButtonState const & state) {
  ThemeHandle const theme(KivThemeManager::Instance().OpenToolbarTheme(window));
  if (!theme)
    return false;
  SV::DrawingScope const scope(device);
  SV::CVisualStylesXP::DrawThemeBackground(theme.get(), device.GethDC(), kToolbarButton, buttonState(state), area);
  return true;
}

void drawButtonByHand(KivTheme const & theme, SV::Window const & window, SV::OutputDevice & device,
                      SV::Rectangle const & area, ButtonState const & state, bool whiteWhenPressed) {
  Color const accent = window.IsEnabled() ? SV::COL_HIGHLIGHT : SV::COL_SHADOW;
  Color const base = theme.GetColor(0);
  Color const white = SV::COL_WHITE;
  Color fill;
  if (state.pressed || (state.checked && state.hot))
    fill = whiteWhenPressed ? white : srcOver(base, accent, 0.3);
  else if (state.hot)
    fill = srcOver(srcOver(base, accent, 0.3), white, 0.5);
  else if (state.checked)
    fill = srcOver(base, white, 0.5);
  else
    return;
  PenAndBrush const drawing(device, SV::Pen(accent), SV::Brush(fill));
  device.DrawRect(area);
}

} // namespace kivara

namespace {

constexpr struct {
  double fromTop[5];
  double toBottom[5]; ///< the last one is the lowest line
} kStatusLines = {{0.632, 0.815, 0.912, 0.984, 1.011}, {0.991, 0.975, 0.942, 0.919, 0.945}};

void drawStatusLine(SV::OutputDevice & device, long row, Color const & color) {
  device.ChangePen(SV::Pen(color));
  device.DrawLine({0, row}, {device.GetOutputSizePixel().width - 1, row});
}

void drawStatusLines(SV::OutputDevice & device, Color const & base) {
  kivara::PenAndBrush const drawing(device, SV::Pen(), SV::Brush());
  long const height = device.GetOutputSizePixel().height;
  for (long i = 0; i < 5; ++i)
    drawStatusLine(device, i, mulColor(base, kStatusLines.fromTop[i]));
  for (long i = 0; i < 5; ++i)
    drawStatusLine(device, height - 5 + i, mulColor(base, kStatusLines.toBottom[i]));
}

} // namespace

void KivTheme::DrawMenuBackground(SV::OutputDevice & device) const {
  kivara::fill(device, kivara::wholeOf(device), GetColor(0));
}

void KivTheme::DrawToolbarBackground(SV::OutputDevice & device, bool vertical, SV::Rectangle const & area) const {
  if (KivThemeManager::Instance().IsVisualStylesXPEnabled())
    kivara::drawBarGradient(*this, device, vertical, area);
  else
    kivara::fill(device, area, GetColor(0));
}

void KivTheme::DrawToolbarButton(SV::Window & window, SV::OutputDevice & device, SV::Rectangle const & area,
                                 bool checked, bool hot, bool pressed, bool) const {
  kivara::ButtonState const state = {checked, hot, pressed};
  if (!kivara::drawStyledButton(window, device, area, state))
    kivara::drawButtonByHand(*this, window, device, area, state, false);
}

void KivTheme::DrawStatusBarBackground(SV::OutputDevice & device, SV::Rectangle const & area) const {
  if (area.IsEmpty())
    return;
  SV::DrawingScope const scope(device);
  kivara::fill(device, area, GetColor(0));
  if (KivThemeManager::IsThemed())
    drawStatusLines(device, GetColor(0));
}
