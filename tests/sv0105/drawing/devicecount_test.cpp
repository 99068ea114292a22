// What drawing takes from the system, it gives back: counted where the library asks for it, and by doing it so often that a
// process that kept anything would get no more.

#include "sv0105/drawing/page.hpp"
#include "sv0105/gdicount.hpp"

namespace {

using SV::OutputDevice;
using SV::Rectangle;
using namespace svtest;

void drawAll(OutputDevice & device, int round) {
  device.Push();
  device.ChangePen(SV::Pen(SV::COL_LIGHTRED, 1 + round % 3));
  device.ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
  device.ChangeFont(SV::Font("Arial", {0, 9 + round % 2}));
  device.ChangeClipRegion(SV::Region(Rectangle(1, 1, 20, 20)));
  device.DrawRect({{0, 0}, {9, 9}});
  device.DrawLine({0, 0}, {9, 9});
  device.DrawText({0, 0}, "text");
  device.Pop();
}

class SystemObjects : public ToolkitTest {
protected:
  SystemObjects() { countGdiObjects(); }
};

TEST_F(SystemObjects, OfDevicesAreGivenBack) {
  Page page;
  SV::Bitmap const picture = squares({4, 4});
  {
    OutputDevice device(page.context());
    for (int round = 0; round < 20; ++round)
      drawAll(device, round);
    device.DrawBitmap({0, 0}, picture);
    SV::VirtualDevice memory;
    memory.SetOutputSizePixel({20, 20});
    memory.SetOutputSizePixel({30, 10}, false);
    drawAll(memory, 1);
    SV::Image image(memory.GetBitmap({0, 0}, {10, 10}), SV::IMAGE_MASK_COLOR, SV::COL_WHITE);
    image.Rescale({5, 5});
    image.Crop({1, 1, 2, 2});
    device.DrawImage({0, 0}, image);
    EXPECT_GT(gdiObjects(), 3);
  }
  SV::DeInitSV();
  EXPECT_EQ(gdiObjects(), 0);
}

TEST_F(SystemObjects, OfWindowsAreGivenBack) {
  {
    SV::Window window(nullptr);
    window.SetPosSizePixel({0, 0}, {50, 50});
    window.Show();
    int const before = gdiObjects();
    for (int round = 0; round < 20; ++round)
      drawAll(window, round);
    EXPECT_EQ(gdiObjects(), before);
    window.LogicToPixel(SV::Size{4, 8}, SV::MapMode(SV::MAP_APPFONT));
    EXPECT_EQ(gdiObjects(), before);
  }
  SV::DeInitSV();
  EXPECT_EQ(gdiObjects(), 0);
}

TEST_F(SystemObjects, AreStillThereAfterSeventyThousandRounds) {
  Page page;
  OutputDevice device(page.context());
  for (int round = 0; round < 70'000; ++round)
    drawAll(device, round);
  HPEN const pen = CreatePen(PS_SOLID, 2, 0);
  EXPECT_NE(pen, nullptr);
  DeleteObject(pen);
  page.wipe();
  drawAll(device, 0);
  EXPECT_GT(page.drawn(), 20u);
}

TEST_F(SystemObjects, AreStillThereAfterSeventyThousandDevicesAndRegions) {
  Page page;
  for (int round = 0; round < 70'000; ++round) {
    OutputDevice device(page.context());
    device.ChangePen(SV::Pen(SV::COL_LIGHTRED, 2));
    device.ChangeClipRegion(SV::Region(Rectangle(0, 0, 5, 5)));
    device.DrawLine({0, 0}, {9, 9});
  }
  EXPECT_EQ(gdiObjects(), 0);
  HDC const memory = CreateCompatibleDC(nullptr);
  EXPECT_NE(memory, nullptr);
  DeleteDC(memory);
}

} // namespace
