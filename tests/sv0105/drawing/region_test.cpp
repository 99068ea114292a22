#include "sv0105/drawing/page.hpp"

namespace {

using SV::Rectangle;
using SV::Region;
using namespace svtest;

TEST(RegionBounds, AreThoseOfItsRectangle) {
  Region const region(Rectangle(2, 3, 9, 7));
  EXPECT_FALSE(region.IsUnlimited());
  EXPECT_FALSE(region.IsEmpty());
  EXPECT_EQ(region.GetBoundRect(), Rectangle(2, 3, 9, 7));
}

TEST(RegionBounds, OfAnInvertedRectangleHoldNothing) {
  for (Rectangle const & rectangle : {Rectangle(), Rectangle(9, 7, 2, 3), Rectangle({3, 3}, {0, 5})})
    EXPECT_TRUE(Region(rectangle).IsEmpty());
}

TEST(RegionWithoutLimit, StaysSoUntilItIsIntersected) {
  Region region;
  region.Union({1, 1, 2, 2});
  region.Exclude({1, 1, 2, 2});
  EXPECT_TRUE(region.IsUnlimited());
  EXPECT_FALSE(region.IsEmpty());
  region.Intersect({1, 1, 2, 2});
  EXPECT_EQ(region.GetBoundRect(), Rectangle(1, 1, 2, 2));
}

TEST(RegionChange, LeavesCopiesAsTheyAre) {
  Region const first(Rectangle(0, 0, 9, 9));
  Region second = first;
  second.Intersect({0, 0, 4, 4});
  EXPECT_EQ(first.GetBoundRect(), Rectangle(0, 0, 9, 9));
  EXPECT_EQ(second.GetBoundRect(), Rectangle(0, 0, 4, 4));
  second.Exclude({0, 0, 4, 4});
  EXPECT_TRUE(second.IsEmpty());
  second.Union({7, 7, 8, 8});
  EXPECT_EQ(second.GetBoundRect(), Rectangle(7, 7, 8, 8));
}

class Clipping : public DrawingTest {
protected:
  void fillAll() { fillIn(device, SV::COL_YELLOW, {{0, 0}, {40, 30}}); }
};

TEST_F(Clipping, LeavesWhatLiesOutside) {
  EXPECT_TRUE(device.ChangeClipRegion(Region(Rectangle(2, 3, 9, 7))).IsUnlimited());
  fillAll();
  EXPECT_EQ(drawn(), 8u * 5);
  EXPECT_EQ(pixel(9, 7), kYellow);
  EXPECT_EQ(pixel(10, 7), kWhite);
  EXPECT_EQ(device.ChangeClipRegion(Region()).GetBoundRect(), Rectangle(2, 3, 9, 7));
  fillAll();
  EXPECT_EQ(drawn(), 40u * 30);
}

TEST_F(Clipping, ToNothingDrawsNothing) {
  device.ChangeClipRegion(Region{Rectangle()});
  fillAll();
  EXPECT_EQ(drawn(), 0u);
}

TEST_F(Clipping, GoesAroundHoles) {
  Region region(Rectangle(0, 0, 9, 9));
  region.Exclude({3, 3, 5, 5});
  region.Union({20, 20, 20, 20});
  device.ChangeClipRegion(region);
  fillAll();
  EXPECT_EQ(drawn(), 100u - 9 + 1);
  EXPECT_EQ(pixel(4, 4), kWhite);
  EXPECT_EQ(pixel(20, 20), kYellow);
}

TEST_F(Clipping, HoldsForTheSystemsFunctionsToo) {
  device.ChangeClipRegion(Region(Rectangle(2, 3, 2, 3)));
  PatBlt(device.GethDC(), 0, 0, 40, 30, BLACKNESS);
  EXPECT_EQ(drawn(), 1u);
}

TEST_F(Clipping, LiesInsideOfWhatTheOwnerHadSet) {
  Page owned;
  IntersectClipRect(owned.context(), 0, 0, 5, 5);
  {
    SV::OutputDevice limited(owned.context());
    limited.ChangeClipRegion(Region(Rectangle(4, 4, 10, 10)));
    fillIn(limited, SV::COL_YELLOW, {{0, 0}, {40, 30}});
    EXPECT_EQ(owned.pixels().count(kYellow), 1u);
    limited.ChangeClipRegion(Region());
    limited.DrawRect({{0, 0}, {40, 30}});
    EXPECT_EQ(owned.pixels().count(kYellow), 25u);
  }
  RECT box;
  GetClipBox(owned.context(), &box);
  EXPECT_EQ(Rectangle(box), Rectangle({0, 0}, {5, 5}));
}

} // namespace
