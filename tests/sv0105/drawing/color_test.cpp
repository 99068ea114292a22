#include "sv0105/application/testapplication.hpp"

namespace {

using SV::Color;
using SV::ColorName;

struct FixedColor {
  ColorName name;
  unsigned long packed; // 0x00BBGGRR
};

class FixedColors : public testing::TestWithParam<FixedColor> {};

TEST_P(FixedColors, HaveTheirValue) { EXPECT_EQ(Color(GetParam().name).GetRGB(), GetParam().packed); }

INSTANTIATE_TEST_SUITE_P(
    Table, FixedColors,
    testing::Values(FixedColor{SV::COL_BLACK, 0x000000}, FixedColor{SV::COL_BLUE, 0x800000},
                    FixedColor{SV::COL_GREEN, 0x008000}, FixedColor{SV::COL_CYAN, 0x808000},
                    FixedColor{SV::COL_RED, 0x000080}, FixedColor{SV::COL_MAGENTA, 0x800080},
                    FixedColor{SV::COL_BROWN, 0x008080}, FixedColor{SV::COL_GRAY, 0x808080},
                    FixedColor{SV::COL_LIGHTGRAY, 0xC0C0C0}, FixedColor{SV::COL_LIGHTBLUE, 0xFF0000},
                    FixedColor{SV::COL_LIGHTGREEN, 0x00FF00}, FixedColor{SV::COL_LIGHTCYAN, 0xFFFF00},
                    FixedColor{SV::COL_LIGHTRED, 0x0000FF}, FixedColor{SV::COL_LIGHTMAGENTA, 0xFF00FF},
                    FixedColor{SV::COL_YELLOW, 0x00FFFF}, FixedColor{SV::COL_WHITE, 0xFFFFFF}));

struct SystemColor {
  ColorName name;
  int index;
};

class SystemColors : public testing::TestWithParam<SystemColor> {};

TEST_P(SystemColors, FollowTheSystem) { EXPECT_EQ(Color(GetParam().name).GetRGB(), GetSysColor(GetParam().index)); }

INSTANTIATE_TEST_SUITE_P(
    Table, SystemColors,
    testing::Values(SystemColor{SV::COL_WINDOWTEXT, COLOR_WINDOWTEXT}, SystemColor{SV::COL_WINDOW, COLOR_WINDOW},
                    SystemColor{SV::COL_HIGHLIGHT, COLOR_HIGHLIGHT},
                    SystemColor{SV::COL_HIGHLIGHTTEXT, COLOR_HIGHLIGHTTEXT},
                    SystemColor{SV::COL_BUTTONTEXT, COLOR_BTNTEXT}, SystemColor{SV::COL_FACE, COLOR_BTNFACE},
                    SystemColor{SV::COL_LIGHT, COLOR_BTNHIGHLIGHT}, SystemColor{SV::COL_SHADOW, COLOR_BTNSHADOW}));

TEST(NumberedColor, WithoutAnEntryIsBlack) {
  for (unsigned short number : {16, 19, 28, 31, 33, 0xFFFF})
    EXPECT_EQ(Color(static_cast<ColorName>(number)).GetRGB(), 0u) << number;
}

TEST(NumberedColor, HasItsChannelsInTheHighByte) {
  Color const color(SV::COL_LIGHTGRAY);
  EXPECT_EQ(color.GetColorName(), SV::COL_LIGHTGRAY);
  EXPECT_EQ(color.GetRed(), 0xC000);
  EXPECT_EQ(color.GetGreen(), 0xC000);
  EXPECT_EQ(color.GetBlue(), 0xC000);
}

TEST(UserColor, KeepsAllBitsOfItsChannelsAndPacksTheHighByte) {
  Color const color(0x12FF, 0x3401, 0x5680);
  EXPECT_EQ(color.GetColorName(), SV::COL_USER);
  EXPECT_EQ(color.GetRed(), 0x12FF);
  EXPECT_EQ(color.GetGreen(), 0x3401);
  EXPECT_EQ(color.GetBlue(), 0x5680);
  EXPECT_EQ(color.GetRGB(), 0x563412u);
}

TEST(UserColor, IsWhatAPackedValueMakes) {
  Color color(SV::COL_WINDOW);
  color.SetRGB(0xFF563412);
  EXPECT_EQ(color.GetColorName(), SV::COL_USER);
  EXPECT_EQ(color.GetRed(), 0x1200);
  EXPECT_EQ(color.GetGreen(), 0x3400);
  EXPECT_EQ(color.GetBlue(), 0x5600);
  EXPECT_EQ(color.GetRGB(), 0x563412u);
}

TEST(UserColor, SurvivesPackingForEveryByte) {
  for (unsigned long byte = 0; byte < 256; ++byte) {
    Color color;
    color.SetRGB(byte | (255 - byte) << 8 | byte << 16);
    EXPECT_EQ(color.GetRGB(), byte | (255 - byte) << 8 | byte << 16);
  }
}

} // namespace
