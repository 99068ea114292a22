// The picture behind the MDI windows, pixel by pixel against a model. Screens are answered by the test, and the device of the area
// is one in memory, so that no other window is in the way.

#include "aapp.hpp"
#include "acolor.hpp"
#include "atheme_manager.hpp"
#include "support/imports/import_hook.hpp"
#include "support/imports/import_spy.hpp"
#include "support/windows/pixels.hpp"
#include "sv/image.hpp"
#include "sv/mdi.hpp"
#include "sv0105/gdicount.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <vector>

namespace {

using support::Pixel;
using SV::Size;

constexpr Pixel kUntouched = 0x123456;
constexpr Size kCanvas = {320, 220};

struct Screens {
  Size main;
  Size all;
};
Screens screens;

int WINAPI metrics(int index) {
  switch (index) {
  case SM_CXSCREEN: return static_cast<int>(screens.main.width);
  case SM_CYSCREEN: return static_cast<int>(screens.main.height);
  case SM_CXVIRTUALSCREEN: return static_cast<int>(screens.all.width);
  case SM_CYVIRTUALSCREEN: return static_cast<int>(screens.all.height);
  default: return GetSystemMetrics(index);
  }
}

BOOL WINAPI noCopy(HDC, int, int, int, int, HDC, int, int, DWORD) {
  ADD_FAILURE() << "there is nothing to copy to";
  return FALSE;
}

HDC canvas;
int devicesOut = 0;

HDC WINAPI canvasOf(HWND) {
  ++devicesOut;
  return canvas;
}
int WINAPI giveCanvasBack(HWND, HDC device) {
  EXPECT_EQ(device, canvas);
  --devicesOut;
  return 1;
}

/// A colour for each pixel of a picture, none of them twice in 256 by 256.
Pixel pictureColor(long x, long y) { return static_cast<Pixel>((x & 0xFF) | (y & 0xFF) << 8 | 0x550000); }

SV::Bitmap picture(Size const & size) {
  SV::Bitmap const bitmap(size);
  HDC const device = CreateCompatibleDC(nullptr);
  HGDIOBJ const former = SelectObject(device, bitmap.GethBitmap());
  for (int y = 0; y < size.height; ++y)
    for (int x = 0; x < size.width; ++x)
      SetPixelV(device, x, y, pictureColor(x, y));
  SelectObject(device, former);
  DeleteDC(device);
  return bitmap;
}

class PictureApplication : public KivMDIApplication {
public:
  PictureApplication() : KivMDIApplication("Picture", true, "log_picture") {}

  int prepareApplication() override { return 0; }
  int runApplication() override { return 0; }
  bool getMDIClientImage(SV::Image & target, int & targetMode) override {
    ++questions;
    EXPECT_TRUE(target.IsEmpty());
    modeFound = targetMode;
    target = image;
    targetMode = mode;
    return hasPicture;
  }
  void Exception(long code, unsigned long) override { exceptions.push_back(code); }

