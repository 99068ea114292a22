#include "sv0105/controls/dialogtest.hpp"

#include <initguid.h>
#include <oleacc.h>

namespace {

class Measures : public svtest::DialogTest {};

TEST_F(Measures, UnitsOfDialogsAreThoseOfTheSystemForTheFont) {
  for (long const height : {10L, 13L, 26L}) {
    SV::Application::ChangeAppFont(SV::Font("Arial", {0, height}));
    SV::Dialog dialog(nullptr);
    RECT units = {0, 0, 400, 800};
    // What the system makes of units is known for its own font: the sizes of a character come from the font of the dialog.
    HDC const device = GetDC(dialog.GethWnd());
    HGDIOBJ const former =
        SelectObject(device, reinterpret_cast<HFONT>(SendMessageA(dialog.GethWnd(), WM_GETFONT, 0, 0)));
    TEXTMETRICA metrics = {};
    GetTextMetricsA(device, &metrics);
    SIZE letters = {};
    GetTextExtentPoint32A(device, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", 52, &letters);
    SelectObject(device, former);
    ReleaseDC(dialog.GethWnd(), device);
    SV::Size const pixels = dialog.LogicToPixel(SV::Size{units.right, units.bottom}, SV::MAP_APPFONT);
    EXPECT_EQ(pixels.height, 100 * metrics.tmHeight) << height;
    EXPECT_EQ(pixels.width, 100 * ((letters.cx / 26 + 1) / 2)) << height;
  }
}

TEST_F(Measures, TenthsOfAMillimetreFollowTheResolutionOfTheScreen) {
  SV::Window const window(nullptr);
  HDC const screen = GetDC(nullptr);
  SV::Size const inch{GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
  ReleaseDC(nullptr, screen);
  EXPECT_EQ(window.LogicToPixel(SV::Size{254, 254}, SV::MAP_10TH_MM), inch);
  EXPECT_EQ(window.LogicToPixel(SV::Size{0, -254}, SV::MAP_10TH_MM), (SV::Size{0, -inch.height}));
}

TEST_F(Measures, PixelsStayAsTheyAre) {
  SV::Window const window(nullptr);
  EXPECT_EQ(window.LogicToPixel(SV::Size{17, 32'767}, SV::MAP_PIXEL), (SV::Size{17, 32'767}));
}

TEST_F(Measures, PointOfAControlIsFoundOnTheScreen) {
  SV::Dialog dialog(nullptr);
  dialog.SetPosSizePixel({100, 80}, {300, 200});
  SV::PushButton button(&dialog);
  button.SetPosSizePixel({20, 30}, {60, 20});
  POINT expected = {5, 6};
  ClientToScreen(button.GethWnd(), &expected);
  EXPECT_EQ(button.OutputToScreenPixel({5, 6}), (SV::Point{expected.x, expected.y}));
  EXPECT_GT(expected.x, 120);
  EXPECT_EQ(button.ScreenToOutputPixel({expected.x, expected.y}), (SV::Point{5, 6}));
  EXPECT_EQ(button.ScreenToOutputPixel({0, 0}), (SV::Point{5 - expected.x, 6 - expected.y}));
  DestroyWindow(button.GethWnd());
  EXPECT_EQ(button.ScreenToOutputPixel({5, 6}), (SV::Point{5, 6}));
}

/// Two windows, the second of which floats over the right half of the first; with controls in it.
class WindowAtAPoint : public Measures {
protected:
  WindowAtAPoint() {
    below.SetPosSizePixel({100, 100}, {400, 200});
    above.SetPosSizePixel({300, 100}, {300, 200});
    day.SetPosSizePixel({50, 50}, {100, 24});
    label.SetPosSizePixel({50, 100}, {100, 24});
    day.Show();
    label.Show();
    for (SV::Window * const window : {&below, &above}) {
      window->Show();
      SetWindowPos(window->GethWnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
  }

  static SV::Window * at(SV::Window const & window, SV::Point const & point) {
    return SV::Window::FindAt(window.OutputToScreenPixel(point));
  }

  SV::Window below{nullptr, SV::WB_TITLE};
  SV::Window above{&below, SV::WB_TITLE};
  SV::MetricField day{&above, 0x4C11};
  SV::FixedText label{&above};
};

TEST_F(WindowAtAPoint, IsTheInnermostOfTheFrontOne) {
  EXPECT_EQ(at(below, {10, 10}), &below);
  EXPECT_EQ(at(above, {10, 10}), &above);
  EXPECT_EQ(at(below, {250, 10}), &above) << "lies over it";
  EXPECT_EQ(at(above, {60, 60}), &day);
  EXPECT_EQ(at(day, {95, 5}), &day) << "its buttons are windows of the system";
}

TEST_F(WindowAtAPoint, IsTheOneThatTheMouseReaches) {
  EXPECT_EQ(at(above, {60, 110}), &above) << "the mouse goes through a label";
  day.Disable();
  EXPECT_EQ(at(above, {60, 60}), &above);
  day.Hide();
  EXPECT_EQ(at(above, {60, 60}), &above);
  above.Disable();
  EXPECT_EQ(at(above, {60, 60}), nullptr) << "nor through it to the one below";
  above.Hide();
  EXPECT_EQ(at(below, {250, 10}), &below);
  above.CaptureMouse();
  EXPECT_EQ(at(below, {10, 10}), &below) << "whoever has captured the mouse";
}

TEST_F(WindowAtAPoint, IsNoneOutsideOfTheProgram) {
  EXPECT_EQ(SV::Window::FindAt({-30000, -30000}), nullptr);
  HWND const foreign = CreateWindowExA(WS_EX_TOPMOST, "STATIC", "", WS_POPUP | WS_VISIBLE | SS_NOTIFY, 100, 100, 50,
                                       200, nullptr, nullptr, nullptr, nullptr);
  SetWindowPos(foreign, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  EXPECT_EQ(SV::Window::FindAt({120, 200}), nullptr) << "no window of the toolkit";
  DestroyWindow(foreign);
}

/// What a screen reader reads out for a window.
std::string accessibleName(SV::Window const & window) {
  CoInitialize(nullptr);
  IAccessible * object = nullptr;
  std::string name;
  if (SUCCEEDED(AccessibleObjectFromWindow(window.GethWnd(), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                           reinterpret_cast<void **>(&object)))) {
    VARIANT self = {};
    self.vt = VT_I4;
    BSTR text = nullptr;
    if (object->get_accName(self, &text) == S_OK)
      for (wchar_t const * c = text; *c != L'\0'; ++c)
        name += static_cast<char>(*c);
    SysFreeString(text);
    object->Release();
  }
  CoUninitialize();
  return name;
}

TEST_F(Measures, ScreenReaderHasTheNameOfAButtonWithoutItsMark) {
  SV::Dialog dialog(nullptr);
  SV::PushButton button(&dialog);
  button.SetText("~Save all");
  EXPECT_EQ(accessibleName(button), "Save all");
}

TEST_F(Measures, ScreenReaderHasTheNameOfADialog) {
  SV::Dialog dialog(nullptr);
  dialog.SetText("Duration");
  EXPECT_EQ(accessibleName(dialog), "Duration");
}

} // namespace
