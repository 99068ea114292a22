#include "acleanup.hpp"
#include "adrawcch.hpp"
#include "support/imports/import_hook.hpp"
#include "support/windows/pixels.hpp"
#include "sv0105/application/testapplication.hpp"

namespace {

using SV::Size;
using SV::VirtualDevice;

constexpr support::Pixel kWhite = 0xFFFFFF;

class Exit : public KivEvent {
public:
  Exit() : KivEvent(KIV_EVENT_AppExit) {}
};

/// What the toolkit is answered for the rectangle around all screens.
Size screens;

int WINAPI metrics(int index) {
  switch (index) {
  case SM_CXVIRTUALSCREEN: return static_cast<int>(screens.width);
  case SM_CYVIRTUALSCREEN: return static_cast<int>(screens.height);
  default: return GetSystemMetrics(index);
  }
}

void arrangeScreens(Size const & size) {
  screens = size;
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "USER32.dll",
                          {{"GetSystemMetrics", reinterpret_cast<void *>(metrics)}});
}

support::Pixels pixelsOf(VirtualDevice & device) {
  Size const size = device.GetOutputSizePixel();
  return support::readPixels(device.GethDC(), {0, 0, size.width, size.height});
}

bool isWhite(VirtualDevice & device) {
  support::Pixels const pixels = pixelsOf(device);
  return pixels.width() > 0 && pixels.colours() == 1 && pixels.at(0, 0) == kWhite;
}

void drawOn(VirtualDevice & device) {
  device.ChangePen(SV::Pen(SV::COL_LIGHTRED));
  device.ChangeFillInBrush(SV::Brush(SV::COL_BLACK));
  device.DrawRect({{2, 2}, {9, 7}});
}

class PaintBuffer : public testing::Test {
protected:
  ~PaintBuffer() override { Exit().trigger(); }

  TestApplication application;
};

TEST_F(PaintBuffer, IsAsLargeAsAllScreensWith32BitsAPixel) {
  VirtualDevice & device = KivPaintBuffer::VD();
  EXPECT_EQ(device.GetOutputSizePixel(), SV::System::GetVirtualScreenSizePixel());
  EXPECT_GT(device.GetOutputSizePixel().width, 0);
  EXPECT_EQ(device.GetDepth(), 32);
}

TEST_F(PaintBuffer, IsOneDevice) { EXPECT_EQ(&KivPaintBuffer::VD(), &KivPaintBuffer::VD()); }

TEST_F(PaintBuffer, IsWhiteAtFirst) {
  arrangeScreens({50, 30});
  EXPECT_TRUE(isWhite(KivPaintBuffer::VD()));
}

TEST_F(PaintBuffer, IsWhiteAgainAtEachCall) {
  arrangeScreens({50, 30});
  drawOn(KivPaintBuffer::VD());
  EXPECT_TRUE(isWhite(KivPaintBuffer::VD()));
  SetPixelV(KivPaintBuffer::VD().GethDC(), 49, 29, 0);
  EXPECT_TRUE(isWhite(KivPaintBuffer::VD()));
}

TEST_F(PaintBuffer, IsWhiteWithALimitAndAUnitOfItsLastUser) {
  arrangeScreens({50, 30});
  VirtualDevice & device = KivPaintBuffer::VD();
  drawOn(device);
  device.ChangeClipRegion(SV::Region(SV::Rectangle(0, 0, 3, 3)));
  device.ChangeMapMode(SV::MapMode(SV::MAP_10TH_MM));
  EXPECT_TRUE(isWhite(KivPaintBuffer::VD()));
  drawOn(device);
  EXPECT_EQ(pixelsOf(device).count(kWhite), 50u * 30 - 63) << "neither is in the way of the next";
}

TEST_F(PaintBuffer, HasNoPenAndAWhiteBrush) {
  arrangeScreens({50, 30});
  drawOn(KivPaintBuffer::VD());
  VirtualDevice & device = KivPaintBuffer::VD();
  EXPECT_TRUE(device.ChangePen(SV::Pen()).IsNone());
  SV::Brush const brush = device.ChangeFillInBrush(SV::Brush());
  ASSERT_FALSE(brush.IsNone());
  EXPECT_EQ(brush.GetColor().GetRed(), 0xFFFF);
  EXPECT_EQ(brush.GetColor().GetGreen(), 0xFFFF);
  EXPECT_EQ(brush.GetColor().GetBlue(), 0xFFFF);
}

TEST_F(PaintBuffer, GrowsAndShrinksWithTheScreensAtItsNextUse) {
  VirtualDevice * const device = &KivPaintBuffer::VD();
  for (Size const size :
       {Size{50, 30}, Size{51, 30}, Size{51, 31}, Size{20, 31}, Size{20, 3}, Size{1, 1}, Size{60, 40}}) {
    arrangeScreens(size);
    drawOn(*device);
    EXPECT_EQ(&KivPaintBuffer::VD(), device);
    EXPECT_EQ(device->GetOutputSizePixel(), size);
    EXPECT_TRUE(isWhite(*device));
  }
}

TEST_F(PaintBuffer, KeepsItsPixelsWhileTheScreensStayTheSame) {
  arrangeScreens({50, 30});
  HGDIOBJ const pixels = GetCurrentObject(KivPaintBuffer::VD().GethDC(), OBJ_BITMAP);
  for (int call = 0; call < 10; ++call)
    EXPECT_EQ(GetCurrentObject(KivPaintBuffer::VD().GethDC(), OBJ_BITMAP), pixels);
}

TEST_F(PaintBuffer, KeepsItsSizeWhenTheSystemRefusesANewOne) {
  arrangeScreens({50, 30});
  drawOn(KivPaintBuffer::VD());
  arrangeScreens({0x7FFFFFFF, 0x7FFFFFFF});
  VirtualDevice & device = KivPaintBuffer::VD();
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, SV::EXC_SYSTEM_OBJECT_NOT_CREATED);
  EXPECT_EQ(device.GetOutputSizePixel(), (Size{50, 30}));
  EXPECT_TRUE(isWhite(device));
}

TEST_F(PaintBuffer, IsDeletedByTheCleanUpAndMadeAnewAfterIt) {
  arrangeScreens({50, 30});
  HDC const former = KivPaintBuffer::VD().GethDC();
  EXPECT_EQ(GetObjectType(former), static_cast<DWORD>(OBJ_MEMDC));
  Exit().trigger();
  EXPECT_EQ(GetObjectType(former), 0u);
  EXPECT_TRUE(isWhite(KivPaintBuffer::VD()));
  Exit().trigger();
  EXPECT_TRUE(isWhite(KivPaintBuffer::VD()));
}

TEST_F(PaintBuffer, LivesInAnActionOfTheCleanUpThatComesBeforeIt) {
  arrangeScreens({50, 30});
  class Drawing : public KivCleanUpAction {
  public:
    bool execute() override { return drawOn(KivPaintBuffer::VD()), true; }
  };
  KivCleanUp::Instance().AddAction(new Drawing);
  KivPaintBuffer::VD();
  Exit().trigger();
  EXPECT_TRUE(isWhite(KivPaintBuffer::VD()));
}

} // namespace
