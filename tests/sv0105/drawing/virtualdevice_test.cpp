#include "sv0105/drawing/page.hpp"

#include "support/imports/import_hook.hpp"

namespace {

using SV::Bitmap;
using SV::Rectangle;
using SV::VirtualDevice;
using namespace svtest;

class VirtualDeviceTest : public ToolkitTest {
protected:
  static support::Pixels pixels(VirtualDevice const & device) {
    SV::Size const size = device.GetOutputSizePixel();
    return support::readPixels(device.GethDC(), {0, 0, size.width, size.height});
  }
};

TEST_F(VirtualDeviceTest, HasNoPixelAtFirst) {
  VirtualDevice device;
  EXPECT_EQ(device.GetDepth(), 32);
  EXPECT_EQ(device.GetOutputSizePixel(), (SV::Size{0, 0}));
  device.DrawRect({{0, 0}, {5, 5}});
  device.Erase();
  EXPECT_TRUE(device.GetBitmap({0, 0}, {0, 0}).IsEmpty());
}

TEST_F(VirtualDeviceTest, IsErasedWithItsBackground) {
  VirtualDevice device;
  EXPECT_TRUE(device.SetOutputSizePixel({20, 10}));
  EXPECT_EQ(device.GetOutputSizePixel(), (SV::Size{20, 10}));
  EXPECT_EQ(pixels(device).count(kWhite), 200u);
  device.ChangeBackgroundBrush(SV::Brush(SV::COL_LIGHTRED));
  EXPECT_TRUE(device.SetOutputSizePixel({20, 10}));
  EXPECT_EQ(pixels(device).count(kRed), 200u);
  EXPECT_TRUE(device.SetOutputSizePixel({7, 30}));
  EXPECT_EQ(pixels(device).count(kRed), 210u);
}

TEST_F(VirtualDeviceTest, IsErasedToBlackWithoutABackground) {
  VirtualDevice device;
  device.SetOutputSizePixel({5, 5});
  device.ChangeBackgroundBrush(SV::Brush());
  device.SetOutputSizePixel({5, 5});
  EXPECT_EQ(pixels(device).count(kBlack), 25u);
  device.SetOutputSizePixel({6, 5});
  EXPECT_EQ(pixels(device).count(kBlack), 30u);
}

TEST_F(VirtualDeviceTest, KeepsWhatFitsWithoutErasing) {
  VirtualDevice device;
  device.SetOutputSizePixel({4, 4});
  device.DrawBitmap({0, 0}, squares({4, 4}));
  device.ChangeBackgroundBrush(SV::Brush(SV::COL_YELLOW));
  EXPECT_TRUE(device.SetOutputSizePixel({6, 2}, false));
  EXPECT_EQ(pixels(device).at(0, 0), kRed);
  EXPECT_EQ(pixels(device).at(3, 1), kWhite);
  EXPECT_EQ(pixels(device).count(kYellow), 4u);
  EXPECT_TRUE(device.SetOutputSizePixel({6, 2}, false));
  EXPECT_EQ(pixels(device).at(0, 0), kRed);
}

TEST_F(VirtualDeviceTest, IsErasedOutsideOfItsRegionToo) {
  VirtualDevice device;
  device.ChangeClipRegion(SV::Region(Rectangle(0, 0, 0, 0)));
  device.SetOutputSizePixel({5, 5});
  EXPECT_EQ(pixels(device).count(kWhite), 25u);
  device.DrawRect({{0, 0}, {5, 5}});
  EXPECT_EQ(pixels(device).count(kBlack), 1u);
}

TEST_F(VirtualDeviceTest, KeepsPenAndBrushThroughAChangeOfSize) {
  VirtualDevice device;
  device.ChangePen(SV::Pen(SV::COL_LIGHTRED, 3));
  device.SetOutputSizePixel({9, 9});
  device.DrawLine({4, 4}, {4, 4});
  device.SetOutputSizePixel({19, 19});
  device.DrawLine({0, 4}, {18, 4});
  EXPECT_GE(pixels(device).count(kRed), 19u * 3 - 4);
}

TEST_F(VirtualDeviceTest, OfASideBelow1HasNoPixel) {
  VirtualDevice device;
  device.SetOutputSizePixel({5, 5});
  for (SV::Size const & size : {SV::Size{0, 5}, SV::Size{5, -1}}) {
    EXPECT_TRUE(device.SetOutputSizePixel(size));
    EXPECT_EQ(device.GetOutputSizePixel(), (SV::Size{0, 0}));
  }
  EXPECT_TRUE(device.SetOutputSizePixel({1, 1}));
  EXPECT_EQ(pixels(device).count(kWhite), 1u);
}

TEST_F(VirtualDeviceTest, OfTooLargeASizeStaysAsItWas) {
  VirtualDevice device;
  device.SetOutputSizePixel({5, 5});
  device.ChangeBackgroundBrush(SV::Brush(SV::COL_LIGHTRED));
  EXPECT_FALSE(device.SetOutputSizePixel({0x7FFFFFF, 0x7FFFFFF}));
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, SV::EXC_SYSTEM_OBJECT_NOT_CREATED);
  EXPECT_EQ(device.GetOutputSizePixel(), (SV::Size{5, 5}));
  EXPECT_EQ(pixels(device).count(kWhite), 25u);
}