  SV::Image image;
  int mode = 0;
  bool hasPicture = true;
  int questions = 0;
  int modeFound = -1;
  std::vector<long> exceptions;
};

/// The picture as it is kept, by size and by the place in the original that each pixel comes from.
struct Kept {
  Size size;
  std::function<Pixel(long x, long y)> at;
};

/// By the rules, in whole numbers where these are exact.
Kept keptPicture(Size const & original, Size const & screen, bool covers) {
  Size scaled = original;
  if (covers && !(original == screen) && original.width > 0) {
    double const down = static_cast<double>(screen.height) / static_cast<double>(original.height);
    double const across = static_cast<double>(screen.width) / static_cast<double>(original.width);
    double const factor = down > across ? down : across;
    scaled = {static_cast<int>(static_cast<double>(original.width) * factor + 0.5),
              static_cast<int>(static_cast<double>(original.height) * factor + 0.5)};
  }
  Size const offset = {scaled.width > screen.width ? (scaled.width - screen.width) / 2 : 0,
                       scaled.height > screen.height ? (scaled.height - screen.height) / 2 : 0};
  Size const kept = {scaled.width > screen.width ? screen.width : scaled.width,
                     scaled.height > screen.height ? screen.height : scaled.height};
  if (kept.width < 1 || kept.height < 1)
    return {{0, 0}, nullptr};
  return {kept, [=](long x, long y) {
            long const column = (2 * (x + offset.width) + 1) * original.width / (2 * scaled.width);
            long const row = (2 * (y + offset.height) + 1) * original.height / (2 * scaled.height);
            return pictureColor(column, row);
          }};
}

/// What a pixel of an area of that size shows; kUntouched for what is left as it was.
Pixel expectedPixel(int mode, Kept const & kept, Size const & area, long x, long y) {
  KivTheme const & theme = KivThemeManager::CurrentTheme();
  if (x == 0 || y == 0 || x == area.width - 1 || y == area.height - 1)
    return srcOver(theme.GetColor(0), SV::COL_BLACK, 0.2).GetRGB();
  long const w = area.width - 2;
  long const h = area.height - 2;
  bool const isFilled = mode == 0 || mode == 3;
  Pixel const behind = isFilled ? theme.GetColor(11).GetRGB() : kUntouched;
  if (mode < 1 || mode > 4 || !kept.at)
    return behind;
  long column = x - 1;
  long row = y - 1;
  if (mode == 1) { // for sizes that are multiples alone
    column = column * kept.size.width / w;
    row = row * kept.size.height / h;
  } else if (mode == 2) {
    column += (kept.size.width - w) / 2;
    row += (kept.size.height - h) / 2;
  } else if (mode == 3) {
    column = x - (w - kept.size.width) / 2;
    row = y - (h - kept.size.height) / 2;
  } else {
    column %= kept.size.width;
    row %= kept.size.height;
  }
  bool const isInside = column >= 0 && row >= 0 && column < kept.size.width && row < kept.size.height;
  return isInside ? kept.at(column, row) : behind;
}

class ClientArea : public testing::Test {
protected:
  ClientArea()
      : memory_(kCanvas), device_(CreateCompatibleDC(nullptr)), former_(SelectObject(device_, memory_.GethBitmap())),
        pen_(GetCurrentObject(device_, OBJ_PEN)), brush_(GetCurrentObject(device_, OBJ_BRUSH)) {
    SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_SHOWNORMAL);
    EXPECT_TRUE(SV::InitSV(0, nullptr));
    canvas = device_;
    svtest::countGdiObjects({"kivara.dll"});
    support::replaceImports(
        GetModuleHandleA("kivara.dll"), "USER32.dll",
        {{"GetDC", reinterpret_cast<void *>(canvasOf)}, {"ReleaseDC", reinterpret_cast<void *>(giveCanvasBack)}});
    support::replaceImports(GetModuleHandleA("SV0105.dll"), "USER32.dll",
                            {{"GetSystemMetrics", reinterpret_cast<void *>(metrics)}});
    arrange({64, 48}, {64, 48});
  }
  ~ClientArea() override {
    SelectObject(device_, former_);
    DeleteDC(device_);
    SV::DeInitSV();
  }

  static void arrange(Size const & main, Size const & all) { screens = {main, all}; }

  /// Has the picture of that size made for the mode.
  bool make(Size const & size, int mode, bool multiMonitor = false) {
    application.image = size.width > 0 ? SV::Image(picture(size)) : SV::Image();
    application.mode = mode;
    return application.MakeMDIClientImg(multiMonitor);
  }

  /// Paints an area of that size.
  support::Pixels paint(Size const & area) {
    HBRUSH const marker = CreateSolidBrush(kUntouched);
    RECT const whole = {0, 0, kCanvas.width, kCanvas.height};
    FillRect(device_, &whole, marker);
    DeleteObject(marker);
    HWND const window =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, area.width, area.height, nullptr, nullptr, nullptr, nullptr);
    int const objects = svtest::gdiObjects();
    application.PaintMDIClient(window);
    EXPECT_EQ(svtest::gdiObjects(), objects) << "what the system gave is given back";
    EXPECT_EQ(devicesOut, 0);
    EXPECT_EQ(GetCurrentObject(device_, OBJ_PEN), pen_);
    EXPECT_EQ(GetCurrentObject(device_, OBJ_BRUSH), brush_);
    DestroyWindow(window);
    return support::readPixels(device_, {0, 0, area.width, area.height});
  }

  /// Whether the area looks as the model says. The frame's colour is computed, the rest is exact.
  static testing::AssertionResult isAsTheModel(support::Pixels const & pixels, int mode, Kept const & kept,
                                               Size const & area) {
    for (int y = 0; y < area.height; ++y)
      for (int x = 0; x < area.width; ++x)
        if (Pixel const expected = expectedPixel(mode, kept, area, x, y); pixels.at(x, y) != expected)
          return testing::AssertionFailure() << "at " << x << ", " << y << " there is " << std::hex << pixels.at(x, y)
                                             << " instead of " << expected;
    return testing::AssertionSuccess();
  }

  PictureApplication application;

