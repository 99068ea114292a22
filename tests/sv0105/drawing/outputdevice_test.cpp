#include "sv0105/application/testapplication.hpp"

namespace {

/// A device of 40 by 30 white pixels.
class DrawingTest : public testing::Test {
protected:
  DrawingTest() : context_(CreateCompatibleDC(nullptr)), former_(SelectObject(context_, bitmap_.GethBitmap())) {
    PatBlt(context_, 0, 0, 40, 30, WHITENESS);
  }
  ~DrawingTest() override {
    SelectObject(context_, former_);
    DeleteDC(context_);
  }

  COLORREF pixel(int x, int y) const { return GetPixel(context_, x, y); }

  /// The number of pixels that are not white.
  int drawn() const {
    int count = 0;
    for (int y = 0; y < 30; ++y)
      for (int x = 0; x < 40; ++x)
        count += pixel(x, y) != 0xFFFFFF;
    return count;
  }

  HDC context() const { return context_; }

private:
  SV::Bitmap bitmap_{SV::Size{40, 30}};
  HDC context_;
  HGDIOBJ former_;
};

using Drawing = DrawingTest;

TEST_F(Drawing, HasTheSizeOfItsBitmap) {
  SV::OutputDevice const device(context());
  EXPECT_EQ(device.GethDC(), context());
  EXPECT_EQ(device.GetOutputSizePixel(), (SV::Size{40, 30}));
}

TEST_F(Drawing, HasTheSizeOfTheClientAreaOfItsWindow) {
  HWND const window =
      CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_BORDER, 0, 0, 120, 80, nullptr, nullptr, nullptr, nullptr);
  RECT area = {};
  ASSERT_TRUE(GetClientRect(window, &area));
  HDC const drawing = GetDC(window);
  EXPECT_EQ(SV::OutputDevice(drawing).GetOutputSizePixel(), (SV::Size{area.right, area.bottom}));
  EXPECT_LT(area.right, 120);
  ReleaseDC(window, drawing);
  DestroyWindow(window);
}

TEST_F(Drawing, OfALineContainsBothEnds) {
  SV::OutputDevice device(context());
  device.ChangePen(SV::Pen(SV::COL_LIGHTBLUE));
  device.DrawLine({3, 4}, {12, 4});
  EXPECT_EQ(pixel(3, 4), 0xFF0000u);
  EXPECT_EQ(pixel(12, 4), 0xFF0000u);
  EXPECT_EQ(drawn(), 10);
  device.DrawLine({20, 20}, {20, 20});
  EXPECT_EQ(pixel(20, 20), 0xFF0000u);
  EXPECT_EQ(drawn(), 11);
  device.DrawLine({12, 10}, {3, 10});
  EXPECT_EQ(drawn(), 21);
}

TEST_F(Drawing, OfALineHasTheWidthOfThePen) {
  SV::OutputDevice device(context());
  device.ChangePen(SV::Pen(SV::COL_BLACK, 3));
  device.DrawLine({5, 10}, {15, 10});
  EXPECT_EQ(pixel(10, 9), 0u);
  EXPECT_EQ(pixel(10, 11), 0u);
  EXPECT_EQ(pixel(10, 12), 0xFFFFFFu);
}

TEST_F(Drawing, WithoutAPenLeavesLinesOut) {
  SV::OutputDevice device(context());
  device.ChangePen(SV::Pen());
  device.DrawLine({3, 4}, {12, 4});
  EXPECT_EQ(drawn(), 0);
}

TEST_F(Drawing, OfARectangleCoversExactlyItsSize) {
  SV::OutputDevice device(context());
  device.ChangePen(SV::Pen(SV::COL_BLACK));
  device.ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
  device.DrawRect({{2, 3}, {8, 5}});
  EXPECT_EQ(pixel(2, 3), 0u);
  EXPECT_EQ(pixel(9, 7), 0u);
  EXPECT_EQ(pixel(5, 5), 0x00FFFFu);
  EXPECT_EQ(drawn(), 8 * 5);
}

TEST_F(Drawing, OfARectangleWithoutAPenCoversItAsWell) {
  SV::OutputDevice device(context());
  device.ChangePen(SV::Pen());
  device.ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
  device.DrawRect({{2, 3}, {8, 5}});
  EXPECT_EQ(pixel(2, 3), 0x00FFFFu);
  EXPECT_EQ(pixel(9, 7), 0x00FFFFu);
  EXPECT_EQ(drawn(), 8 * 5);
}

TEST_F(Drawing, OfARectangleWithoutABrushIsItsEdge) {
  SV::OutputDevice device(context());
  device.DrawRect({{2, 3}, {8, 5}});
  EXPECT_EQ(pixel(5, 5), 0xFFFFFFu);
  EXPECT_EQ(drawn(), 2 * 8 + 2 * 3);
}

