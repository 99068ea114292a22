// Menus, tool bars and status bars.

#include "acolor.hpp"
#include "atheme.hpp"
#include "handles/handle.hpp"
#include "sv/visualstyles.hpp"
#include "sv/window.hpp"
#include "tools/winapi.hpp"
#include "ui/themes/bars.hpp"
#include "ui/themes/directfill.hpp"
#include "ui/themes/filling.hpp"
#include "ui/themes/themehandle.hpp"

#include <optional>

using SV::Color;

namespace kivara {

namespace {

constexpr int kToolbarButton = 1; // of the visual style "Toolbar"

/// Limits drawing to a rectangle, within the limits that the device has already; afterwards only those hold again.
class ClippedTo {
public:
  ClippedTo(HDC device, SV::Rectangle const & area) : device_(device) {
    hadLimits_ = GetClipRgn(device, former_.get()) == 1;
    RECT const edges = area.ToSystem();
    IntersectClipRect(device, edges.left, edges.top, edges.right, edges.bottom);
  }
  ClippedTo(ClippedTo const &) = delete;
  ClippedTo & operator=(ClippedTo const &) = delete;
  ~ClippedTo() { SelectClipRgn(device_, hadLimits_ ? former_.get() : nullptr); }

private:
  HDC device_;
  handles::RegionObject former_{CreateRectRgn(0, 0, 0, 0)};
  bool hadLimits_;
};

TRIVERTEX vertex(SV::Point const & place, Color const & color) {
  return {place.x, place.y, color.GetRed(), color.GetGreen(), color.GetBlue(), 0};
}

/// \param seen  lies within the size, over which the colours run
void drawGradientWithin(HDC device, KivTheme const & theme, bool vertical, SV::Rectangle const & seen,
                        SV::Size const & size) {
  std::optional<ClippedTo> clip;
  if (vertical ? seen.GetHeight() < size.height : seen.GetWidth() < size.width)
    clip.emplace(device, seen);
  // Across, where the colour stays the same, the fill itself ends at the edges.
  SV::Point const first = vertical ? SV::Point{seen.Left(), 0} : SV::Point{0, seen.Top()};
  SV::Point const last = vertical ? SV::Point{seen.Right() + 1, size.height} : SV::Point{size.width, seen.Bottom() + 1};
  TRIVERTEX corners[] = {vertex(first, theme.GetColor(1)), vertex(last, theme.GetColor(2))};
  GRADIENT_RECT mesh = {0, 1};
  GradientFill(device, corners, 2, &mesh, 1, vertical ? GRADIENT_FILL_RECT_V : GRADIENT_FILL_RECT_H);
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
  SV::Rectangle const whole = wholeOf(device);
  SV::Rectangle const seen = area.GetIntersection(whole);
  if (!seen.IsEmpty())
    drawGradientWithin(device.GethDC(), theme, vertical, seen, whole.GetSize());
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

void drawStatusBar(SV::OutputDevice & device, SV::Rectangle const & area, Color const & base) {
  SV::Size const size = device.GetOutputSizePixel();
  kivara::DirectFill const drawing(device.GethDC());
  if (SV::Rectangle const seen = area.GetIntersection({{0, 0}, size}); !seen.IsEmpty())
    drawing.fill(seen, base);
  if (!KivThemeManager::IsThemed())
    return;
  for (long i = 0; i < 5; ++i)
    drawing.fill({{0, i}, {size.width, 1}}, mulColor(base, kStatusLines.fromTop[i]));
  for (long i = 0; i < 5; ++i)
    drawing.fill({{0, size.height - 5 + i}, {size.width, 1}}, mulColor(base, kStatusLines.toBottom[i]));
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
  drawStatusBar(device, area, GetColor(0));
}
