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

TEST(Hsv, OfEveryColourIsThatOfAPlainComputation) {
  constexpr double pi = 3.14159265358979323846;
  for (unsigned long packed = 0; packed < kAllColors; ++packed) {
    unsigned const red = redOf(packed);
    unsigned const green = greenOf(packed);
    unsigned const blue = blueOf(packed);
    Hsv const hsv =
        hsvOf(static_cast<float>(red) / 255, static_cast<float>(green) / 255, static_cast<float>(blue) / 255);
    unsigned const most = std::max({red, green, blue});
    unsigned const least = std::min({red, green, blue});
    ASSERT_NEAR(hsv.v, most / 255.0, 1e-6) << packed;
    ASSERT_NEAR(hsv.s, most == 0 ? 0 : (most - least) / static_cast<double>(most), 1e-6) << packed;
    // In the hexagon the way along its edge: from the middle of three channels.
    unsigned const middle = red + green + blue - most - least;
    double const part = most == least ? 0 : (middle - least) / static_cast<double>(most - least);
    double hue = 0;
    if (most == red)
      hue = green >= blue ? part : 6 - part;
    else if (most == green)
      hue = red >= blue ? 2 - part : 2 + part;
    else
      hue = green >= red ? 4 - part : 4 + part;
    double const apart = (hsv.h - hue * 60) / 180 * pi;
    ASSERT_NEAR(std::cos(apart), 1, 1e-9) << packed << " has hue " << hsv.h; // 360 and 0 are one
    ASSERT_TRUE(hsv.h >= 0 && hsv.h < 360.0001f) << packed;
  }
}

TEST(Hsv, BringsEveryColourBack) {
  for (unsigned long packed = 0; packed < kAllColors; ++packed) {
    float const red = static_cast<float>(redOf(packed)) / 255;
    float const green = static_cast<float>(greenOf(packed)) / 255;
    float const blue = static_cast<float>(blueOf(packed)) / 255;
    Hsv const hsv = hsvOf(red, green, blue);
    Rgb const back = rgbOf(hsv.h, hsv.s, hsv.v);
    float const apart = std::max({std::abs(back.r - red), std::abs(back.g - green), std::abs(back.b - blue)});
    ASSERT_LT(apart, 1e-5f) << packed;
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
