#include "sv0105/drawing/page.hpp"

namespace {

using namespace svtest;

class Drawing : public testing::Test {
protected:
  COLORREF pixel(int x, int y) const { return page.pixel(x, y); }
  int drawn() const { return static_cast<int>(page.drawn()); }
  HDC context() const { return page.context(); }

  Page page;
};

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
  device.DrawLine({3, 6}, {3, 6});
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

/// What the pixels of a rectangle are by the rule: its edge with the pen, the rest with the brush.
support::Pixels ruledPixels(SV::Size const & size, SV::Rectangle const & rectangle, bool pen, bool brush) {
  std::vector<support::Pixel> pixels;
  for (long y = 0; y < size.height; ++y)
    for (long x = 0; x < size.width; ++x) {
      bool const isInside = !rectangle.IsEmpty() && x >= rectangle.Left() && x <= rectangle.Right() &&
                            y >= rectangle.Top() && y <= rectangle.Bottom();
      bool const isEdge = isInside && (x == rectangle.Left() || x == rectangle.Right() || y == rectangle.Top() ||
                                       y == rectangle.Bottom());
      pixels.push_back(isEdge && pen ? kRed : isInside && brush ? kYellow : kWhite);
    }
  return {size.width, size.height, std::move(pixels)};
}

class DrawnRectangle : public testing::TestWithParam<SV::Rectangle> {};

TEST_P(DrawnRectangle, HasItsEdgeInThePenAndItsInsideInTheBrush) {
  SV::Size const size = {400, 320};
  Page page(size);
  SV::OutputDevice device(page.context());
  for (bool const pen : {false, true})
    for (bool const brush : {false, true}) {
      page.wipe();
      device.ChangePen(pen ? SV::Pen(SV::COL_LIGHTRED) : SV::Pen());
      device.ChangeFillInBrush(brush ? SV::Brush(SV::COL_YELLOW) : SV::Brush());
      device.DrawRect(GetParam());
      EXPECT_TRUE(page.pixels() == ruledPixels(size, GetParam(), pen, brush)) << pen << brush;
    }
}

INSTANTIATE_TEST_SUITE_P(Table, DrawnRectangle,
                         testing::Values(SV::Rectangle({5, 5}, {0, 0}), SV::Rectangle({5, 5}, {0, 9}),
                                         SV::Rectangle({5, 5}, {9, 0}), SV::Rectangle({5, 5}, {1, 1}),
                                         SV::Rectangle({5, 5}, {1, 9}), SV::Rectangle({5, 5}, {9, 1}),
                                         SV::Rectangle({5, 5}, {2, 2}), SV::Rectangle({5, 5}, {3, 3}),
                                         SV::Rectangle({5, 5}, {16, 16}), SV::Rectangle({5, 5}, {300, 300}),
                                         SV::Rectangle(20, 20, 10, 10), SV::Rectangle(20, 10, 10, 20),
                                         SV::Rectangle({5, 5}, {-9, -9}), SV::Rectangle({0, 0}, {32767, 32767}),
                                         SV::Rectangle({-32767, -32767}, {32768, 32768}),
                                         SV::Rectangle({-2147483647, 7}, {2147483647, 2147483647})));

TEST_F(Drawing, OfALineAcrossContainsBothEndsAsWell) {
  SV::OutputDevice device(context());
  device.DrawLine({3, 4}, {13, 9});
  EXPECT_EQ(pixel(3, 4), kBlack);
  EXPECT_EQ(pixel(13, 9), kBlack);
  EXPECT_EQ(drawn(), 11);
  device.DrawLine({30, 29}, {20, 4});
  EXPECT_EQ(pixel(30, 29), kBlack);
  EXPECT_EQ(pixel(20, 4), kBlack);
}

TEST_F(Drawing, OfALineInEveryDirectionHasItsLength) {
  SV::OutputDevice device(context());
  for (SV::Point const & end : {SV::Point{30, 15}, SV::Point{10, 15}, SV::Point{20, 25}, SV::Point{20, 5}}) {
    page.wipe();
    device.DrawLine({20, 15}, end);
    EXPECT_EQ(drawn(), 11) << end.x << ' ' << end.y;
    EXPECT_EQ(pixel(static_cast<int>(end.x), static_cast<int>(end.y)), kBlack);
    EXPECT_EQ(pixel(20, 15), kBlack);
  }
}

TEST_F(Drawing, OfALineFromFarAwayCrossesAll) {
  SV::OutputDevice device(context());
  device.DrawLine({-2147483647, 3}, {2147483647, 3});
  EXPECT_EQ(drawn(), 40);
}

TEST_F(Drawing, BeginsWithABlackPenAndNoBrush) {
  SV::OutputDevice device(context());
  device.DrawRect({{2, 3}, {8, 5}});
  EXPECT_EQ(pixel(2, 3), kBlack);
  EXPECT_EQ(drawn(), 22);
}

TEST_F(Drawing, ErasesAllWithTheBackgroundBrush) {
  SV::OutputDevice device(context());
  device.ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
  EXPECT_EQ(device.ChangeBackgroundBrush(SV::Brush(SV::COL_LIGHTRED)).GetColor().GetColorName(), SV::COL_WHITE);
  device.Erase();
  EXPECT_EQ(page.pixels().count(kRed), 40u * 30);
  device.ChangePen(SV::Pen());
  device.DrawRect({{0, 0}, {40, 30}});
  EXPECT_EQ(page.pixels().count(kYellow), 40u * 30);
  device.ChangeBackgroundBrush(SV::Brush());
  device.Erase();
  EXPECT_EQ(page.pixels().count(kYellow), 40u * 30);
}

TEST_F(Drawing, PutsBackWhatWasPushed) {
  SV::OutputDevice device(context());
  device.Pop();
  device.ChangePen(SV::Pen(SV::COL_LIGHTRED));
  device.ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
  device.ChangeFont(SV::Font("Arial", {0, 20}));
  device.ChangeBackgroundBrush(SV::Brush(SV::COL_LIGHTGREEN));
  device.ChangeClipRegion(SV::Region(SV::Rectangle(0, 0, 19, 19)));
  device.Push();
  device.Push();
  device.ChangePen(SV::Pen());
  device.ChangeFillInBrush(SV::Brush());
  device.ChangeFont(SV::Font("Arial", {0, 9}));
  device.ChangeBackgroundBrush(SV::Brush());
  device.ChangeClipRegion(SV::Region());
  device.ChangeMapMode(SV::MapMode(SV::MAP_10TH_MM));
  device.Pop();
  device.Pop();
  device.Pop();
  device.DrawRect({{2, 2}, {100, 5}});
  EXPECT_EQ(pixel(2, 2), kRed);
  EXPECT_EQ(pixel(3, 3), kYellow);
  EXPECT_EQ(drawn(), 18 * 5);
  EXPECT_GE(device.GetTextSize("x").height, 20);
  EXPECT_EQ(device.GetBackgroundBrush().GetColor().GetColorName(), SV::COL_LIGHTGREEN);
  EXPECT_EQ(device.GetMapMode(), SV::MapMode());
}

TEST_F(Drawing, WithoutAContextDrawsNothingAndMeasuresAsTheScreen) {
  SV::OutputDevice device(nullptr);
  EXPECT_EQ(device.GethDC(), nullptr);
  device.DrawRect({{2, 3}, {8, 5}});
  device.DrawLine({2, 3}, {8, 5});
  device.DrawText({2, 3}, "text");
  device.DrawBitmap({2, 3}, squares({2, 2}));
  device.GradientFill(true, {{2, 3}, {8, 5}}, SV::COL_RED, SV::COL_BLUE);
  device.Erase();
  device.ChangeFont(SV::Font("Arial", {0, 20}));
  SV::OutputDevice onPage(context());
  onPage.ChangeFont(SV::Font("Arial", {0, 20}));
  EXPECT_EQ(device.GetTextSize("text"), onPage.GetTextSize("text"));
  for (SV::OutputDevice * each : {&device, &onPage})
    each->ChangeMapMode(SV::MapMode(SV::MAP_10TH_MM));
  EXPECT_EQ(device.GetTextSize("text"), onPage.GetTextSize("text"));
  EXPECT_EQ(device.GetSolidColor(SV::COL_RED).GetColorName(), SV::COL_RED);
}

TEST_F(Drawing, ShowsEveryColourAsItIs) {
  SV::OutputDevice const device(context());
  EXPECT_EQ(device.GetSolidColor(SV::Color(0xC000, 0xC000, 0xC100)).GetRGB(), 0xC1C0C0u);
  EXPECT_EQ(device.GetSolidColor(SV::COL_FACE).GetRGB(), GetSysColor(COLOR_BTNFACE));
}

TEST_F(Drawing, OfAnEmptyTextIsNothingButHasTheHeightOfTheFont) {
  SV::OutputDevice device(context());
  device.DrawText({2, 2}, "");
  EXPECT_EQ(drawn(), 0);
  EXPECT_EQ(device.GetTextSize("").width, 0);
  EXPECT_EQ(device.GetTextSize("").height, device.GetTextSize("x").height);
}

TEST_F(Drawing, OfATextOfAMegabyteFillsTheLineAndIsMeasured) {
  SV::OutputDevice device(context());
  SV::Font font("Courier New", {0, 12});
  font.ChangeFillColor(SV::COL_YELLOW);
  device.ChangeFont(font);
  constexpr int kLength = 1024 * 1024;
  SV::String const text(std::string(kLength, 'm').c_str());
  SV::Size const one = device.GetTextSize("m");
  EXPECT_EQ(device.GetTextSize(text), (SV::Size{one.width * kLength, one.height}));
  device.DrawText({0, 0}, text);
  EXPECT_EQ(drawn(), 40 * one.height);
}

TEST_F(Drawing, OfALongTextHasNoSeams) {
  SV::Size const size = {60'000, 20};
  Page whole(size);
  Page halves(size);
  SV::Font font("Courier New", {0, 12});
  font.ChangeTransparent(true); // the ground of a piece would cut the letter before it
  SV::OutputDevice device(whole.context());
  device.ChangeFont(font);
  std::string text;
  for (int i = 0; text.size() < 8'500; ++i)
    text += std::to_string(i);
  device.DrawText({0, 0}, text.c_str());
  SV::OutputDevice other(halves.context());
  other.ChangeFont(font);
  long x = 0;
  for (std::size_t at = 0; at < text.size(); at += 500) {
    SV::String const piece(text.substr(at, 500).c_str());
    other.DrawText({x, 0}, piece);
    x += other.GetTextSize(piece).width;
  }
  EXPECT_EQ(device.GetTextSize(text.c_str()).width, x);
  EXPECT_TRUE(whole.pixels() == halves.pixels());
}

TEST_F(Drawing, OfUmlautsIsThatOfTheSystem) {
  SV::OutputDevice device(context());
  SV::Font const font("Arial", {0, 14});
  device.ChangeFont(font);
  device.DrawText({1, 1}, "\xC4\xF6\xDF");
  Page system;
  HFONT const handle = font.CreateSystemFont();
  HGDIOBJ const former = SelectObject(system.context(), handle);
  SetTextColor(system.context(), GetSysColor(COLOR_WINDOWTEXT));
  SetBkColor(system.context(), GetSysColor(COLOR_WINDOW));
  TextOutW(system.context(), 1, 1, L"\u00C4\u00F6\u00DF", 3);
  EXPECT_TRUE(page.pixels() == system.pixels());
  EXPECT_GT(drawn(), 20);
  DeleteObject(SelectObject(system.context(), former));
}

TEST_F(Drawing, OfBoldTextIsBroader) {
  SV::OutputDevice device(context());
  SV::Font font("Arial", {0, 20});
  device.ChangeFont(font);
  long const normal = device.GetTextSize("Weight").width;
  EXPECT_EQ(font.ChangeWeight(SV::WEIGHT_BOLD), SV::WEIGHT_NORMAL);
  device.ChangeFont(font);
  EXPECT_GT(device.GetTextSize("Weight").width, normal);
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
    device.ChangePen(SV::Pen(SV::COL_RED, 3));
    device.ChangeFillInBrush(SV::Brush(SV::COL_RED));
    device.ChangeFont(SV::Font("Arial", {0, 12}));
    device.DrawRect({{1, 1}, {9, 9}});
    device.DrawText({1, 1}, "text");
  }
  EXPECT_EQ(GetCurrentObject(context(), OBJ_PEN), pen);
  EXPECT_EQ(GetCurrentObject(context(), OBJ_BRUSH), brush);
  EXPECT_EQ(GetCurrentObject(context(), OBJ_FONT), font);
  EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), before + 2);
}

} // namespace
