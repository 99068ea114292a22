#include "acolor.hpp"

#include "support/data/random.hpp"

#include <gtest/gtest.h>

#include <algorithm>

using SV::Color;

namespace {

void expectChannels(Color const & color, unsigned red, unsigned green, unsigned blue) {
  EXPECT_EQ(color.GetColorName(), SV::COL_USER);
  EXPECT_EQ(color.GetRed(), red);
  EXPECT_EQ(color.GetGreen(), green);
  EXPECT_EQ(color.GetBlue(), blue);
}

TEST(MulColor, CutsEachProduct) {
  expectChannels(mulColor(Color(1, 3, 0x8001), 0.5), 0, 1, 0x4000);
  expectChannels(mulColor(Color(0x1234, 0x00FF, 0xFF00), 1), 0x1234, 0x00FF, 0xFF00);
  expectChannels(mulColor(Color(0x1234, 0x00FF, 0xFF00), 0), 0, 0, 0);
}

TEST(MulColor, ClampsWhatIsTooLarge) {
  expectChannels(mulColor(Color(0xF000, 0x1000, 0xFFFF), 1.25), 0xFFFF, 0x1400, 0xFFFF);
  expectChannels(mulColor(Color(1, 2, 0), 65535), 0xFFFF, 0xFFFF, 0);
  expectChannels(mulColor(Color(1, 0, 0), 65534.9), 65534, 0, 0);
  expectChannels(mulColor(Color(1, 0, 0), 1e300), 0xFFFF, 0, 0);
}

// The test for what is too large has no sign; themes rely on no factor making a colour darker than black.
TEST(MulColor, ANegativeProductCountsAsTooLarge) {
  expectChannels(mulColor(Color(100, 1, 0), -1), 0xFFFF, 0xFFFF, 0);
  expectChannels(mulColor(Color(100, 1, 0), -0.5), 0xFFFF, 0, 0); // half of 1 is cut to 0 first
  expectChannels(mulColor(Color(100, 1, 0), -1e300), 0xFFFF, 0xFFFF, 0);
}

TEST(MulColor, TakesNumberedColours) {
  expectChannels(mulColor(SV::COL_LIGHTGRAY, 0.5), 0x6000, 0x6000, 0x6000);
  expectChannels(mulColor(SV::COL_WHITE, 1), 0xFF00, 0xFF00, 0xFF00);
}

TEST(MulColor, OfEveryChannelIsThatOfWholeNumbers) {
  for (unsigned numerator : {0u, 1u, 100u, 255u, 256u, 257u, 320u, 512u, 1000u})
    for (unsigned channel = 0; channel <= 0xFFFF; ++channel) {
      auto const value = static_cast<unsigned short>(channel);
      unsigned const expected = std::min(channel * numerator / 256, 0xFFFFu);
      ASSERT_EQ(mulColor(Color(0, value, 0), numerator / 256.0).GetGreen(), expected) << channel << ' ' << numerator;
    }
}

TEST(SrcOver, GivesOneSideAtBothEnds) {
  Color const dest(0x1234, 0xFFFF, 0);
  Color const src(0xABCD, 1, 0xFF00);
  expectChannels(srcOver(dest, src, 0), 0x1234, 0xFFFF, 0);
  expectChannels(srcOver(dest, src, 1), 0xABCD, 1, 0xFF00);
  expectChannels(srcOver(SV::COL_BLACK, SV::COL_WHITE, 1), 0xFF00, 0xFF00, 0xFF00);
}

TEST(SrcOver, MixesAndCuts) {
  expectChannels(srcOver(Color(0, 0xFFFF, 3), Color(0xFFFF, 0, 4), 0.5), 0x7FFF, 0x7FFF, 3);
  expectChannels(srcOver(Color(0, 1000, 0), Color(1000, 0, 3), 0.25), 250, 750, 0);
}

TEST(SrcOver, DoesNotClamp) {
  expectChannels(srcOver(Color(0, 0x8000, 0), Color(0x9000, 0, 1), 2), 0x2000, 0x8000, 2);
  expectChannels(srcOver(Color(1, 0, 0), Color(0, 1, 0), -1), 2, 0xFFFF, 0);
  expectChannels(srcOver(Color(1, 0, 0), Color(0, 1, 0), 1e300), 0, 0, 0);
}

TEST(SrcOver, OfAnyChannelsIsThatOfWholeNumbers) {
  support::Random random(1);
  for (std::size_t i = 0; i < support::times(1'000'000); ++i) {
    auto const dest = static_cast<unsigned short>(random());
    auto const src = static_cast<unsigned short>(random());
    unsigned const share = random() % 257;
    unsigned const expected = (dest * (256 - share) + src * share) / 256;
    ASSERT_EQ(srcOver(Color(0, 0, dest), Color(0, 0, src), share / 256.0).GetBlue(), expected)
        << dest << ' ' << src << ' ' << share;
  }
}

} // namespace