TEST_F(VirtualDeviceTest, GivesCopies) {
  VirtualDevice device;
  device.SetOutputSizePixel({4, 4});
  device.DrawBitmap({0, 0}, squares({4, 4}));
  Bitmap const copy = device.GetBitmap({1, 0}, {2, 3});
  EXPECT_EQ(copy.GetSizePixel(), (SV::Size{2, 3}));
  device.Erase();
  EXPECT_EQ(pixelOf(copy, 0, 0), kGreen);
  EXPECT_EQ(pixelOf(copy, 1, 2), kBlue);
}

TEST_F(VirtualDeviceTest, GivesCopiesThatAreBlackOutsideOfIt) {
  VirtualDevice device;
  device.SetOutputSizePixel({2, 2});
  Bitmap const copy = device.GetBitmap({-1, -1}, {4, 4});
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 4; ++x)
      EXPECT_EQ(pixelOf(copy, x, y), x % 3 && y % 3 ? kWhite : kBlack) << x << ' ' << y;
  EXPECT_EQ(pixelOf(device.GetBitmap({50, 50}, {1, 1}), 0, 0), kBlack);
  EXPECT_TRUE(device.GetBitmap({0, 0}, {0, 5}).IsEmpty());
}

TEST_F(VirtualDeviceTest, GivesCopiesInTheUnitOfItsMapMode) {
  VirtualDevice device;
  device.SetOutputSizePixel({30, 30});
  device.ChangeMapMode(SV::MapMode(SV::MAP_10TH_MM));
  EXPECT_EQ(device.GetBitmap({0, 0}, {40, 40}).GetSizePixel(), (SV::Size{15, 15}));
}

struct DepthRow {
  unsigned short asked;
  unsigned short depth;
  COLORREF shown; ///< of 0x30F0E0, in BGR
};

class Depth : public testing::TestWithParam<DepthRow> {};

TEST_P(Depth, ShowsTheNearestColourThatItHas) {
  VirtualDevice device(GetParam().asked);
  EXPECT_EQ(device.GetDepth(), GetParam().depth);
  device.SetOutputSizePixel({3, 3});
  device.ChangePen(SV::Pen());
  SV::Color color;
  color.SetRGB(0x30F0E0);
  device.ChangeFillInBrush(SV::Brush(color));
  device.DrawRect({{0, 0}, {3, 3}});
  DIBSECTION section = {};
  GetObjectA(GetCurrentObject(device.GethDC(), OBJ_BITMAP), sizeof section, &section);
  EXPECT_EQ(section.dsBm.bmBitsPixel, GetParam().depth);
  EXPECT_TRUE(support::alike(pixelOf(device.GetBitmap({0, 0}, {3, 3}), 1, 1), GetParam().shown, 8));
}

INSTANTIATE_TEST_SUITE_P(Table, Depth,
                         testing::Values(DepthRow{4, 4, 0x00FFFF}, DepthRow{8, 8, 0x33FFCC}, DepthRow{16, 16, 0x30F0E0},
                                         DepthRow{24, 24, 0x30F0E0}, DepthRow{32, 32, 0x30F0E0},
                                         DepthRow{0, 32, 0x30F0E0}, DepthRow{15, 32, 0x30F0E0},
                                         DepthRow{0xFFFF, 32, 0x30F0E0}));

TEST_F(VirtualDeviceTest, OfDepth1IsBlackAndWhite) {
  VirtualDevice device(1);
  EXPECT_EQ(device.GetDepth(), 1);
  device.SetOutputSizePixel({4, 4});
  device.DrawLine({0, 0}, {3, 0});
  Bitmap const copy = device.GetBitmap({0, 0}, {4, 4});
  EXPECT_EQ(pixelOf(copy, 3, 0), kBlack);
  EXPECT_EQ(pixelOf(copy, 3, 1), kWhite);
}

HDC WINAPI refuseDevice(HDC) { return nullptr; }

TEST_F(VirtualDeviceTest, WithoutADeviceOfTheSystemHasNoSize) {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "GDI32.dll",
                          {{"CreateCompatibleDC", reinterpret_cast<void *>(refuseDevice)}});
  VirtualDevice device;
  EXPECT_FALSE(device.SetOutputSizePixel({5, 5}));
  EXPECT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(device.GethDC(), nullptr);
  device.DrawRect({{0, 0}, {5, 5}});
}

TEST(ScreenSize, IsTheSystems) {
  EXPECT_EQ(SV::System::GetScreenSizePixel(), (SV::Size{GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}));
  EXPECT_EQ(SV::System::GetVirtualScreenSizePixel(),
            (SV::Size{GetSystemMetrics(SM_CXVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN)}));
  EXPECT_GT(SV::System::GetScreenSizePixel().width, 100);
}

} // namespace