private:
  SV::Bitmap memory_;
  HDC device_;
  HGDIOBJ former_;
  HGDIOBJ pen_;
  HGDIOBJ brush_;
};

struct Row {
  int mode;
  Size picture;
};
std::ostream & operator<<(std::ostream & out, Row const & row) {
  return out << "mode " << row.mode << ", " << row.picture.width << " x " << row.picture.height;
}

std::vector<Row> rows() {
  std::vector<Row> result;
  for (int const mode : {-1, 0, 2, 3, 4, 5})
    for (Size const size : {Size{0, 0}, Size{1, 1}, Size{7, 5}, Size{32, 24}, Size{64, 48}, Size{65, 48}, Size{64, 49},
                            Size{65, 20}, Size{20, 49}, Size{128, 97}, Size{130, 97}, Size{200, 150}})
      result.push_back({mode, size});
  return result;
}

class ClientAreaMode : public ClientArea, public testing::WithParamInterface<Row> {};

TEST_P(ClientAreaMode, LaysThePictureOut) {
  auto const [mode, size] = GetParam();
  EXPECT_TRUE(make(size, mode));
  Kept const kept = keptPicture(size, screens.main, mode == 2);
  for (char const * const theme : {"Modern", "Classic"}) {
    KivThemeManager::Instance().SetCurrentTheme(theme);
    for (Size const area : {Size{2, 2}, Size{3, 3}, Size{16, 16}, Size{50, 40}, Size{64, 48}, Size{66, 50},
                            Size{67, 51}, Size{300, 20}, Size{20, 200}, Size{300, 200}})
      EXPECT_TRUE(isAsTheModel(paint(area), mode, kept, area)) << theme << ", " << area.width << " x " << area.height;
  }
  EXPECT_TRUE(application.exceptions.empty());
}
INSTANTIATE_TEST_SUITE_P(Pictures, ClientAreaMode, testing::ValuesIn(rows()));

TEST_F(ClientArea, WithoutAnyPixelInsideShowsNoPicture) {
  make({64, 48}, KIV_MDI_CLIENT_TILE);
  support::replaceImports(GetModuleHandleA("kivara.dll"), "GDI32.dll", {{"BitBlt", reinterpret_cast<void *>(noCopy)}});
  for (Size const area : {Size{0, 0}, Size{1, 1}, Size{2, 1}, Size{1, 2}, Size{0, 5}, Size{2, 2}})
    paint(area);
  support::replaceImports(GetModuleHandleA("kivara.dll"), "GDI32.dll", {{"BitBlt", reinterpret_cast<void *>(BitBlt)}});
}

TEST_F(ClientArea, OfMode1StretchesThePictureToTheArea) {
  make({10, 8}, KIV_MDI_CLIENT_STRETCH);
  Kept const kept = keptPicture({10, 8}, screens.main, false);
  for (Size const area : {Size{12, 10}, Size{22, 10}, Size{12, 26}, Size{302, 202}})
    EXPECT_TRUE(isAsTheModel(paint(area), 1, kept, area)) << area.width << " x " << area.height;
}

TEST_F(ClientArea, OfMode1ShrinksThePictureAsTheSystemDoesByItself) {
  make({60, 40}, KIV_MDI_CLIENT_STRETCH);
  Size const area = {25, 15};
  support::Pixels const painted = paint(area);
  HDC const source = CreateCompatibleDC(nullptr);
  SV::Bitmap const whole = picture({60, 40});
  HGDIOBJ const former = SelectObject(source, whole.GethBitmap());
  StretchBlt(canvas, 1, 1, 23, 13, source, 0, 0, 60, 40, SRCCOPY);
  EXPECT_TRUE(painted == support::readPixels(canvas, {0, 0, area.width, area.height}));
  SelectObject(source, former);
  DeleteDC(source);
}

TEST_F(ClientArea, OfMode3CountsTheMiddleFromTheCornerOfTheWindow) {
  make({10, 10}, KIV_MDI_CLIENT_CENTER);
  support::Pixels const pixels = paint({32, 32}); // 30 inside of the frame, so that 10 are left on each side
  EXPECT_EQ(pixels.at(10, 10), pictureColor(0, 0));
  EXPECT_EQ(pixels.at(19, 19), pictureColor(9, 9));
  EXPECT_EQ(pixels.at(20, 20), pixels.at(1, 1)) << "11 of them are left at the right and below";
}

TEST_F(ClientArea, OfMode1IsAFrameAloneWithoutAPicture) {
  EXPECT_TRUE(make({0, 0}, KIV_MDI_CLIENT_STRETCH));
  EXPECT_TRUE(isAsTheModel(paint({50, 40}), 1, {{0, 0}, nullptr}, {50, 40}));
}

