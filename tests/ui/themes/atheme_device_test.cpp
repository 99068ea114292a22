// What themes take from the system and leave behind on a device.

#include "support/memory/allocation.hpp"
#include "sv0105/gdicount.hpp"
#include "ui/themes/stylecalls.hpp"
#include "ui/themes/themetest.hpp"

#include <chrono>
#include <functional>
#include <limits>

namespace {

using namespace themetest;

void drawAll(KivTheme const & theme, SV::Window & window, SV::Rectangle const & area) {
  for (int part = -1; part <= 10; ++part) {
    auto const each = static_cast<KivThemeClass>(part);
    theme.Draw(window, each, area);
    theme.DrawText(window, each, area, "Properties of the model");
    for (bool const hot : {false, true})
      for (bool const pressed : {false, true}) {
        theme.DrawCloseButton(window, each, area, hot, pressed);
        theme.DrawToolbarButton(window, window, area, part % 2 == 0, hot, pressed, true);
      }
  }
  theme.DrawMenuBackground(window);
  theme.DrawToolbarBackground(window, true, area);
  theme.DrawToolbarBackground(window, false, area);
  theme.DrawStatusBarBackground(window, area);
}

struct NotedCalls {
  NotedCalls() { noteStyleCalls(); }
};

class ThemeDevice : NotedCalls, public ThemeTest, public testing::WithParamInterface<Case> {
protected:
  ThemeDevice() : ThemeTest(GetParam()) {}
};
INSTANTIATE_TEST_SUITE_P(Themes, ThemeDevice, allCases(), caseName);

TEST_P(ThemeDevice, GivesBackAllThatItTakesFromTheSystem) {
  drawAll(theme, window, {{10, 9}, {16, 16}}); // what is kept for good
  svtest::countGdiObjects({"SV0105.dll", "kivara.dll"});
  styleCalls() = {};
  for (SV::Rectangle const & area : areas()) {
    drawAll(theme, window, area);
    ASSERT_EQ(svtest::gdiObjects(), 0) << describe(area);
    ASSERT_EQ(styleCalls().open, 0) << describe(area);
  }
  EXPECT_EQ(styleCalls().opened.empty(), GetParam().styles != Styles::On);
}

TEST_P(ThemeDevice, ClosesItsHandleWhereTheSystemRefusesAPicture) {
  SV::Rectangle const tooLarge({0, 0}, {30'000, 30'000});
  svtest::countGdiObjects({"SV0105.dll", "kivara.dll"});
  support::replaceImports(
      GetModuleHandleA("kivara.dll"), "GDI32.dll",
      {{"CreateDIBSection", reinterpret_cast<void *>(+[](HDC, BITMAPINFO const *, UINT, void **, HANDLE,
                                                         DWORD) -> HBITMAP { return nullptr; })}});
  support::replaceImports(
      GetModuleHandleA("SV0105.dll"), "GDI32.dll",
      {{"CreateDIBSection", reinterpret_cast<void *>(+[](HDC, BITMAPINFO const *, UINT, void **, HANDLE,
                                                         DWORD) -> HBITMAP { return nullptr; })}});
  for (KivThemeClass const part : {CaptionInactive, PlainCaptionInactive})
    theme.DrawCloseButton(window, part, tooLarge, false, false);
  EXPECT_EQ(styleCalls().open, 0);
}

/// The pen, brush, font and region that a device draws with.
void setUp(SV::OutputDevice & device) {
  device.ChangePen(SV::Pen(SV::COL_LIGHTRED));
  device.ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
  device.ChangeFont(SV::Font("Arial", {0, 20}));
  device.ChangeClipRegion(SV::Region(SV::Rectangle(2, 2, 60, 40)));
}

void drawByDevice(SV::OutputDevice & device) {
  device.DrawRect({{0, 0}, {50, 30}});
  device.DrawLine({0, 0}, {100, 50});
  device.DrawText({5, 5}, "Text");
}

TEST_P(ThemeDevice, LeavesTheDeviceAsItWas) {
  SV::DrawingScope const scope(window); // as in a Paint: otherwise each drawing begins anew
  setUp(window);
  drawAll(theme, window, {{10, 9}, {16, 16}});
  drawn.reset();
  drawByDevice(window);
  CanvasWindow fresh(expected);
  setUp(fresh);
  drawByDevice(fresh);
  EXPECT_FALSE(drawn.difference(expected));
}

TEST_P(ThemeDevice, LeavesTheBrushThatTheDeviceHasDrawnWith) {
  SV::DrawingScope const scope(window);
  setUp(window);
  CanvasWindow fresh(expected);
  setUp(fresh);
  drawByDevice(fresh);
  for (bool const isCaption : {true, false}) {
    drawByDevice(window);
    if (isCaption)
      theme.Draw(window, PlainCaptionActive, {{10, 9}, {16, 16}});
    else
      theme.DrawStatusBarBackground(window, {{10, 9}, {16, 16}});
    drawn.reset();
    drawByDevice(window);
    EXPECT_FALSE(drawn.difference(expected)) << (isCaption ? "caption" : "status bar");
  }
}

TEST_P(ThemeDevice, DrawsNothingOutsideOfTheDevicesRegion) {
  SV::DrawingScope const scope(window); // as in a Paint: otherwise each drawing begins anew
  SV::Rectangle const limit(20, 15, 60, 40);
  window.ChangeClipRegion(SV::Region(limit));
  drawAll(theme, window, {{10, 9}, {300, 300}});
  GdiFlush();
  int outside = 0;
  int inside = 0;
  for (int y = 0; y < drawn.height(); ++y)
    for (int x = 0; x < drawn.width(); ++x) {
      bool const isInside = x >= 20 && x <= 60 && y >= 15 && y <= 40;
      (isInside ? inside : outside) += drawn.at(x, y) == Canvas::patternAt(x, y) ? 0 : 1;
    }
  EXPECT_EQ(outside, 0);
  EXPECT_GT(inside, 0);
}

TEST_P(ThemeDevice, DrawsOnAnotherDeviceThanTheWindow) {
  Canvas page;
  SV::OutputDevice device(page.context());
  theme.DrawToolbarButton(window, device, {{10, 9}, {40, 20}}, true, true, true, false);
  theme.DrawMenuBackground(device);
  EXPECT_TRUE(drawn.isUntouched());
  EXPECT_FALSE(page.isUntouched());
}

TEST_P(ThemeDevice, DrawsThousandsOfTimes) {
  SV::Rectangle const area({10, 9}, {3, 3});
  for (int i = 0; i < 60; ++i)
    drawAll(theme, window, area);
  HPEN const pen = CreatePen(PS_SOLID, 3, 0);
  EXPECT_NE(pen, nullptr);
  DeleteObject(pen);
}

/// Reaching as far as coordinates go. The system draws all of a part of its style, seen or not, so those are smaller.
std::vector<SV::Rectangle> hugeAreas(bool styled) {
  if (styled)
    return {SV::Rectangle(-1000, -1000, 1000, 1000), SV::Rectangle(0, 0, 2000, 2000)};
  constexpr long kLeast = std::numeric_limits<long>::min();
  constexpr long kMost = std::numeric_limits<long>::max();
  return {SV::Rectangle(-2'000'000'000, -2'000'000'000, 2'000'000'000, 2'000'000'000),
          SV::Rectangle(0, 0, kMost, kMost), SV::Rectangle(kLeast, 0, 30, 30), SV::Rectangle(5, kLeast, 30, kMost)};
}

TEST_P(ThemeDevice, DrawsInHugeRectanglesWhatIsSeenOfThem) {
  auto const start = std::chrono::steady_clock::now();
  for (KivThemeClass const part :
       {CaptionActive, CaptionInactive, PlainCaptionActive, PlainCaptionInactive, FrameLeftActive})
    for (SV::Rectangle const & area : hugeAreas(GetParam().styles == Styles::On)) {
      theme.Draw(window, part, area);
      theme.DrawText(window, part, area, "Text");
      theme.DrawCloseButton(window, part, area, false, false);
      theme.DrawToolbarBackground(window, true, area);
      theme.DrawToolbarButton(window, window, area, true, false, false, false);
      theme.DrawStatusBarBackground(window, area);
    }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  EXPECT_FALSE(drawn.isUntouched());
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_P(ThemeDevice, CutsTextsOfAnyLengthInTheTimeOfThoseThatAreSeen) {
  SV::String const text(std::string(1'000'000, 'n').c_str());
  SV::Rectangle const area({10, 9}, {200, 18});
  for (int part = 0; part < 4; ++part)
    compare(
        std::to_string(part), [&] { theme.DrawText(window, static_cast<KivThemeClass>(part), area, text); },
        [&] { model.text(part, area.ToSystem(), std::string(200, 'n')); });
}

/// A window on the screen.
class PaintedWindow : public SV::Window {
public:
  using Window::Window;
  void Paint(SV::OutputDevice & device, SV::Rectangle const &) override { onPaint(device); }
  std::function<void(SV::OutputDevice &)> onPaint;
};

TEST_P(ThemeDevice, DrawsInAPaintAndOutsideOfIt) {
  PaintedWindow real(nullptr);
  real.SetPosSizePixel({0, 0}, {330, 330});
  SetWindowPos(real.GethWnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  SV::Rectangle const area({10, 9}, {100, 18});
  int painted = 0;
  real.onPaint = [&](SV::OutputDevice & device) {
    BitBlt(device.GethDC(), 0, 0, 330, 330, Canvas().context(), 0, 0, SRCCOPY);
    theme.Draw(real, PlainCaptionActive, area);
    theme.DrawText(real, PlainCaptionActive, area, "Text");
    ++painted;
  };
  real.Show();
  SV::Application::Reschedule();
  real.Invalidate();
  real.Update();
  ASSERT_GT(painted, 0);
  theme.DrawCloseButton(real, PlainCaptionInactive, {{40, 40}, {16, 16}}, false, false);
  HDC const device = GetDC(real.GethWnd());
  BitBlt(drawn.context(), 0, 0, 330, 330, device, 0, 0, SRCCOPY);
  ReleaseDC(real.GethWnd(), device);
  model.caption(PlainCaptionActive, area.ToSystem());
  model.text(PlainCaptionActive, area.ToSystem(), "Text");
  model.closeButton(PlainCaptionInactive, {40, 40, 56, 56}, false, false);
  EXPECT_FALSE(drawn.difference(expected));
}

TEST_P(ThemeDevice, OfAWindowThatTheSystemHasClosedIsNotDrawnOn) {
  PaintedWindow closed(nullptr);
  DestroyWindow(closed.GethWnd());
  ASSERT_EQ(closed.GethWnd(), nullptr);
  drawAll(theme, closed, {{10, 9}, {16, 16}});
  EXPECT_EQ(styleCalls().open, 0);
}

} // namespace