TEST_F(Drawing, OfAnEmptyRectangleIsNothing) {
  SV::OutputDevice device(context());
  device.ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
  for (SV::Size size : {SV::Size{0, 5}, SV::Size{5, 0}, SV::Size{-3, 5}})
    device.DrawRect({{10, 10}, size});
  EXPECT_EQ(drawn(), 0);
}

TEST_F(Drawing, OfTextUsesTheColoursOfTheFont) {
  SV::OutputDevice device(context());
  SV::Font font("Arial", {0, 14});
  font.ChangeColor(SV::COL_LIGHTRED);
  font.ChangeFillColor(SV::COL_LIGHTGREEN);
  device.ChangeFont(font);
  SV::Size const size = device.GetTextSize("H");
  EXPECT_GT(size.width, 3);
  EXPECT_GE(size.height, 14);
  device.DrawText({4, 5}, "H");
  EXPECT_EQ(pixel(4, 5), 0x00FF00u);
  EXPECT_EQ(drawn(), size.width * size.height);
  bool red = false;
  for (int x = 4; x < 4 + size.width; ++x)
    red = red || pixel(x, 5 + size.height / 2) == 0x0000FF;
  EXPECT_TRUE(red);
}

TEST_F(Drawing, OfTransparentTextLeavesTheBackground) {
  SV::OutputDevice device(context());
  SV::Font font("Arial", {0, 14});
  font.ChangeTransparent(true);
  device.ChangeFont(font);
  device.DrawText({4, 5}, "H");
  EXPECT_EQ(pixel(4, 5), 0xFFFFFFu);
  EXPECT_GT(drawn(), 10);
}

TEST_F(Drawing, OfABitmapIsOneToOneOrStretched) {
  SV::ResMgr manager("testres\\first72.dll");
  SV::Bitmap const bitmap(SV::ResId(10, &manager));
  SV::OutputDevice device(context());
  device.DrawBitmap({1, 2}, bitmap);
  EXPECT_EQ(pixel(1, 2), 0x0000FFu);
  EXPECT_EQ(pixel(2, 2), 0x00FF00u);
  EXPECT_EQ(pixel(3, 3), 0x563412u);
  EXPECT_EQ(drawn(), 5);
  device.DrawBitmap({{10, 10}, {6, 4}}, bitmap);
  EXPECT_EQ(pixel(11, 11), 0x0000FFu);
  EXPECT_EQ(pixel(15, 13), 0x563412u);
  device.DrawBitmap({0, 20}, SV::Bitmap());
  EXPECT_EQ(drawn(), 5 + 20);
}

TEST_F(Drawing, OfAnImageIsThatOfItsBitmap) {
  SV::ResMgr manager("testres\\first72.dll");
  SV::OutputDevice device(context());
  device.DrawImage({1, 2}, SV::Image(SV::ResId(10, &manager)));
  EXPECT_EQ(pixel(3, 3), 0x563412u);
}

TEST_F(Drawing, GivesTheFormerPenBrushAndFont) {
  SV::OutputDevice device(context());
  EXPECT_EQ(device.ChangePen(SV::Pen(SV::COL_RED, 2)).GetWidth(), 1);
  EXPECT_EQ(device.ChangePen(SV::Pen()).GetColor().GetColorName(), SV::COL_RED);
  EXPECT_TRUE(device.ChangePen(SV::Pen(SV::COL_BLACK, 0)).IsNone());
  EXPECT_EQ(device.ChangePen(SV::Pen()).GetWidth(), 1);
  EXPECT_TRUE(device.ChangeFillInBrush(SV::Brush(SV::COL_RED)).IsNone());
  EXPECT_EQ(device.ChangeFillInBrush(SV::Brush()).GetColor().GetColorName(), SV::COL_RED);
  device.ChangeFont(SV::Font("Arial", {0, 12}));
  EXPECT_STREQ(device.ChangeFont(SV::Font()).GetName().c_str(), "Arial");
}

TEST_F(Drawing, LeavesTheContextAsItWasAndNoObjects) {
  HGDIOBJ const pen = GetCurrentObject(context(), OBJ_PEN);
  HGDIOBJ const brush = GetCurrentObject(context(), OBJ_BRUSH);
  HGDIOBJ const font = GetCurrentObject(context(), OBJ_FONT);
  DWORD const before = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  for (int i = 0; i < 20; ++i) {
    SV::OutputDevice device(context());
    device.ChangePen(SV::Pen(SV::COL_RED));
    device.ChangeFillInBrush(SV::Brush(SV::COL_RED));
    device.ChangeFont(SV::Font("Arial", {0, 12}));
  }
  EXPECT_EQ(GetCurrentObject(context(), OBJ_PEN), pen);
  EXPECT_EQ(GetCurrentObject(context(), OBJ_BRUSH), brush);
  EXPECT_EQ(GetCurrentObject(context(), OBJ_FONT), font);
  EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), before + 2);
}

} // namespace
