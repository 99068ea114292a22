// Fonts of the system, which a device makes when it first draws with one.

#include "support/imports/import_spy.hpp"
#include "sv0105/drawing/page.hpp"

namespace {

using namespace svtest;

/// What the system was asked to make.
std::vector<LOGFONTA> & made() {
  static std::vector<LOGFONTA> fonts;
  return fonts;
}

class DeviceFont : public DrawingTest {
protected:
  DeviceFont() {
    made().clear();
    support::spyOnImport("SV0105.dll", "CreateFontIndirectA", [](support::SpiedCall & call) {
      made().push_back(*reinterpret_cast<LOGFONTA const *>(call.arguments[0]));
    });
    device.ChangeFont(font);
    device.DrawText({1, 1}, "Text");
  }

  /// How many were made for drawing with another font, and how many again for the one from before.
  std::pair<std::size_t, std::size_t> madeFor(SV::Font const & other) {
    made().clear();
    device.ChangeFont(other);
    device.DrawText({1, 1}, "Text");
    std::size_t const first = made().size();
    device.ChangeFont(font);
    device.DrawText({1, 1}, "Text");
    return {first, made().size() - first};
  }

  SV::Font const font{"Arial", {0, 12}};
};

constexpr std::pair<std::size_t, std::size_t> kAnother = {1, 1};
constexpr std::pair<std::size_t, std::size_t> kTheSame = {0, 0};

TEST_F(DeviceFont, OfOtherColoursIsTheSameOfTheSystem) {
  SV::Font other = font;
  other.ChangeColor(SV::COL_RED);
  other.ChangeFillColor(SV::COL_YELLOW);
  other.ChangeTransparent(true);
  EXPECT_EQ(madeFor(other), kTheSame);
  EXPECT_EQ(madeFor(font), kTheSame);
}

TEST_F(DeviceFont, OfEveryOtherPropertyIsAnother) {
  SV::Font name = font;
  name.ChangeName("Courier New");
  SV::Font width = font;
  width.ChangeSize({9, 12});
  SV::Font height = font;
  height.ChangeSize({0, 13});
  SV::Font weight = font;
  weight.ChangeWeight(SV::WEIGHT_BOLD);
  SV::Font charSet = font;
  charSet.ChangeCharSet(238);
  SV::Font pitch = font;
  pitch.ChangePitch(SV::PITCH_FIXED);
  for (SV::Font const & other : {name, width, height, weight, charSet, pitch})
    EXPECT_EQ(madeFor(other), kAnother);
}

TEST_F(DeviceFont, OfAnotherUnitIsAnother) {
  made().clear();
  device.ChangeMapMode(SV::MapMode(SV::MAP_10TH_MM));
  device.DrawText({1, 1}, "Text");
  EXPECT_EQ(made().size(), 1u);
}

TEST_F(DeviceFont, HasItsColoursAfterThoseOfAnother) {
  SV::Font red = font;
  red.ChangeColor(SV::COL_LIGHTRED);
  red.ChangeFillColor(SV::COL_YELLOW);
  device.ChangeFont(red);
  page.wipe();
  device.DrawText({1, 1}, "Text");
  EXPECT_GT(page.pixels().count(kYellow), 20u);
  red.ChangeTransparent(true);
  red.ChangeColor(SV::COL_LIGHTBLUE);
  device.ChangeFont(red);
  page.wipe();
  device.DrawText({1, 1}, "Text");
  EXPECT_EQ(page.pixels().count(kYellow), 0u);
  EXPECT_GT(page.drawn(), 5u);
}

TEST_F(DeviceFont, IsTheFormerOneAgainAfterPop) {
  made().clear();
  device.Push();
  device.ChangeFont(SV::Font("Arial", {0, 20}));
  device.DrawText({1, 1}, "Text");
  device.Pop();
  page.wipe();
  device.DrawText({1, 1}, "Text");
  support::Pixels const shown = page.pixels();
  Page fresh;
  SV::OutputDevice other(fresh.context());
  other.ChangeFont(font);
  other.DrawText({1, 1}, "Text");
  EXPECT_TRUE(shown == fresh.pixels());
}

} // namespace
