#include "sv0105/drawing/page.hpp"

namespace {

using SV::Bitmap;
using SV::Image;
using SV::Rectangle;
using SV::Size;
using namespace svtest;

class Pictured : public ToolkitTest {};

TEST_F(Pictured, HasTheMaskItWasMadeWith) {
  EXPECT_EQ(Image(squares({2, 2})).GetMaskMode(), SV::IMAGE_MASK_NONE);
  Image const image(squares({2, 2}), SV::IMAGE_MASK_COLOR, SV::COL_LIGHTRED);
  EXPECT_EQ(image.GetMaskMode(), SV::IMAGE_MASK_COLOR);
  EXPECT_EQ(image.GetMaskColor().GetRGB(), kRed);
}

struct RescaleRow {
  Size from;
  Size to;
};

class Rescaled : public testing::TestWithParam<RescaleRow> {
protected:
  TestApplication application;
};

TEST_P(Rescaled, TakesThePixelThatTheMiddleOfTheNewOneLiesIn) {
  auto const & [from, to] = GetParam();
  Bitmap const before = squares(from);
  Image image(before);
  ASSERT_TRUE(image.Rescale(to, SV::IMAGE_FILTER_NEAREST));
  ASSERT_EQ(image.GetSizePixel(), to);
  for (int y = 0; y < to.height; ++y)
    for (int x = 0; x < to.width; ++x) {
      int const column = static_cast<int>((x + 0.5) * from.width / to.width);
      int const line = static_cast<int>((y + 0.5) * from.height / to.height);
      ASSERT_EQ(pixelOf(image.GetBitmap(), x, y), pixelOf(before, column, line)) << x << ' ' << y;
    }
}

INSTANTIATE_TEST_SUITE_P(Table, Rescaled,
                         testing::Values(RescaleRow{{1, 1}, {5, 3}}, RescaleRow{{5, 3}, {1, 1}},
                                         RescaleRow{{2, 2}, {6, 6}}, RescaleRow{{7, 5}, {3, 11}},
                                         RescaleRow{{10, 10}, {9, 8}}));

TEST_F(Pictured, ThatIsRescaledLeavesCopiesAlone) {
  Image const first(squares({4, 4}), SV::IMAGE_MASK_COLOR, SV::COL_LIGHTRED);
  Image second = first;
  second.Rescale({2, 2});
  EXPECT_EQ(first.GetSizePixel(), (Size{4, 4}));
  EXPECT_EQ(second.GetMaskMode(), SV::IMAGE_MASK_COLOR);
  EXPECT_EQ(second.GetMaskColor().GetRGB(), kRed);
}

TEST_F(Pictured, RescaledToItsOwnSizeSharesItsPixels) {
  Bitmap const bitmap = squares({4, 4});
  Image image(bitmap);
  EXPECT_TRUE(image.Rescale({4, 4}));
  EXPECT_EQ(image.GetBitmap().GethBitmap(), bitmap.GethBitmap());
}

TEST_F(Pictured, RescaledToASideBelow1IsEmpty) {
  for (Size const & size : {Size{0, 4}, Size{4, 0}, Size{-4, 4}}) {
    Image image(squares({4, 4}));
    EXPECT_TRUE(image.Rescale(size));
    EXPECT_TRUE(image.IsEmpty());
  }
}

TEST_F(Pictured, ThatIsEmptyIsNeitherRescaledNorCropped) {
  Image image;
  EXPECT_FALSE(image.Rescale({4, 4}));
  EXPECT_FALSE(image.Crop({0, 0, 3, 3}));
  EXPECT_TRUE(image.IsEmpty());
}

TEST_F(Pictured, RescaledBeyondWhatTheSystemGivesStaysAsItWas) {
  Image image(squares({4, 4}));
  EXPECT_FALSE(image.Rescale({0x7FFFFFF, 0x7FFFFFF}));
  EXPECT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(image.GetSizePixel(), (Size{4, 4}));
}

TEST_F(Pictured, CroppedKeepsThePart) {
  Bitmap const before = squares({5, 4});
  Image image(before);
  EXPECT_TRUE(image.Crop({1, 2, 3, 3}));
  ASSERT_EQ(image.GetSizePixel(), (Size{3, 2}));
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 3; ++x)
      EXPECT_EQ(pixelOf(image.GetBitmap(), x, y), pixelOf(before, x + 1, y + 2));
  EXPECT_EQ(pixelOf(before, 0, 0), kRed);
}

TEST_F(Pictured, CroppedBeyondItsEdgesEndsAtThem) {
  Image image(squares({5, 4}));
  EXPECT_TRUE(image.Crop({2, 1, 9, 9}));
  EXPECT_EQ(image.GetSizePixel(), (Size{3, 3}));
  EXPECT_TRUE(image.Crop({-5, -5, 1, 1}));
  EXPECT_EQ(image.GetSizePixel(), (Size{2, 2}));
}

TEST_F(Pictured, CroppedToAllOfItSharesItsPixels) {
  Bitmap const bitmap = squares({4, 4});
  Image image(bitmap);
  EXPECT_TRUE(image.Crop({-1, -1, 4, 4}));
  EXPECT_EQ(image.GetBitmap().GethBitmap(), bitmap.GethBitmap());
}

TEST_F(Pictured, CroppedOutsideOfItIsEmpty) {
  for (Rectangle const & part : {Rectangle(4, 0, 9, 9), Rectangle(3, 3, 2, 2), Rectangle()}) {
    Image image(squares({4, 4}));
    EXPECT_TRUE(image.Crop(part));
    EXPECT_TRUE(image.IsEmpty());
  }
}

TEST_F(Pictured, OfFewColoursIsChangedAsWell) {
  unsigned char const bits[] = {0b10100000, 0, 0b01000000, 0};
  Image image{Bitmap(CreateBitmap(3, 2, 1, 1, bits))};
  EXPECT_TRUE(image.Rescale({6, 4}));
  EXPECT_EQ(pixelOf(image.GetBitmap(), 0, 0), kWhite);
  EXPECT_EQ(pixelOf(image.GetBitmap(), 2, 1), kBlack);
  EXPECT_EQ(pixelOf(image.GetBitmap(), 3, 3), kWhite);
}

} // namespace
