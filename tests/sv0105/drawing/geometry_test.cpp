#include "sv/sv.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <climits>

namespace {

using SV::Rectangle;

TEST(RectangleEdges, AllBelongToIt) {
  Rectangle const rectangle(2, 3, 9, 7);
  EXPECT_EQ(rectangle.TopLeft(), (SV::Point{2, 3}));
  EXPECT_EQ(rectangle.GetSize(), (SV::Size{8, 5}));
  EXPECT_EQ(rectangle.Right(), 9);
  EXPECT_EQ(rectangle.Bottom(), 7);
  EXPECT_EQ(rectangle, Rectangle({2, 3}, {8, 5}));
}

TEST(RectangleEdges, OfOnePixelAreTheSame) {
  Rectangle const rectangle({4, 5}, {1, 1});
  EXPECT_EQ(rectangle.Left(), rectangle.Right());
  EXPECT_EQ(rectangle.Top(), rectangle.Bottom());
  EXPECT_FALSE(rectangle.IsEmpty());
}

TEST(RectangleEdges, OfWidth0LieTheWrongWayRound) {
  Rectangle const rectangle({4, 5}, {0, 3});
  EXPECT_EQ(rectangle.Right(), 3);
  EXPECT_TRUE(rectangle.IsEmpty());
  EXPECT_TRUE(Rectangle().IsEmpty());
}

TEST(RectangleEdges, ThatAreInvertedStay) {
  Rectangle const rectangle(9, 7, 2, 3);
  EXPECT_EQ(rectangle.GetSize(), (SV::Size{-6, -3}));
  EXPECT_EQ(rectangle.Right(), 2);
  EXPECT_EQ(rectangle.Bottom(), 3);
  EXPECT_TRUE(rectangle.IsEmpty());
}

TEST(RectangleEdges, ThatDoNotFitAreTheNearestNumbers) {
  EXPECT_EQ(Rectangle(LONG_MIN, 0, LONG_MAX, 0).GetWidth(), LONG_MAX);
  EXPECT_EQ(Rectangle({LONG_MAX, 0}, {LONG_MAX, 1}).Right(), LONG_MAX);
  EXPECT_EQ(Rectangle({LONG_MIN, 0}, {LONG_MIN, 1}).Right(), LONG_MIN);
  EXPECT_EQ(Rectangle({LONG_MAX, LONG_MAX}, {5, 5}).ToSystem().bottom, LONG_MAX);
}

TEST(RectangleOfTheSystem, HasItsRightAndBottomEdgesOutside) {
  RECT const system = Rectangle(2, 3, 9, 7).ToSystem();
  EXPECT_EQ(system.left, 2);
  EXPECT_EQ(system.top, 3);
  EXPECT_EQ(system.right, 10);
  EXPECT_EQ(system.bottom, 8);
}

TEST(RectangleOfTheSystem, ComesBackTheSame) {
  for (Rectangle const & rectangle : {Rectangle(), Rectangle(0, 0, 0, 0), Rectangle(-5, -6, 32766, 32766),
                                      Rectangle(9, 7, 2, 3), Rectangle({1, 2}, {32767, 32767})})
    EXPECT_EQ(Rectangle(rectangle.ToSystem()), rectangle);
}

TEST(RectangleIntersection, IsWhatLiesInBoth) {
  Rectangle const whole(0, 0, 9, 9);
  EXPECT_EQ(whole.GetIntersection({5, 6, 20, 20}), Rectangle(5, 6, 9, 9));
  EXPECT_EQ(whole.GetIntersection({9, 9, 9, 9}), Rectangle(9, 9, 9, 9));
  EXPECT_EQ(whole.GetIntersection(whole), whole);
  EXPECT_TRUE(whole.GetIntersection({10, 0, 20, 9}).IsEmpty());
  EXPECT_TRUE(whole.GetIntersection({8, 8, 2, 2}).IsEmpty());
  EXPECT_TRUE(whole.GetIntersection(Rectangle()).IsEmpty());
}

} // namespace
