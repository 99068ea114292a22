#include "sv0105/drawing/page.hpp"

#include <climits>

namespace {

using SV::MapMode;
using SV::OutputDevice;
using SV::Point;
using SV::Rectangle;
using SV::Size;
using namespace svtest;

constexpr long kResolution = 96;

class Mapping : public DrawingTest {
protected:
  Mapping() {
    EXPECT_EQ(GetDeviceCaps(context(), LOGPIXELSX), kResolution);
    EXPECT_EQ(GetDeviceCaps(context(), LOGPIXELSY), kResolution);
  }
};

TEST_F(Mapping, CountsPixelsAtFirst) {
  EXPECT_EQ(device.GetMapMode(), MapMode(SV::MAP_PIXEL));
  EXPECT_EQ(device.LogicToPixel(Point{7, -9}), (Point{7, -9}));
  EXPECT_EQ(device.PixelToLogic(Size{7, 9}), (Size{7, 9}));
}

TEST_F(Mapping, OfAnUnknownUnitCountsPixels) {
  EXPECT_EQ(device.LogicToPixel(Point{7, 9}, MapMode(static_cast<SV::MapUnit>(99))), (Point{7, 9}));
}

struct TenthsRow {
  long tenths;
  long pixels; // at 96 an inch, halves away from 0
};

class Tenths : public testing::TestWithParam<TenthsRow> {};

TEST_P(Tenths, AreRoundedToTheNearestPixel) {
  Page const page;
  OutputDevice const device(page.context());
  auto const & [tenths, pixels] = GetParam();
  EXPECT_EQ(device.LogicToPixel(Point{tenths, -tenths}, MapMode(SV::MAP_10TH_MM)), (Point{pixels, -pixels}));
  EXPECT_EQ(device.LogicToPixel(Size{tenths, tenths}, MapMode(SV::MAP_10TH_MM)), (Size{pixels, pixels}));
}

INSTANTIATE_TEST_SUITE_P(Table, Tenths,
                         testing::Values(TenthsRow{0, 0}, TenthsRow{1, 0}, TenthsRow{2, 1}, TenthsRow{40, 15},
                                         TenthsRow{254, 96}, TenthsRow{2540, 960}, TenthsRow{32767, 12384}));

TEST_F(Mapping, AndBackGivesTheNearestUnit) {
  device.ChangeMapMode(MapMode(SV::MAP_10TH_MM));
  EXPECT_EQ(device.PixelToLogic(Point{96, 15}), (Point{254, 40}));
  EXPECT_EQ(device.GetOutputSize(), (Size{106, 79}));
  EXPECT_EQ(device.GetOutputSizePixel(), (Size{40, 30}));
}

TEST_F(Mapping, AndBackTakesEachSideOfARectangle) {
  Rectangle const pixels({15, 15}, {81, 81}); // to 96, which is 254 tenths
  Rectangle const tenths({40, 40}, {214, 214});
  EXPECT_EQ(device.PixelToLogic(pixels, MapMode(SV::MAP_10TH_MM)), tenths);
  EXPECT_EQ(device.PixelToLogic(pixels), pixels);
  device.ChangeMapMode(MapMode(SV::MAP_10TH_MM));
  EXPECT_EQ(device.PixelToLogic(pixels), tenths);
}

TEST_F(Mapping, BeyondTheLargestNumberIsThat) {
  MapMode const tenths(SV::MAP_10TH_MM);
  EXPECT_EQ(device.PixelToLogic(Point{LONG_MAX, LONG_MIN}, tenths), (Point{LONG_MAX, LONG_MIN}));
}

TEST_F(Mapping, KeepsRectanglesSideBySide) {
  MapMode const tenths(SV::MAP_10TH_MM);
  for (long at = 0; at < 500; at += 7) {
    Rectangle const first = device.LogicToPixel(Rectangle({at, at}, {7, 7}), tenths);
    Rectangle const second = device.LogicToPixel(Rectangle({at + 7, at + 7}, {7, 7}), tenths);
    EXPECT_EQ(first.Right() + 1, second.Left());
    EXPECT_EQ(first.Bottom() + 1, second.Top());
  }
}

TEST_F(Mapping, HoldsForAllThatIsDrawn) {
  device.ChangeMapMode(MapMode(SV::MAP_10TH_MM)); // 40 of them are 15 pixels
  fillIn(device, SV::COL_YELLOW, {{0, 0}, {40, 40}});
  EXPECT_EQ(drawn(), 15u * 15);
  page.wipe();
  device.ChangePen(SV::Pen(SV::COL_BLACK));
  device.DrawLine({0, 40}, {40, 40});
  EXPECT_EQ(drawn(), 16u);
  EXPECT_EQ(pixel(15, 15), kBlack);
  page.wipe();
  device.DrawBitmap({40, 40}, squares({2, 2}));
  EXPECT_EQ(pixel(15, 15), kRed);
  EXPECT_EQ(drawn(), 3u);
  page.wipe();
  device.DrawBitmap({{0, 0}, {40, 40}}, squares({1, 1}));
  EXPECT_EQ(drawn(), 15u * 15);
  page.wipe();
  device.GradientFill(false, {{0, 0}, {40, 40}}, SV::COL_RED, SV::COL_RED);
  EXPECT_EQ(drawn(), 15u * 15);
}

TEST_F(Mapping, HoldsForFontsAndPens) {
  device.ChangeFont(SV::Font("Arial", {0, 40}));
  Size const large = device.GetTextSize("Word");
  device.ChangeMapMode(MapMode(SV::MAP_10TH_MM));
  Size const small = device.GetTextSize("Word");
  EXPECT_NEAR(static_cast<double>(small.height), static_cast<double>(large.height), 4);
  EXPECT_NEAR(static_cast<double>(small.width), static_cast<double>(large.width), 16);
  EXPECT_LT(device.LogicToPixel(small).height, large.height / 2);
  device.ChangePen(SV::Pen(SV::COL_BLACK, 8)); // 3 pixels
  device.DrawLine({0, 40}, {100, 40});
  EXPECT_EQ(pixel(10, 14), kBlack);
  EXPECT_EQ(pixel(10, 16), kBlack);
  EXPECT_EQ(pixel(10, 13), kWhite);
  EXPECT_EQ(pixel(10, 17), kWhite);
}

TEST_F(Mapping, PutsNoRegionElsewhere) {
  device.ChangeClipRegion(SV::Region(Rectangle(0, 0, 9, 9)));
  device.ChangeMapMode(MapMode(SV::MAP_10TH_MM));
  fillIn(device, SV::COL_YELLOW, {{0, 0}, {400, 400}});
  EXPECT_EQ(drawn(), 100u);
}

TEST_F(Mapping, LeavesAContextInPixelsWhateverItsOwnerHadSet) {
  Page owned;
  SetMapMode(owned.context(), MM_LOMETRIC);
  {
    OutputDevice pixels(owned.context());
    fillIn(pixels, SV::COL_YELLOW, {{0, 0}, {5, 5}});
  }
  EXPECT_EQ(GetMapMode(owned.context()), MM_LOMETRIC);
  SetMapMode(owned.context(), MM_TEXT);
  EXPECT_EQ(owned.drawn(), 25u);
}

} // namespace
