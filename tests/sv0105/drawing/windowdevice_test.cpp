// A window as what is drawn on.

#include "support/memory/allocation.hpp"
#include "sv0105/drawing/page.hpp"

#include <memory>

namespace {

using SV::Application;
using SV::DrawingScope;
using SV::OutputDevice;
using SV::Rectangle;
using SV::Window;
using namespace svtest;

class PaintedWindow : public Window {
public:
  using Window::Window;
  void Paint(OutputDevice & device, Rectangle const &) override {
    ++paintings;
    if (onPaint)
      onPaint(device);
  }

  std::function<void(OutputDevice &)> onPaint;
  int paintings = 0;
};

class WindowDevice : public ToolkitTest {
protected:
  WindowDevice() {
    window->SetPosSizePixel({100, 100}, {60, 40});
    SetWindowPos(window->GethWnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    window->ChangeBackgroundBrush(SV::Brush(SV::COL_WHITE));
    window->Show();
    Application::Reschedule();
    window->Update();
  }

  COLORREF pixel(int x, int y) const {
    HDC const device = GetDC(window->GethWnd());
    COLORREF const color = GetPixel(device, x, y);
    ReleaseDC(window->GethWnd(), device);
    return color;
  }

  void paint() {
    window->Invalidate();
    window->Update();
  }

  std::unique_ptr<PaintedWindow> window = std::make_unique<PaintedWindow>(nullptr);
};

TEST_F(WindowDevice, OutsideOfPaintDrawsOnItsClientArea) {
  EXPECT_EQ(window->GethDC(), nullptr);
  window->ChangePen(SV::Pen());
  window->ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
  window->DrawRect({{5, 5}, {10, 10}});
  EXPECT_EQ(window->GethDC(), nullptr);
  EXPECT_EQ(pixel(5, 5), kYellow);
  EXPECT_EQ(pixel(14, 14), kYellow);
  EXPECT_EQ(pixel(15, 15), kWhite);
}

TEST_F(WindowDevice, DuringPaintIsThatOfThePainting) {
  window->onPaint = [this](OutputDevice & device) {
    EXPECT_EQ(&device, window.get());
    EXPECT_NE(window->GethDC(), nullptr);
    device.ChangePen(SV::Pen());
    window->ChangeFillInBrush(SV::Brush(SV::COL_LIGHTRED));
    device.DrawRect({{5, 5}, {10, 10}});
  };
  paint();
  EXPECT_EQ(window->paintings, 2);
  EXPECT_EQ(pixel(5, 5), kRed);
  EXPECT_EQ(pixel(15, 15), kWhite);
  EXPECT_EQ(window->GethDC(), nullptr);
}

TEST_F(WindowDevice, BeginsEachPaintAnewAndHasWhatItHadAfterwards) {
  window->ChangePen(SV::Pen(SV::COL_LIGHTRED));
  window->ChangeMapMode(SV::MapMode(SV::MAP_10TH_MM));
  window->Push();
  for (int i = 0; i < 2; ++i) {
    window->onPaint = [](OutputDevice & device) {
      EXPECT_EQ(device.GetMapMode(), SV::MapMode());
      EXPECT_EQ(device.ChangePen(SV::Pen()).GetColor().GetColorName(), SV::COL_BLACK);
      EXPECT_TRUE(device.ChangeFillInBrush(SV::Brush(SV::COL_BLUE)).IsNone());
      device.ChangeClipRegion(SV::Region{Rectangle()});
      device.Pop();
      EXPECT_TRUE(device.ChangePen(SV::Pen(SV::COL_GREEN)).IsNone()) << "what was pushed outside is not for Paint";
    };
    paint();
  }
  EXPECT_EQ(window->paintings, 3);
  EXPECT_EQ(window->GetMapMode(), SV::MapMode(SV::MAP_10TH_MM));
  EXPECT_EQ(window->ChangePen(SV::Pen()).GetColor().GetColorName(), SV::COL_LIGHTRED);
}

TEST_F(WindowDevice, BeginsPaintWithTheFontOfTheWindow) {
  window->Window::ChangeFont(SV::Font("Arial", {0, 31}));
  int height = 0;
  window->onPaint = [&](OutputDevice & device) {
    EXPECT_EQ(device.ChangeFont(SV::Font("Arial", {0, 9})).GetSize(), (SV::Size{0, 31}));
    height = static_cast<int>(device.GetTextSize("x").height);
  };
  paint();
  EXPECT_GT(height, 8);
  EXPECT_LT(height, 20);
  int const paintings = window->paintings;
  Application::Reschedule();
  EXPECT_EQ(window->paintings, paintings) << "the font of the device has nothing painted anew";
  EXPECT_EQ(window->GetFont().GetSize(), (SV::Size{0, 31}));
}

TEST_F(WindowDevice, DrawsOnTheWholeClientAreaOutsideOfPaint) {
  EXPECT_EQ(static_cast<OutputDevice const &>(*window).GetOutputSizePixel(), (SV::Size{60, 40}));
  window->ChangeBackgroundBrush(SV::Brush(SV::COL_LIGHTGREEN));
  static_cast<OutputDevice &>(*window).Erase();
  EXPECT_EQ(pixel(0, 0), kGreen);
  EXPECT_EQ(pixel(59, 39), kGreen);
}

TEST_F(WindowDevice, LeavesTheWindowsInItAlone) {
  Window child(window.get());
  child.ChangeBackgroundBrush(SV::Brush(SV::COL_LIGHTRED));
  child.SetPosSizePixel({10, 10}, {10, 10});
  child.Show();
  child.Update();
  window->ChangeFillInBrush(SV::Brush(SV::COL_YELLOW));
  window->DrawRect({{0, 0}, {60, 40}});
  EXPECT_EQ(pixel(9, 9), kYellow);
  HDC const device = GetDC(child.GethWnd());
  EXPECT_EQ(GetPixel(device, 5, 5), kRed);
  ReleaseDC(child.GethWnd(), device);
}

TEST_F(WindowDevice, IsKeptByAScope) {
  {
    DrawingScope const scope(*window);
    HDC const device = window->GethDC();
    ASSERT_NE(device, nullptr);
    {
      DrawingScope const inner(*window);
      EXPECT_EQ(window->GethDC(), device);
    }
    EXPECT_EQ(window->GethDC(), device);
    PatBlt(device, 0, 0, 1, 1, BLACKNESS);
    window->DrawLine({0, 2}, {5, 2});
    paint();
    EXPECT_EQ(window->GethDC(), device) << "after a painting in between";
    window->DrawLine({0, 3}, {5, 3});
  }
  EXPECT_EQ(window->GethDC(), nullptr);
  EXPECT_EQ(pixel(0, 3), kBlack);
}

TEST_F(WindowDevice, MayBePaintedWithinItsPaint) {
  window->onPaint = [this](OutputDevice & device) {
    HDC const mine = device.GethDC();
    device.ChangePen(SV::Pen(SV::COL_LIGHTRED));
    if (window->paintings == 2)
      paint();
    EXPECT_EQ(device.GethDC(), mine);
    EXPECT_EQ(device.ChangePen(SV::Pen()).GetColor().GetColorName(), SV::COL_LIGHTRED);
  };
  paint();
  EXPECT_EQ(window->paintings, 3);
  EXPECT_EQ(window->GethDC(), nullptr);
}

int faults = 0;
LONG CALLBACK countFault(EXCEPTION_POINTERS * raised) {
  faults += raised->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION ? 1 : 0;
  return EXCEPTION_CONTINUE_SEARCH;
}

TEST_F(WindowDevice, MayDieWithItsWindowInPaint) {
  support::GuardPages const guard; // what is read after its end would go unnoticed
  window = std::make_unique<PaintedWindow>(nullptr);
  window->SetPosSizePixel({100, 100}, {60, 40});
  window->Show();
  Application::Reschedule();
  bool painted = false;
  window->onPaint = [&](OutputDevice & device) {
    device.ChangePen(SV::Pen(SV::COL_LIGHTRED, 3));
    device.DrawLine({0, 0}, {5, 5});
    painted = true;
    window.reset();
  };
  HWND const handle = window->GethWnd();
  window->Invalidate();
  // The system ends a window procedure at a fault, and goes on.
  void * const counting = AddVectoredExceptionHandler(1, countFault);
  UpdateWindow(handle);
  RemoveVectoredExceptionHandler(counting);
  EXPECT_EQ(faults, 0);
  EXPECT_TRUE(painted);
  EXPECT_FALSE(IsWindow(handle));
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_F(WindowDevice, IsGoneWithTheSystemsWindow) {
  DestroyWindow(window->GethWnd());
  window->DrawRect({{0, 0}, {60, 40}});
  DrawingScope const scope(*window);
  EXPECT_EQ(window->GethDC(), nullptr);
  EXPECT_GT(window->GetTextSize("text").width, 0);
  EXPECT_EQ(window->LogicToPixel(SV::Size{254, 254}, SV::MapMode(SV::MAP_10TH_MM)), (SV::Size{96, 96}));
}

TEST_F(WindowDevice, CanBeCopiedFrom) {
  window->ChangePen(SV::Pen());
  window->ChangeFillInBrush(SV::Brush(SV::COL_LIGHTBLUE));
  window->DrawRect({{5, 5}, {10, 10}});
  Page page;
  OutputDevice device(page.context());
  device.DrawOutDev({0, 0}, {20, 20}, {0, 0}, {20, 20}, *window);
  EXPECT_EQ(page.pixels().count(kBlue), 100u);
}

TEST_F(WindowDevice, MeasuresInUnitsOfDialogs) {
  SV::MapMode const units(SV::MAP_APPFONT);
  SV::Font const former = Application::ChangeAppFont(SV::Font("Arial", {0, 13}));
  SV::Size const once = window->LogicToPixel(SV::Size{40, 80}, units);
  EXPECT_GT(once.width, 40);
  EXPECT_GT(once.height, 120);
  EXPECT_EQ(window->PixelToLogic(once, units), (SV::Size{40, 80}));
  Application::ChangeAppFont(SV::Font("Arial", {0, 26}));
  SV::Size const twice = window->LogicToPixel(SV::Size{40, 80}, units);
  EXPECT_NEAR(static_cast<double>(twice.width), 2.0 * static_cast<double>(once.width), 10);
  EXPECT_NEAR(static_cast<double>(twice.height), 2.0 * static_cast<double>(once.height), 10);
  Application::ChangeAppFont(former);
}

} // namespace