TEST_F(ClientArea, IsOfTheThemesColorBeforeThereIsAPicture) {
  EXPECT_TRUE(isAsTheModel(paint({50, 40}), 0, {{0, 0}, nullptr}, {50, 40}));
}

TEST_F(ClientArea, HasAFrameOfTheThemesFirstColorMadeDarkerByAFifth) {
  KivThemeManager::Instance().SetCurrentTheme("Modern");
  support::Pixels const pixels = paint({50, 40});
  EXPECT_TRUE(support::alike(pixels.at(0, 0), 0xC7AE9C)) << std::hex << pixels.at(0, 0);
  EXPECT_EQ(pixels.at(1, 1), 0xC1A187u);
  EXPECT_EQ(pixels.count(pixels.at(0, 0)), 2u * 50 + 2 * 38);
}

TEST_F(ClientArea, OfAModeAbove4OrBelow0IsAFrameAlone) {
  for (int const mode : {5, 6, 100, 0x7FFFFFFF, -1, -0x7FFFFFFF}) {
    EXPECT_TRUE(make({20, 20}, mode));
    EXPECT_EQ(paint({50, 40}).count(kUntouched), 48u * 38) << mode;
  }
}

TEST_F(ClientArea, OfScreenSizeInMode2IsNeitherScaledNorCut) {
  static int scaled; // the spies stay for the rest of the process
  static int cut;
  ASSERT_TRUE(support::spyOnImport("kivara.dll", "Rescale", [](support::SpiedCall &) { ++scaled; }));
  ASSERT_TRUE(support::spyOnImport("kivara.dll", "Crop", [](support::SpiedCall &) { ++cut; }));
  make({65, 30}, KIV_MDI_CLIENT_COVER);
  EXPECT_EQ(scaled, 1);
  EXPECT_EQ(cut, 1);
  arrange({65, 49}, {65, 49});
  make({130, 97}, KIV_MDI_CLIENT_TILE);
  EXPECT_EQ(scaled, 1) << "other modes do not scale";
  scaled = cut = 0;
  arrange({64, 48}, {64, 48});
  EXPECT_TRUE(make({64, 48}, KIV_MDI_CLIENT_COVER));
  EXPECT_EQ(scaled, 0);
  EXPECT_EQ(cut, 0);
  support::Pixels const pixels = paint({66, 50});
  EXPECT_EQ(pixels.at(1, 1), pictureColor(0, 0));
  EXPECT_EQ(pixels.at(64, 48), pictureColor(63, 47));
}

TEST_F(ClientArea, WithoutAnAnswerKeepsThePictureThatItHad) {
  make({20, 10}, KIV_MDI_CLIENT_TILE);
  application.hasPicture = false;
  EXPECT_FALSE(make({30, 30}, KIV_MDI_CLIENT_TILE));
  EXPECT_TRUE(isAsTheModel(paint({50, 40}), 4, keptPicture({20, 10}, screens.main, false), {50, 40}));
}

TEST_F(ClientArea, TakesTheModeThoughThereIsNoPicture) {
  make({20, 10}, KIV_MDI_CLIENT_TILE);
  application.hasPicture = false;
  EXPECT_FALSE(make({20, 10}, KIV_MDI_CLIENT_CENTER));
  EXPECT_TRUE(isAsTheModel(paint({50, 40}), 3, keptPicture({20, 10}, screens.main, false), {50, 40}));
  make({20, 10}, KIV_MDI_CLIENT_COLOR);
  EXPECT_EQ(application.modeFound, KIV_MDI_CLIENT_CENTER);
}

TEST_F(ClientArea, KeepsAPictureThatHasTheSizeOfTheScreenButTakesTheMode) {
  EXPECT_TRUE(make({64, 48}, KIV_MDI_CLIENT_COVER));
  EXPECT_FALSE(make({20, 10}, KIV_MDI_CLIENT_TILE)) << "though it is another one";
  EXPECT_EQ(application.questions, 2);
  EXPECT_TRUE(isAsTheModel(paint({300, 200}), 4, keptPicture({64, 48}, screens.main, false), {300, 200}));
}

TEST_F(ClientArea, MakesThePictureAnewWhenTheScreenHasChanged) {
  EXPECT_TRUE(make({64, 48}, KIV_MDI_CLIENT_COVER));
  arrange({80, 60}, {80, 60});
  EXPECT_TRUE(make({64, 48}, KIV_MDI_CLIENT_COVER));
  EXPECT_TRUE(isAsTheModel(paint({82, 62}), 2, keptPicture({64, 48}, {80, 60}, true), {82, 62}));
}

