#include "acolor.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>

namespace {

constexpr unsigned long kAllColors = 1ul << 24;

unsigned redOf(unsigned long packed) { return packed & 0xFF; }
unsigned greenOf(unsigned long packed) { return packed >> 8 & 0xFF; }
unsigned blueOf(unsigned long packed) { return packed >> 16 & 0xFF; }

struct Hsv {
  float h;
  float s;
  float v;
};

Hsv hsvOf(float r, float g, float b) {
  Hsv hsv = {-1, -1, -1};
  RGBtoHSV(r, g, b, &hsv.h, &hsv.s, &hsv.v);
  return hsv;
}

struct Rgb {
  float r;
  float g;
  float b;
  bool operator==(Rgb const &) const = default;
};
std::ostream & operator<<(std::ostream & out, Rgb const & rgb) { return out << rgb.r << ' ' << rgb.g << ' ' << rgb.b; }

Rgb rgbOf(float h, float s, float v) {
  Rgb rgb = {-1, -1, -1};
  HSVtoRGB(&rgb.r, &rgb.g, &rgb.b, h, s, v);
  return rgb;
}

struct HsvRow {
  Rgb rgb;
  Hsv hsv;
};
std::ostream & operator<<(std::ostream & out, HsvRow const & row) { return out << row.rgb; }

class HsvTable : public testing::TestWithParam<HsvRow> {};
TEST_P(HsvTable, FromRgb) {
  Hsv const hsv = hsvOf(GetParam().rgb.r, GetParam().rgb.g, GetParam().rgb.b);
  EXPECT_FLOAT_EQ(hsv.h, GetParam().hsv.h);
  EXPECT_FLOAT_EQ(hsv.s, GetParam().hsv.s);
  EXPECT_FLOAT_EQ(hsv.v, GetParam().hsv.v);
}
TEST_P(HsvTable, ToRgb) { EXPECT_EQ(rgbOf(GetParam().hsv.h, GetParam().hsv.s, GetParam().hsv.v), GetParam().rgb); }

constexpr HsvRow kHsvRows[] = {
    {{0, 0, 0}, {0, 0, 0}}, // black
    {{1, 1, 1}, {0, 0, 1}}, // white
    {{0.5f, 0.5f, 0.5f}, {0, 0, 0.5f}},
    {{1, 0, 0}, {0, 1, 1}},
    {{1, 0.5f, 0}, {30, 1, 1}},
    {{1, 1, 0}, {60, 1, 1}},
    {{0.5f, 1, 0}, {90, 1, 1}},
    {{0, 1, 0}, {120, 1, 1}},
    {{0, 1, 0.5f}, {150, 1, 1}},
    {{0, 1, 1}, {180, 1, 1}},
    {{0, 0.5f, 1}, {210, 1, 1}},
    {{0, 0, 1}, {240, 1, 1}},
    {{0.5f, 0, 1}, {270, 1, 1}},
    {{1, 0, 1}, {300, 1, 1}},
    {{1, 0, 0.5f}, {330, 1, 1}},
    {{0.5f, 0.25f, 0.25f}, {0, 0.5f, 0.5f}},
};
INSTANTIATE_TEST_SUITE_P(Table, HsvTable, testing::ValuesIn(kHsvRows));

Hsv hsvOfPacked(unsigned long packed) {
  return hsvOf(static_cast<float>(redOf(packed)) / 255, static_cast<float>(greenOf(packed)) / 255,
               static_cast<float>(blueOf(packed)) / 255);
}

/// Of whole numbers: the hue goes along the edges of a hexagon, by the middle one of the channels.
Hsv plainHsv(unsigned red, unsigned green, unsigned blue) {
  unsigned const most = std::max({red, green, blue});
  unsigned const least = std::min({red, green, blue});
  if (most == least)
    return {0, 0, static_cast<float>(most / 255.0)};
  double const part = (red + green + blue - most - 2.0 * least) / (most - least);
  double corner = 0;
  bool isBehind = false; // the corner's colour, counted in the direction of growing hues
  if (most == red) {
    isBehind = green >= blue;
    corner = isBehind ? 0 : 6;
  } else if (most == green) {
    isBehind = blue >= red;
    corner = 2;
  } else {
    isBehind = red >= green;
    corner = 4;
  }
  double const hue = (isBehind ? corner + part : corner - part) * 60;
  return {static_cast<float>(hue), static_cast<float>((most - least) / static_cast<double>(most)),
          static_cast<float>(most / 255.0)};
}

bool isNear(Hsv const & a, Hsv const & b) {
  return std::abs(a.h - b.h) < 1e-3f && std::abs(a.s - b.s) < 1e-6f && std::abs(a.v - b.v) < 1e-6f;
}

TEST(Hsv, OfEveryColourIsThatOfAPlainComputation) {
  for (unsigned long packed = 0; packed < kAllColors; ++packed) {
    Hsv const hsv = hsvOfPacked(packed);
    if (!isNear(hsv, plainHsv(redOf(packed), greenOf(packed), blueOf(packed))) || hsv.h < 0 || hsv.h >= 360)
      FAIL() << packed << " has hue " << hsv.h << ", saturation " << hsv.s << ", value " << hsv.v;
  }
}

TEST(Hsv, BringsEveryColourBack) {
  for (unsigned long packed = 0; packed < kAllColors; ++packed) {
    Hsv const hsv = hsvOfPacked(packed);
    Rgb const back = rgbOf(hsv.h, hsv.s, hsv.v);
    unsigned long const again = static_cast<unsigned long>(back.r * 255 + 0.5f) |
                                static_cast<unsigned long>(back.g * 255 + 0.5f) << 8 |
                                static_cast<unsigned long>(back.b * 255 + 0.5f) << 16;
    if (again != packed)
      FAIL() << packed << " came back as " << again;
  }
}

TEST(Hsv, WithoutSaturationTheHueIsIgnored) {
  for (float const hue : {-1e30f, -60.0f, 0.0f, 59.0f, 123.0f, 360.0f, 1e30f, std::numeric_limits<float>::quiet_NaN()})
    EXPECT_EQ(rgbOf(hue, 0, 0.75f), (Rgb{0.75f, 0.75f, 0.75f})) << hue;
}

TEST(Hsv, BlackHasNoHueNoSaturationAndNoValue) {
  Hsv const hsv = hsvOf(0, 0, 0);
  EXPECT_EQ(hsv.h, 0);
  EXPECT_EQ(hsv.s, 0);
  EXPECT_EQ(hsv.v, 0);
}

// Callers keep hues below 360; a full turn is not red here.
TEST(Hsv, AHueOutsideOfTheCircleIsTakenForOneInTheLastSixth) {
  EXPECT_EQ(rgbOf(360, 1, 1), (Rgb{1, 0, 1}));
  EXPECT_EQ(rgbOf(390, 1, 1), (Rgb{1, 0, 0.5f}));
  EXPECT_EQ(rgbOf(-30, 1, 1), (Rgb{1, 0, 0.5f}));
  EXPECT_EQ(rgbOf(-60, 1, 1), (Rgb{1, 0, 1}));
  EXPECT_EQ(rgbOf(6e8f, 1, 1).r, 1);
}

// The turn is added in single precision.
TEST(Hsv, OfARedWithTheLeastBitOfBlueIsRoundedToAWholeTurn) { EXPECT_EQ(hsvOf(1, 0, 1e-9f).h, 360); }

TEST(Hsv, OfAColourText) {
  Hsv hsv = {};
  EXPECT_TRUE(getHSVValuesFromColorName("lime", hsv.h, hsv.s, hsv.v));
  EXPECT_FLOAT_EQ(hsv.h, 120);
  EXPECT_FLOAT_EQ(hsv.s, 1);
  EXPECT_FLOAT_EQ(hsv.v, 1);
  EXPECT_FALSE(getHSVValuesFromColorName("#000080", hsv.h, hsv.s, hsv.v));
  EXPECT_FLOAT_EQ(hsv.h, 240);
  EXPECT_FLOAT_EQ(hsv.s, 1);
  EXPECT_FLOAT_EQ(hsv.v, 128 / 255.0f);
  EXPECT_FALSE(getHSVValuesFromColorName("Lime", hsv.h, hsv.s, hsv.v));
  EXPECT_EQ(hsv.h, 0);
  EXPECT_EQ(hsv.s, 0);
  EXPECT_EQ(hsv.v, 0);
}

struct PackedHsv {
  Hsv hsv;
  unsigned long packed;
};
std::ostream & operator<<(std::ostream & out, PackedHsv const & row) {
  return out << row.hsv.h << ' ' << row.hsv.s << ' ' << row.hsv.v;
}

class HsvNumber : public testing::TestWithParam<PackedHsv> {};
TEST_P(HsvNumber, HasEachPartCutToAByte) {
  EXPECT_EQ(hsvAsULONGValue(GetParam().hsv.h, GetParam().hsv.s, GetParam().hsv.v), GetParam().packed);
}
constexpr PackedHsv kHsvNumbers[] = {
    {{0, 0, 0}, 0x000000},
    {{360, 1, 1}, 0xFFFFFF},
    {{180, 0, 0}, 0x7F0000},
    {{0, 0.5f, 0}, 0x007F00},
    {{0, 0, 0.5f}, 0x00007F},
    {{60, 0.25f, 0.75f}, 0x2A3FBF},
    {{0, 0, 0.999f}, 0x0000FE},
    {{359.9f, 0.001f, 0.004f}, 0xFE0001},
    {{720, 0, 0}, 0xFE0000},
    {{0, 0, std::numeric_limits<float>::quiet_NaN()}, 0},
    {{0, 0, std::numeric_limits<float>::infinity()}, 0},
};
INSTANTIATE_TEST_SUITE_P(Table, HsvNumber, testing::ValuesIn(kHsvNumbers));

} // namespace
