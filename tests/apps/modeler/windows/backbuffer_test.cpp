#include "windows/backbuffer.hpp"

#include "support/windows/pixels.hpp"

#include <gtest/gtest.h>

namespace modeler {
namespace {

constexpr support::Pixel kWhite = 0xFFFFFF;
constexpr support::Pixel kRed = 0x0000FF;

/// A white picture of 20 by 20 pixels.
class LayoutBackBuffer : public testing::Test {
protected:
  LayoutBackBuffer()
      : screen_(GetDC(nullptr)), device_(CreateCompatibleDC(screen_)), bitmap_(CreateCompatibleBitmap(screen_, 20, 20)),
        former_(SelectObject(device_, bitmap_)) {
    PatBlt(device_, 0, 0, 20, 20, WHITENESS);
  }
  ~LayoutBackBuffer() override {
    SelectObject(device_, former_);
    DeleteObject(bitmap_);
    DeleteDC(device_);
    ReleaseDC(nullptr, screen_);
  }

  support::Pixels picture() const { return support::readPixels(device_, {0, 0, 20, 20}); }
  HDC device() const { return device_; }

private:
  HDC screen_;
  HDC device_;
  HBITMAP bitmap_;
  HGDIOBJ former_;
};

TEST_F(LayoutBackBuffer, ShowsNothingBeforeAllIsDrawn) {
  {
    BackBuffer const buffer(device(), {{4, 6}, {8, 8}});
    PatBlt(buffer.GethDC(), 4, 6, 8, 8, WHITENESS);
    SetPixelV(buffer.GethDC(), 5, 7, kRed);
    EXPECT_EQ(picture().count(kWhite), 400u);
  }
  EXPECT_EQ(picture().at(5, 7), kRed);
  EXPECT_EQ(picture().count(kWhite), 399u);
}

TEST_F(LayoutBackBuffer, LeavesWhatIsOutsideOfItsArea) {
  {
    BackBuffer const buffer(device(), {{4, 6}, {8, 8}});
    PatBlt(buffer.GethDC(), 0, 0, 20, 20, BLACKNESS);
  }
  EXPECT_EQ(picture().count(kWhite), 400u - 64u);
}

} // namespace
} // namespace modeler
