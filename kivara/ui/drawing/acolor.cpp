#include "acolor.hpp"

#include "tools/winapi.hpp"
#include "ui/drawing/acolor_names.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

using kivara::ColorName;
using kivara::kColorNames;
using SV::Color;
using SV::String;

namespace {

constexpr unsigned kMostOfChannel = 0xFFFF;

/// 0xRRGGBB.
void splitValue(unsigned long value, unsigned char & red, unsigned char & green, unsigned char & blue) {
  red = static_cast<unsigned char>(value >> 16);
  green = static_cast<unsigned char>(value >> 8);
  blue = static_cast<unsigned char>(value);
}

unsigned long valueOf(Color const & color) {
  return static_cast<unsigned long>(color.GetRed() >> 8) << 16 |
         static_cast<unsigned long>(color.GetGreen() >> 8) << 8 | static_cast<unsigned long>(color.GetBlue() >> 8);
}

unsigned valueOfDigit(char c) {
  if (c >= '0' && c <= '9')
    return static_cast<unsigned>(c - '0');
  if (c >= 'a' && c <= 'f')
    return static_cast<unsigned>(c - 'a' + 10);
  if (c >= 'A' && c <= 'F')
    return static_cast<unsigned>(c - 'A' + 10);
  return 0;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

unsigned short multiplied(unsigned short channel, double factor) {
  double const product = channel * factor;
  // A negative product and a NaN count as too large, since their bits are compared as an unsigned number.
  return product > -1 && product < kMostOfChannel ? static_cast<unsigned short>(product) : kMostOfChannel;
}

/// The integral part, of which the caller uses the low bits; 0 if it does not fit in 64 bits.
long long cut(double value) {
  constexpr double most = 9e18;
  return value > -most && value < most ? static_cast<long long>(value) : 0;
}

unsigned short mixed(unsigned short dest, unsigned short src, double alpha) {
  return static_cast<unsigned short>(cut(dest * (1 - alpha) + src * alpha));
}

/// Each part is truncated before they are added: colours of stored pictures depend on white being 254.
int grayOf(unsigned red, unsigned green, unsigned blue) {
  return static_cast<int>(0.11 * blue) + static_cast<int>(0.59 * green) + static_cast<int>(0.3 * red);
}

} // namespace

void getRGBValuesFromColorString(char const * text, unsigned char & red, unsigned char & green, unsigned char & blue) {
  constexpr int places = 6;
  unsigned long value = 0;
  for (int place = 0; place < places; ++place) {
    bool const isReached = text != nullptr && *text != '\0';
    value = value << 4 | (isReached ? valueOfDigit(*text++) : 0);
  }
  splitValue(value, red, green, blue);
}

bool getRGBValuesOfColorName(String const & name, unsigned char & red, unsigned char & green, unsigned char & blue) {
  char const first = name.charAt(0);
  if (first == '#' || first == '$') {
    getRGBValuesFromColorString(name.c_str() + 1, red, green, blue);
    return false;
  }
  if (isDigit(first)) {
    splitValue(SV::h_atoul(name.c_str()), red, green, blue);
    return false;
  }
  auto const * const end = std::end(kColorNames);
  auto const * const row =
      std::find_if(std::begin(kColorNames), end, [&name](ColorName const & each) { return name == each.name; });
  splitValue(row != end ? row->value : 0, red, green, blue);
  return row != end;
}

Color getColorOfColorName(String const & name) {
  unsigned char red = 0;
  unsigned char green = 0;
  unsigned char blue = 0;
  getRGBValuesOfColorName(name, red, green, blue);
  auto const channel = [](unsigned char value) { return static_cast<unsigned short>(value << 8); };
  return {channel(red), channel(green), channel(blue)};
}

String getLeoTextOfColor(Color const & color) {
  unsigned long const value = valueOf(color);
  auto const * const end = std::end(kColorNames);
  auto const * const row =
      std::find_if(std::begin(kColorNames), end, [value](ColorName const & each) { return each.value == value; });
  if (row != end)
    return row->name;
  char text[8];
  std::snprintf(text, sizeof text, "$%02x%02x%02x", color.GetRed() >> 8, color.GetGreen() >> 8, color.GetBlue() >> 8);
  return text;
}

void RGBtoHSV(float r, float g, float b, float * h, float * s, float * v) {
  float const most = std::max({r, g, b});
  float const delta = most - std::min({r, g, b});
  *h = 0;
  *s = 0;
  *v = most;
  if (delta == 0 || most == 0)
    return;
  *s = delta / most;
  if (r == most)
    *h = (g - b) / delta;
  else if (g == most)
    *h = (b - r) / delta + 2;
  else
    *h = (r - g) / delta + 4;
  *h *= 60;
  if (*h < 0)
    *h += 360;
}

void HSVtoRGB(float * r, float * g, float * b, float h, float s, float v) {
  auto const give = [=](float red, float green, float blue) {
    *r = red;
    *g = green;
    *b = blue;
  };
  if (s == 0)
    return give(v, v, v);
  float const sixth = std::floor(h / 60);
  float const f = h / 60 - sixth;
  float const p = (1 - s) * v;
  float const q = (1 - f * s) * v;
  float const t = (1 - (1 - f) * s) * v;
  if (sixth == 0)
    return give(v, t, p);
  if (sixth == 1)
    return give(q, v, p);
  if (sixth == 2)
    return give(p, v, t);
  if (sixth == 3)
    return give(p, q, v);
  if (sixth == 4)
    return give(t, p, v);
  return give(v, p, q); // the last sixth, and any value outside the circle
}

bool getHSVValuesFromColorName(String const & name, float & h, float & s, float & v) {
  unsigned char red = 0;
  unsigned char green = 0;
  unsigned char blue = 0;
  bool const isName = getRGBValuesOfColorName(name, red, green, blue);
  constexpr float most = 255;
  RGBtoHSV(red / most, green / most, blue / most, &h, &s, &v);
  return isName;
}

unsigned long hsvAsULONGValue(float h, float s, float v) {
  auto const byte = [](float value) -> unsigned long { return static_cast<unsigned char>(cut(value)); };
  return byte(v * 255) + (byte(s * 255) << 8) + (byte(h / 360 * 255) << 16);
}

Color mulColor(Color const & color, double factor) {
  return {multiplied(color.GetRed(), factor), multiplied(color.GetGreen(), factor),
          multiplied(color.GetBlue(), factor)};
}

Color srcOver(Color const & dest, Color const & src, double alpha) {
  return {mixed(dest.GetRed(), src.GetRed(), alpha), mixed(dest.GetGreen(), src.GetGreen(), alpha),
          mixed(dest.GetBlue(), src.GetBlue(), alpha)};
}

int grayValue(unsigned long packed) { return grayOf(packed & 0xFF, packed >> 8 & 0xFF, packed >> 16 & 0xFF); }

void toGray(Color & color) {
  auto const gray = static_cast<unsigned long>(grayValue(color.GetRGB()));
  color.SetRGB(gray | gray << 8 | gray << 16);
}

void toGray(tagRGBQUAD & color) {
  color.rgbRed = color.rgbGreen = color.rgbBlue =
      static_cast<BYTE>(grayOf(color.rgbRed, color.rgbGreen, color.rgbBlue));
}

Color getSelectFillInColor(Color const & color, bool system) {
  constexpr int darker = 25;
  constexpr double nearEnough = 0.0001;
  int const target = std::max(grayValue(color.GetRGB()) - darker, 0);
  Color const base = system ? SV::COL_HIGHLIGHT : SV::COL_FACE;
  double low = 0;
  double high = 1;
  double alpha = 0.5;
  for (;;) {
    Color const result = srcOver(SV::COL_WHITE, base, alpha);
    int const gray = grayValue(result.GetRGB());
    if (gray == target)
      return result;
    (gray > target ? low : high) = alpha;
    alpha = (high + low) / 2;
    if (high - low <= nearEnough)
      return result;
  }
}
