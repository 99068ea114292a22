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