TEST_F(ClientArea, MakesASmallerPictureAnewEachTime) {
  EXPECT_TRUE(make({20, 10}, KIV_MDI_CLIENT_TILE));
  EXPECT_TRUE(make({20, 10}, KIV_MDI_CLIENT_TILE));
}

TEST_F(ClientArea, OfManyMonitorsHasTheirWidthWithoutTheMainOneAndTheLargerHeight) {
  struct Case {
    Size main, all, expected;
  };
  for (Case const & row : {Case{{64, 48}, {140, 60}, {76, 60}}, Case{{64, 48}, {128, 40}, {64, 48}},
                           Case{{40, 60}, {200, 60}, {160, 60}}}) {
    arrange(row.main, row.all);
    EXPECT_TRUE(make({250, 200}, KIV_MDI_CLIENT_CENTER, true));
    support::Pixels const pixels = paint({300, 200});
    Kept const kept = keptPicture({250, 200}, row.expected, false);
    EXPECT_TRUE(isAsTheModel(pixels, 3, kept, {300, 200})) << row.expected.width << " x " << row.expected.height;
  }
}

TEST_F(ClientArea, OfManyMonitorsIsScaledToThemInMode2) {
  arrange({64, 48}, {140, 60});
  EXPECT_TRUE(make({30, 30}, KIV_MDI_CLIENT_COVER, true));
  EXPECT_TRUE(isAsTheModel(paint({78, 62}), 2, keptPicture({30, 30}, {76, 60}, true), {78, 62}));
  EXPECT_FALSE(make({30, 30}, KIV_MDI_CLIENT_COVER, true));
}

TEST_F(ClientArea, OfManyMonitorsHasNoPictureWhereThereIsOne) {
  for (int const mode : {1, 2, 3, 4}) {
    EXPECT_TRUE(make({30, 30}, mode, true)) << mode;
    EXPECT_TRUE(isAsTheModel(paint({50, 40}), mode, {{0, 0}, nullptr}, {50, 40})) << mode;
  }
  EXPECT_TRUE(make({0, 0}, KIV_MDI_CLIENT_COVER, true));
}

TEST_F(ClientArea, PaintsWhatAMaskLeavesOutWhite) {
  application.image = SV::Image(picture({20, 10}), SV::IMAGE_MASK_COLOR, SV::Color(0, 0, 0x5500));
  application.mode = KIV_MDI_CLIENT_TILE;
  EXPECT_TRUE(application.MakeMDIClientImg(false));
  support::Pixels const pixels = paint({22, 12});
  EXPECT_EQ(pixels.at(1, 1), 0xFFFFFFu);
  EXPECT_EQ(pixels.at(2, 1), pictureColor(1, 0));
}

TEST_F(ClientArea, LeavesAWindowThatIsNoneAlone) {
  int const objects = svtest::gdiObjects();
  application.PaintMDIClient(nullptr);
  application.PaintMDIClient(reinterpret_cast<HWND>(static_cast<std::uintptr_t>(0xBAD0)));
  EXPECT_EQ(svtest::gdiObjects(), objects);
  EXPECT_EQ(devicesOut, 0);
}

TEST_F(ClientArea, KeepsThePictureThatTheSystemRefusesToScale) {
  arrange({30'000, 1}, {30'000, 1});
  make({1, 200}, KIV_MDI_CLIENT_COVER);
  ASSERT_FALSE(application.exceptions.empty());
  EXPECT_EQ(application.exceptions[0], SV::EXC_SYSTEM_OBJECT_NOT_CREATED);
  paint({50, 40});
}

TEST_F(ClientArea, OfAFrameIsPaintedByTheApplication) {
  EXPECT_TRUE(application.IsUserDefPaintMDIClient());
  make({20, 10}, KIV_MDI_CLIENT_TILE);
  SV::MDIFrame frame("Frame");
  frame.ChangeOutputSizePixel({200, 150});
  paint({2, 2});
  SendMessageA(frame.GetClient().GethWnd(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas), 0);
  Size const area = frame.GetClient().GetOutputSizePixel();
  ASSERT_GT(area.width, 150);
  support::Pixels const pixels = support::readPixels(canvas, {0, 0, area.width, area.height});
  EXPECT_TRUE(isAsTheModel(pixels, 4, keptPicture({20, 10}, screens.main, false), area));
}

} // namespace
