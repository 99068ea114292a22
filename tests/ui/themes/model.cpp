#include "ui/themes/model.hpp"

#include "sv/application.hpp"
#include "sv/imagepool.hpp"

#include <algorithm>
#include <cmath>
#include <uxtheme.h>

namespace themetest {
namespace {

constexpr COLORREF rgb(int r, int g, int b) { return static_cast<COLORREF>(r | g << 8 | b << 16); }

COLORREF const kFace = GetSysColor(COLOR_BTNFACE);
COLORREF const kHighlight = GetSysColor(COLOR_HIGHLIGHT);
COLORREF const kGray = rgb(0x80, 0x80, 0x80);
COLORREF const kLight = GetSysColor(COLOR_BTNHIGHLIGHT);
COLORREF const kShadow = GetSysColor(COLOR_BTNSHADOW);
COLORREF const kDark = rgb(0x40, 0x40, 0x40);
COLORREF const kBlack = rgb(0, 0, 0);
COLORREF const kWhite = rgb(255, 255, 255);

template <class Function> COLORREF byChannel(COLORREF a, COLORREF b, Function const & function) {
  auto const one = [&](int left, int right) { return std::clamp(static_cast<int>(function(left, right)), 0, 255); };
  return rgb(one(GetRValue(a), GetRValue(b)), one(GetGValue(a), GetGValue(b)), one(GetBValue(a), GetBValue(b)));
}

COLORREF times(COLORREF color, double factor) {
  return byChannel(color, color, [&](int value, int) { return value * factor; });
}

COLORREF over(COLORREF below, COLORREF above, double share) {
  return byChannel(below, above, [&](int low, int high) { return low * (1 - share) + high * share; });
}

int gray(COLORREF color) {
  return static_cast<int>(0.3 * GetRValue(color)) + static_cast<int>(0.59 * GetGValue(color)) +
         static_cast<int>(0.11 * GetBValue(color));
}

bool isCaption(int part) { return part >= 0 && part <= 3; }
bool isActive(int part) { return part == 0 || part == 2; }
bool isEmpty(RECT const & area) { return area.right <= area.left || area.bottom <= area.top; }

HFONT makeCaptionFont() {
  SV::Font font = SV::Application::GetAppFont();
  font.ChangeSize({0, 12});
  font.ChangeWeight(SV::WEIGHT_BOLD);
  return font.CreateSystemFont();
}

/// The pixels of a picture from the top, 0xAARRGGBB.
std::vector<Quad> pixelsOf(HBITMAP bitmap, SV::Size const & size) {
  std::vector<Quad> pixels(static_cast<std::size_t>(size.width * size.height));
  BITMAPINFO layout{};
  layout.bmiHeader = {sizeof(BITMAPINFOHEADER), size.width, -size.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  HDC const device = CreateCompatibleDC(nullptr);
  GetDIBits(device, bitmap, 0, static_cast<UINT>(size.height), pixels.data(), &layout, DIB_RGB_COLORS);
  DeleteDC(device);
  return pixels;
}

/// The cross of a button that is drawn by hand, 8 by 8.
constexpr char const * kCross[] = {"xx....xx", ".xx..xx.", "..xxxx..", "...xx...",
                                   "...xx...", "..xxxx..", ".xx..xx.", "xx....xx"};

} // namespace

COLORREF Model::classicColor(int index) const {
  switch (index) {
  case 0: return kFace;
  case 1: return times(kFace, 1.05);
  case 2: return times(kFace, 0.98);
  case 3: return times(kFace, 1.25);
  case 4: return times(kFace, 0.8);
  case 5: return over(kFace, kGray, 0.3);
  case 6: return over(kFace, kGray, 0.2);
  case 7: return over(kFace, kHighlight, 0.4);
  case 8: return over(kFace, kHighlight, 0.3);
  case 9: return times(over(kFace, kHighlight, 0.5), 0.8);
  case 10: return times(kFace, 1.25);
  case 11: return GetSysColor(12);
  default: return kBlack;
  }
}

COLORREF Model::color(int index) const {
  if (!modern_)
    return classicColor(index);
  switch (index) {
  case 0: return 0xF9DAC3;
  case 1: return 0xFEEBDC;
  case 2: return 0xEEC2A2;
  case 3: return 0xFEECDD;
  case 4: return 0xCB8C6A;
  case 5: return 0xD08050;
  case 6: return 0xC07040;
  case 7: return 0xD36624;
  case 8: return 0xA74E18;
  case 9: return 0x764127;
  case 10: return 0xFFFFFF;
  case 11: return 0xC1A187;
  default: return kBlack;
  }
}

void Model::pixel(int x, int y, COLORREF color) const {
  if (canvas_.holds(x, y))
    canvas_.at(x, y) = quadOf(color);
}

void Model::fill(RECT const & area, COLORREF color) const {
  GdiFlush();
  for (int y = area.top; y < area.bottom; ++y)
    for (int x = area.left; x < area.right; ++x)
      pixel(x, y, color);
}

void Model::gradient(RECT const & area, RECT const & clip, bool vertical, COLORREF first, COLORREF last) const {
  GdiFlush();
  double const length = vertical ? area.bottom - area.top : area.right - area.left;
  for (int y = std::max(area.top, clip.top); y < std::min(area.bottom, clip.bottom); ++y)
    for (int x = std::max(area.left, clip.left); x < std::min(area.right, clip.right); ++x)
      pixel(x, y, over(first, last, (vertical ? y - area.top : x - area.left) / length));
}

bool Model::style(wchar_t const * classes, HDC device, int part, int state, RECT const & area) const {
  HTHEME const theme = styled_ ? OpenThemeData(window_, classes) : nullptr;
  if (!theme)
    return false;
  DrawThemeBackground(theme, device, part, state, &area, nullptr);
  CloseThemeData(theme);
  return true;
}

void Model::caption(int part, RECT const & area) const {
  if (isEmpty(area) || part < 0 || part > 9)
    return;
  if (modern_ && part <= 1) {
    gradient(area, area, true, color(part == 0 ? 7 : 5), color(part == 0 ? 8 : 6));
    return;
  }
  constexpr int kParts[] = {2, 2, 2, 2, 10, 10, 11, 11, 12, 12};
  RECT const target = part > 1 ? area : RECT{area.left - 2, area.top - 2, area.right + 2, area.bottom};
  if (style(L"Window", canvas_.context(), kParts[part], isActive(part) || part == 4 || part == 6 || part == 8 ? 1 : 2,
            target))
    return;
  if (!isCaption(part))
    return;
  fill(area, color(isActive(part) ? 7 : 5));
  for (int y = area.top + 1; y < area.bottom; y += 2)
    fill({area.left, y, area.right, y + 1}, color(isActive(part) ? 8 : 6));
}

void Model::writeText(POINT const & place, std::string const & text, COLORREF color) const {
  HFONT const font = makeCaptionFont();
  HGDIOBJ const former = SelectObject(canvas_.context(), font);
  SetBkMode(canvas_.context(), TRANSPARENT);
  SetTextColor(canvas_.context(), color);
  TextOutA(canvas_.context(), place.x, place.y, text.data(), static_cast<int>(text.size()));
  SelectObject(canvas_.context(), former);
  DeleteObject(font);
}

std::string Model::fitting(std::string text, int width) const {
  HFONT const font = makeCaptionFont();
  HGDIOBJ const former = SelectObject(canvas_.context(), font);
  auto const isTooWide = [&](std::string const & shown) {
    SIZE size{};
    GetTextExtentPoint32A(canvas_.context(), shown.data(), static_cast<int>(shown.size()), &size);
    return size.cx > width;
  };
  std::string shown = text;
  while (!text.empty() && isTooWide(shown)) {
    text.pop_back();
    shown = text + "...";
  }
  SelectObject(canvas_.context(), former);
  DeleteObject(font);
  return shown;
}

void Model::text(int part, RECT const & area, std::string const & text) const {
  if (isEmpty(area) || !isCaption(part))
    return;
  std::string const shown = fitting(text, area.right - area.left - 6);
  int const x = area.left + 3;
  int const y = area.top + (area.bottom - area.top - 12) / 2;
  bool const active = isActive(part);
  if (modern_ && part <= 1) {
    writeText({x + 1, y + 1}, shown, color(active ? 8 : 6));
    writeText({x, y}, shown, active ? kWhite : color(3));
    return;
  }
  if (styled_) {
    COLORREF const front = GetSysColor(active ? 9 : 19);
    COLORREF const shadow = gray(front) <= 128 ? GetSysColor(2) : over(GetSysColor(2), kBlack, 0.5);
    if (active)
      writeText({x + 1, y + 1}, shown, shadow);
    writeText({x, y}, shown, front);
    return;
  }
  COLORREF const first = color(active ? 7 : 5);
  COLORREF const second = color(active ? 8 : 6);
  writeText({x + 1, y + 1}, shown, first);
  writeText({x, y}, shown, (gray(first) + gray(second)) / 2.0 > 150 ? kBlack : kWhite);
}

void Model::handMadeButton(RECT const & area, bool pressed) const {
  int const left = area.left, top = area.top, right = area.right - 1, bottom = area.bottom - 1;
  fill(area, kFace);
  fill({left, top, right + 1, top + 1}, pressed ? kDark : kLight);
  fill({left, top, left + 1, bottom + 1}, pressed ? kDark : kLight);
  fill({left, bottom, right + 1, bottom + 1}, pressed ? kLight : kDark);
  fill({right, top, right + 1, bottom + 1}, pressed ? kLight : kDark);
  if (right - left >= 2 && bottom - top >= 2) {
    int const row = pressed ? top + 1 : bottom - 1;
    int const column = pressed ? left + 1 : right - 1;
    fill({left + 1, row, right, row + 1}, kShadow);
    fill({column, top + 1, column + 1, bottom}, kShadow);
  }
  int const x = left + (right - left + 1 - 8) / 2 + pressed;
  int const y = top + (bottom - top + 1 - 8) / 2 + pressed;
  for (int row = 0; row < 8; ++row)
    for (int column = 0; column < 8; ++column)
      if (kCross[row][column] == 'x')
        pixel(x + column, y + row, kBlack);
}

void Model::picture(POINT const & place, std::string const & name) const {
  SV::Image const image = SV::ImagePool::GetImage(name.c_str());
  SV::Size const size = image.GetSizePixel();
  std::vector<Quad> const pixels = pixelsOf(image.GetBitmap().GethBitmap(), size);
  GdiFlush();
  for (int y = 0; y < size.height; ++y)
    for (int x = 0; x < size.width; ++x) {
      Quad const above = pixels[static_cast<std::size_t>(y * size.width + x)]; // multiplied already
      double const rest = 1 - static_cast<int>(above >> 24) / 255.0;
      if (!canvas_.holds(place.x + x, place.y + y))
        continue;
      Quad & below = canvas_.at(place.x + x, place.y + y);
      auto const mixed = [&](int front, int back) {
        return std::min(255, static_cast<int>(std::lround(front + back * rest)));
      };
      below = quadOf(mixed(red(above), red(below)), mixed(green(above), green(below)), mixed(blue(above), blue(below)));
    }
}

void Model::closeButton(int part, RECT const & area, bool hot, bool pressed) const {
  if (isEmpty(area) || !isCaption(part))
    return;
  if (!modern_ && !styled_) {
    handMadeButton(area, pressed);
    return;
  }
  bool const full = isActive(part) || hot || pressed;
  Canvas const before(canvas_.width(), canvas_.height());
  BitBlt(before.context(), 0, 0, canvas_.width(), canvas_.height(), canvas_.context(), 0, 0, SRCCOPY);
  if (modern_)
    picture({area.left, area.top}, "control/close.png");
  else
    style(L"Window", canvas_.context(), 18, pressed ? 3 : hot ? 2 : 1, area);
  if (full)
    return;
  GdiFlush();
  for (int y = 0; y < canvas_.height(); ++y)
    for (int x = 0; x < canvas_.width(); ++x) {
      Quad const back = before.at(x, y);
      Quad & front = canvas_.at(x, y);
      bool const inside = x >= area.left && x < area.right && y >= area.top && y < area.bottom;
      auto const mixed = [](int a, int b) { return static_cast<int>(std::lround(a * 128 / 255.0 + b * 127 / 255.0)); };
      front = inside ? quadOf(mixed(red(front), red(back)), mixed(green(front), green(back)),
                              mixed(blue(front), blue(back)))
                     : back;
    }
}

void Model::menu() const {
  RECT const whole = {0, 0, canvas_.width(), canvas_.height()};
  if (modern_)
    gradient(whole, whole, false, 0xF5BE9E, 0xF9DAC3);
  else
    fill(whole, color(0));
}

void Model::toolbar(bool vertical, RECT const & area) const {
  if (isEmpty(area))
    return;
  if (!modern_ && !enabled_)
    fill(area, color(0));
  else
    gradient({0, 0, canvas_.width(), canvas_.height()}, area, vertical, color(1), color(2));
}

void Model::button(RECT const & area, ButtonLook const & look, bool windowEnabled) const {
  if (isEmpty(area))
    return;
  int const state = look.pressed ? 3 : look.hot ? (look.checked ? 6 : 2) : look.checked ? 5 : 1;
  if (style(L"Toolbar", canvas_.context(), 1, state, area))
    return;
  COLORREF const accent = windowEnabled ? kHighlight : kShadow;
  COLORREF inside = over(color(0), accent, 0.3);
  if (look.pressed || (look.checked && look.hot))
    inside = modern_ && look.white ? kWhite : inside;
  else if (look.hot)
    inside = over(inside, kWhite, 0.5);
  else if (look.checked)
    inside = over(color(0), kWhite, 0.5);
  else
    return;
  fill(area, accent);
  fill({area.left + 1, area.top + 1, area.right - 1, area.bottom - 1}, inside);
}

void Model::statusBar(RECT const & area) const {
  if (isEmpty(area))
    return;
  if (modern_) {
    toolbar(true, area);
    return;
  }
  fill(area, color(0));
  if (!themed_)
    return;
  int const h = canvas_.height();
  struct {
    int row;
    double factor;
  } const lines[] = {{0, 0.632},     {1, 0.815},     {2, 0.912},     {3, 0.984},     {4, 1.011},
                     {h - 5, 0.991}, {h - 4, 0.975}, {h - 3, 0.942}, {h - 2, 0.919}, {h - 1, 0.945}};
  for (auto const & line : lines)
    fill({0, line.row, canvas_.width(), line.row + 1}, times(color(0), line.factor));
}

} // namespace themetest
