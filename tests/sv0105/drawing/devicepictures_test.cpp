#include "sv0105/drawing/page.hpp"

namespace {

using SV::Bitmap;
using SV::Image;
using SV::Rectangle;
using namespace svtest;

class Pictures : public DrawingTest {
protected:
  Pictures() { fillIn(device, SV::COL_YELLOW, {{0, 0}, {40, 30}}); }

  std::size_t count(COLORREF color) const { return page.pixels().count(color); }
};

TEST_F(Pictures, AreCopiedPixelByPixel) {
  device.DrawBitmap({3, 4}, squares({2, 2}));
  EXPECT_EQ(pixel(3, 4), kRed);
  EXPECT_EQ(pixel(4, 4), kGreen);
  EXPECT_EQ(pixel(3, 5), kBlue);
  EXPECT_EQ(pixel(4, 5), kWhite);
  EXPECT_EQ(count(kYellow), 40u * 30 - 4);
}

TEST_F(Pictures, AreStretchedFromTheNearestPixels) {
  device.DrawBitmap({{3, 4}, {6, 6}}, squares({2, 2}));
  for (COLORREF const color : {kRed, kGreen, kBlue, kWhite})
    EXPECT_EQ(count(color), 9u);
  EXPECT_EQ(pixel(8, 9), kWhite);
}

TEST_F(Pictures, AreLeftOutInEmptyAndInvertedAreas) {
  for (Rectangle const & area : {Rectangle({5, 5}, {0, 5}), Rectangle({5, 5}, {-5, -5}), Rectangle(9, 9, 5, 5)}) {
    device.DrawBitmap(area, squares({2, 2}));
    device.DrawTransparentBitmap(area, squares({2, 2}), SV::COL_WHITE);
    device.DrawImage(area, Image(squares({2, 2})));
    device.GradientFill(true, area, SV::COL_RED, SV::COL_BLUE);
  }
  device.DrawBitmap({0, 0}, Bitmap());
  device.DrawImage({0, 0}, Image());
  EXPECT_EQ(count(kYellow), 40u * 30);
}

TEST_F(Pictures, AreTransparentInExactlyOneColour) {
  device.DrawTransparentBitmap({3, 4}, squares({2, 2}), SV::COL_WHITE);
  EXPECT_EQ(pixel(3, 4), kRed);
  EXPECT_EQ(pixel(4, 5), kYellow);
  EXPECT_EQ(count(kYellow), 40u * 30 - 3);
  device.DrawTransparentBitmap({10, 10}, squares({2, 2}), SV::Color(0xFE00, 0xFF00, 0xFF00));
  EXPECT_EQ(pixel(11, 11), kWhite);
}

TEST_F(Pictures, AreTransparentWhenStretched) {
  device.DrawTransparentBitmap({{0, 0}, {10, 10}}, squares({2, 2}), SV::COL_LIGHTRED);
  EXPECT_EQ(count(kRed), 0u);
  EXPECT_EQ(count(kGreen), 25u);
  EXPECT_EQ(pixel(2, 2), kYellow);
}

// The system cannot make a bitmap of either area.
TEST_F(Pictures, AreTransparentAlsoWhereOneSideReachesFarBeyondTheDevice) {
  constexpr int kFar = 8'000'000;
  device.DrawTransparentBitmap({{0, 0}, {kFar, 4096}}, squares({2, 2}), SV::COL_BLACK);
  EXPECT_EQ(count(kRed), 40u * 30);
  device.DrawTransparentBitmap({{20, 4 - kFar / 2}, {4096, kFar}}, squares({2, 2}), SV::COL_BLACK);
  EXPECT_EQ(count(kRed), 40u * 30 - 20 * 26);
  EXPECT_EQ(count(kBlue), 20u * 26);
}

/// All operations that stretch, into one area: the first pixel of the picture is red.
class StretchedPictures : public Pictures, public testing::WithParamInterface<int> {
protected:
  void drawInto(Rectangle const & area) {
    Bitmap const picture = squares({2, 2});
    SV::VirtualDevice source;
    source.SetOutputSizePixel({2, 2});
    source.DrawBitmap({0, 0}, picture);
    switch (GetParam()) {
    case 0: device.DrawBitmap(area, picture); break;
    case 1: device.DrawTransparentBitmap(area, picture, SV::COL_BLACK); break;
    case 2: device.DrawImage(area, Image(picture, SV::IMAGE_MASK_COLOR, SV::COL_BLACK)); break;
    case 3: device.DrawImage(area, Image(picture)); break;
    default: device.DrawOutDev(area.TopLeft(), area.GetSize(), {0, 0}, {2, 2}, source);
    }
  }
};

TEST_P(StretchedPictures, MayReachFarBeyondTheDevice) {
  drawInto({{0, 0}, {32767, 32767}});
  EXPECT_EQ(count(kRed), 40u * 30);
}

TEST_P(StretchedPictures, FitIntoOnePixel) {
  drawInto({{7, 8}, {1, 1}});
  EXPECT_NE(pixel(7, 8), kYellow);
  EXPECT_EQ(count(kYellow), 40u * 30 - 1);
}

TEST_P(StretchedPictures, AreLeftOutInEmptyAndInvertedAreas) {
  for (Rectangle const & area : {Rectangle({5, 5}, {0, 5}), Rectangle({5, 5}, {5, 0}), Rectangle({5, 5}, {-5, -5}),
                                 Rectangle({5, 5}, {-32767, 5}), Rectangle(9, 9, 5, 5)})
    drawInto(area);
  EXPECT_EQ(count(kYellow), 40u * 30);
}

INSTANTIATE_TEST_SUITE_P(Operations, StretchedPictures, testing::Range(0, 5));

TEST_F(Pictures, OfImagesAreDrawnByTheirMaskMode) {
  device.DrawImage({3, 4}, Image(squares({2, 2})));
  EXPECT_EQ(pixel(3, 4), kRed);
  device.DrawImage({10, 10}, Image(squares({2, 2}), SV::IMAGE_MASK_COLOR, SV::COL_LIGHTRED));
  EXPECT_EQ(pixel(10, 10), kYellow);
  EXPECT_EQ(pixel(11, 10), kGreen);
  device.DrawImage({{20, 10}, {4, 4}}, Image(squares({2, 2}), SV::IMAGE_MASK_COLOR, SV::COL_LIGHTRED));
  EXPECT_EQ(pixel(21, 11), kYellow);
  EXPECT_EQ(pixel(22, 11), kGreen);
}

TEST_F(Pictures, ThatAreInAnotherDeviceAreLeftOut) {
  Bitmap const bitmap = squares({2, 2});
  HDC const other = CreateCompatibleDC(nullptr);
  HGDIOBJ const former = SelectObject(other, bitmap.GethBitmap());
  device.DrawBitmap({3, 4}, bitmap);
  EXPECT_EQ(count(kYellow), 40u * 30);
  SelectObject(other, former);
  DeleteDC(other);
  device.DrawBitmap({3, 4}, bitmap);
  EXPECT_EQ(pixel(3, 4), kRed);
}

TEST_F(Pictures, CanBeUsedElsewhereRightAfterTheyWereDrawn) {
  Bitmap const bitmap = squares({2, 2});
  device.DrawBitmap({3, 4}, bitmap);
  EXPECT_EQ(pixelOf(bitmap, 0, 0), kRed);
}

TEST_F(Pictures, FromAnotherDeviceAreCopied) {
  Page other({4, 4});
  SV::OutputDevice source(other.context());
  source.DrawBitmap({1, 1}, squares({2, 2}));
  device.DrawOutDev({5, 6}, {2, 2}, {1, 1}, {2, 2}, source);
  EXPECT_EQ(pixel(5, 6), kRed);
  EXPECT_EQ(pixel(6, 7), kWhite);
  EXPECT_EQ(count(kYellow), 40u * 30 - 4);
  device.DrawOutDev({10, 10}, {4, 4}, {1, 1}, {2, 2}, source);
  EXPECT_EQ(count(kRed), 1u + 4);
  device.DrawOutDev({20, 10}, {0, 4}, {1, 1}, {2, 2}, source);
  device.DrawOutDev({20, 10}, {4, 4}, {1, 1}, {-2, 2}, source);
  EXPECT_EQ(count(kRed), 1u + 4);
}

TEST_F(Pictures, FromTheSameDeviceMayOverlap) {
  device.DrawBitmap({0, 0}, squares({4, 1}));
  device.DrawOutDev({1, 0}, {4, 1}, {0, 0}, {4, 1}, device);
  EXPECT_EQ(pixel(1, 0), kRed);
  EXPECT_EQ(pixel(2, 0), kGreen);
  EXPECT_EQ(pixel(4, 0), kWhite);
}

TEST_F(Pictures, FromAnotherDeviceAreCountedInItsUnit) {
  Page other({20, 20});
  SV::OutputDevice source(other.context());
  source.DrawBitmap({15, 15}, squares({1, 1}));
  source.ChangeMapMode(SV::MapMode(SV::MAP_10TH_MM));
  device.DrawOutDev({5, 6}, {1, 1}, {40, 40}, {3, 3}, source);
  EXPECT_EQ(pixel(5, 6), kRed);
}

class Gradient : public DrawingTest {};

TEST_F(Gradient, RunsDownWhenItIsVertical) {
  device.GradientFill(true, Rectangle(2, 3, 11, 22), SV::COL_BLACK, SV::COL_LIGHTRED);
  EXPECT_EQ(drawn(), 10u * 20);
  for (int y = 3; y < 22; ++y) {
    EXPECT_LT(pixel(5, y), pixel(5, y + 1));
    EXPECT_EQ(pixel(2, y), pixel(11, y));
    EXPECT_TRUE(support::alike(pixel(5, y), static_cast<COLORREF>((y - 3) * 255 / 20))) << y;
  }
}

TEST_F(Gradient, RunsToTheRightOtherwise) {
  device.GradientFill(false, Rectangle(2, 3, 21, 12), SV::COL_LIGHTBLUE, SV::COL_BLACK);
  EXPECT_EQ(drawn(), 20u * 10);
  EXPECT_EQ(pixel(2, 3), kBlue);
  for (int x = 2; x < 21; ++x) {
    EXPECT_GT(pixel(x, 5), pixel(x + 1, 5));
    EXPECT_EQ(pixel(x, 3), pixel(x, 12));
  }
}

TEST_F(Gradient, OfOnePixelIsTheFirstColour) {
  device.GradientFill(true, {{2, 3}, {1, 1}}, SV::COL_LIGHTRED, SV::COL_LIGHTBLUE);
  EXPECT_EQ(pixel(2, 3), kRed);
  EXPECT_EQ(drawn(), 1u);
}

TEST_F(Gradient, MayReachFarBeyondTheDevice) {
  device.GradientFill(false, {{-10, -10}, {32767, 32767}}, SV::COL_LIGHTRED, SV::COL_LIGHTRED);
  EXPECT_EQ(page.pixels().count(kRed), 40u * 30);
}

} // namespace
