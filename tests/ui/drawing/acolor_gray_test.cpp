#include "acolor.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using SV::Color;

namespace {

constexpr unsigned long kAllColors = 1ul << 24;

unsigned redOf(unsigned long packed) { return packed & 0xFF; }
unsigned greenOf(unsigned long packed) { return packed >> 8 & 0xFF; }
unsigned blueOf(unsigned long packed) { return packed >> 16 & 0xFF; }

Color colorOf(unsigned long packed) {
  Color color;
  color.SetRGB(packed);
  return color;
}

Color grayColor(unsigned value) { return colorOf(value | value << 8 | value << 16); }

void expectChannels(Color const & color, unsigned red, unsigned green, unsigned blue) {
  EXPECT_EQ(color.GetColorName(), SV::COL_USER);
  EXPECT_EQ(color.GetRed(), red);
  EXPECT_EQ(color.GetGreen(), green);
  EXPECT_EQ(color.GetBlue(), blue);
}

/// The brightness in hundredths, in whole numbers.
int plainGray(unsigned red, unsigned green, unsigned blue) {
  return static_cast<int>(11 * blue / 100 + 59 * green / 100 + 30 * red / 100);
}

TEST(GrayValue, OfEveryColourIsThatOfWholeNumbers) {
  for (unsigned long packed = 0; packed < kAllColors; ++packed)
    ASSERT_EQ(grayValue(packed), plainGray(redOf(packed), greenOf(packed), blueOf(packed))) << packed;
}

// Each part is cut for itself; what is stored in gray depends on it.
TEST(GrayValue, OfWhiteIs254AndNoColourReaches255) {
  EXPECT_EQ(grayValue(0xFFFFFF), 254);
  EXPECT_EQ(grayValue(0x0000FF), 76);
  EXPECT_EQ(grayValue(0x00FF00), 150);
  EXPECT_EQ(grayValue(0xFF0000), 28);
  EXPECT_EQ(grayValue(0), 0);
  int most = 0;
  for (unsigned long packed = 0; packed < kAllColors; ++packed)
    most = std::max(most, grayValue(packed));
  EXPECT_EQ(most, 254);
}

TEST(GrayValue, TheHighestByteTakesNoPart) { EXPECT_EQ(grayValue(0xFF0000FF), 76); }

TEST(ToGray, GivesAllChannelsTheGrayValue) {
  for (unsigned long packed = 0; packed < kAllColors; packed += 251) {
    Color color = colorOf(packed);
    toGray(color);
    auto const gray = static_cast<unsigned>(grayValue(packed)) << 8;
    expectChannels(color, gray, gray, gray);
  }
}

TEST(ToGray, MakesANumberedColourAUserColour) {
  Color color(SV::COL_LIGHTRED);
  toGray(color);
  expectChannels(color, 76 << 8, 76 << 8, 76 << 8);
}

TEST(ToGray, OfAQuadLeavesItsReservedByte) {
  for (unsigned long packed = 0; packed < kAllColors; packed += 251) {
    RGBQUAD quad = {static_cast<BYTE>(blueOf(packed)), static_cast<BYTE>(greenOf(packed)),
                    static_cast<BYTE>(redOf(packed)), static_cast<BYTE>(packed % 256)};
    toGray(quad);
    int const gray = grayValue(packed);
    ASSERT_TRUE(quad.rgbBlue == gray && quad.rgbGreen == gray && quad.rgbRed == gray) << packed;
    ASSERT_EQ(quad.rgbReserved, packed % 256);
  }
}

/// The search for the tint in whole and broken numbers of its own, with white and a base in bytes.
unsigned long plainSelectFill(int grayOfColor, unsigned long base) {
  int const target = grayOfColor < 25 ? 0 : grayOfColor - 25;
  double from = 0;
  double to = 1;
  double share = 0.5;
  for (;;) {
    unsigned long packed = 0;
    for (int shift : {0, 8, 16}) {
      auto const channel = static_cast<unsigned>(0xFF00 * (1 - share) + ((base >> shift & 0xFF) << 8) * share);
      packed |= static_cast<unsigned long>(channel >> 8) << shift;
    }
    int const gray = plainGray(redOf(packed), greenOf(packed), blueOf(packed));
    if (gray == target)
      return packed;
    if (gray > target)
      from = share;
    else
      to = share;
    share = (from + to) / 2;
    if (to - from <= 0.0001)
      return packed;
  }
}

class SelectFill : public testing::TestWithParam<bool> {
protected:
  unsigned long base() const { return GetSysColor(GetParam() ? COLOR_HIGHLIGHT : COLOR_BTNFACE); }
};

TEST_P(SelectFill, OfEveryGrayIsThatOfAPlainComputation) {
  for (unsigned value = 0; value < 256; ++value) {
    int const gray = plainGray(value, value, value);
    EXPECT_EQ(getSelectFillInColor(grayColor(value), GetParam()).GetRGB(), plainSelectFill(gray, base())) << value;
  }
}

TEST_P(SelectFill, IsDarkerBy25WhereWhiteAndTheBaseReachThat) {
  int const darkest = grayValue(base());
  for (unsigned value = 0; value < 256; ++value) {
    int const target = std::max(plainGray(value, value, value) - 25, 0);
    int const gray = grayValue(getSelectFillInColor(grayColor(value), GetParam()).GetRGB());
    if (target <= darkest)
      EXPECT_NEAR(gray, darkest, 3) << value; // as dark as it gets
    else
      EXPECT_NEAR(gray, target, 2) << value; // the three parts may step together
  }
}

TEST_P(SelectFill, OfColoursOfOneGrayIsTheSame) {
  unsigned long const byGray = getSelectFillInColor(grayColor(200), GetParam()).GetRGB();
  int const gray = grayValue(grayColor(200).GetRGB());
  for (unsigned long packed = 0; packed < kAllColors; packed += 65521) {
    unsigned long const filled = getSelectFillInColor(colorOf(packed), GetParam()).GetRGB();
    EXPECT_TRUE(filled == byGray || grayValue(packed) != gray) << packed;
  }
}

char const * baseName(testing::TestParamInfo<bool> const & base) { return base.param ? "Highlight" : "Face"; }
INSTANTIATE_TEST_SUITE_P(Base, SelectFill, testing::Bool(), baseName);

TEST(SelectFillColours, OfTheTwoBasesDiffer) {
  if (GetSysColor(COLOR_HIGHLIGHT) == GetSysColor(COLOR_BTNFACE))
    GTEST_SKIP() << "this system shows both in one colour";
  EXPECT_NE(getSelectFillInColor(SV::COL_BLACK, false).GetRGB(), getSelectFillInColor(SV::COL_BLACK, true).GetRGB());
}

} // namespace
