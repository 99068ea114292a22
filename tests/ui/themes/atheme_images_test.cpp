// Small images of check boxes and trees.

#include "aevents.hpp"
#include "support/data/files.hpp"
#include "sv0105/gdicount.hpp"
#include "ui/themes/stylecalls.hpp"
#include "ui/themes/themetest.hpp"

namespace {

using namespace themetest;

KivThemeManager & manager() { return KivThemeManager::Instance(); }

constexpr COLORREF kMagenta = 0x800080;
constexpr COLORREF kWhite = 0xFFFFFF;

Canvas const & canvasOf(SV::Image const & image, Canvas & canvas) {
  HDC const device = CreateCompatibleDC(nullptr);
  HGDIOBJ const former = SelectObject(device, image.GetBitmap().GethBitmap());
  BitBlt(canvas.context(), 0, 0, canvas.width(), canvas.height(), device, 0, 0, SRCCOPY);
  SelectObject(device, former);
  DeleteDC(device);
  return canvas;
}

/// The part of a style over one colour, with a free edge of one pixel.
void expectStyled(SV::Image const & image, wchar_t const * classes, int part, int state, COLORREF background) {
  Canvas expected(16, 16);
  HBRUSH const brush = CreateSolidBrush(background);
  RECT const whole = {0, 0, 16, 16};
  FillRect(expected.context(), &whole, brush);
  DeleteObject(brush);
  RECT const area = {1, 1, 15, 15};
  HTHEME const theme = OpenThemeData(nullptr, classes);
  ASSERT_NE(theme, nullptr);
  DrawThemeBackground(theme, expected.context(), part, state, &area, nullptr);
  CloseThemeData(theme);
  Canvas shown(16, 16);
  ASSERT_EQ(image.GetSizePixel(), (SV::Size{16, 16}));
  EXPECT_FALSE(canvasOf(image, shown).difference(expected)) << "part " << part << ", state " << state;
}

class ThemeImages : public ThemeTest {
protected:
  explicit ThemeImages(Styles styles = Styles::On) : ThemeTest({1, styles}) {}

  void expectStyledImages() {
    expectStyled(manager().GetCheckBoxIconImg(false), L"Button", 3, 1, kMagenta);
    expectStyled(manager().GetCheckBoxIconImg(true), L"Button", 3, 5, kMagenta);
    expectStyled(manager().GetMixedCheckBoxIconImg(), L"Button", 3, 9, kMagenta);
    expectStyled(manager().GetTreeGlyphImg(false), L"TreeView", 2, 1, kWhite);
    expectStyled(manager().GetTreeGlyphImg(true), L"TreeView", 2, 2, kWhite);
  }
};

class ThemeImagesWithoutStyles : public ThemeImages {
protected:
  ThemeImagesWithoutStyles() : ThemeImages(Styles::Off) {}
};

TEST_F(ThemeImages, AreInTheLookOfTheSystem) {
  expectStyledImages();
  for (SV::Image const * const image : {&manager().GetCheckBoxIconImg(false), &manager().GetCheckBoxIconImg(true),
                                        &manager().GetMixedCheckBoxIconImg()}) {
    EXPECT_EQ(image->GetMaskMode(), SV::IMAGE_MASK_COLOR);
    EXPECT_EQ(image->GetMaskColor().GetRGB(), kMagenta);
  }
  EXPECT_EQ(manager().GetTreeGlyphImg(true).GetMaskMode(), SV::IMAGE_MASK_NONE);
  EXPECT_EQ(manager().GetTreeGlyphImg(false).GetMaskMode(), SV::IMAGE_MASK_NONE);
}

// They are made for lists and trees, which the system draws in its own look.
TEST_F(ThemeImages, AreInTheLookOfTheSystemAlsoWhereThemesAreNot) {
  manager().SetVisualStylesXPEnabled(false);
  expectStyledImages();
}

TEST_F(ThemeImages, ShowTheirStates) {
  Canvas off(16, 16);
  Canvas on(16, 16);
  Canvas mixed(16, 16);
  canvasOf(manager().GetCheckBoxIconImg(false), off);
  canvasOf(manager().GetCheckBoxIconImg(true), on);
  canvasOf(manager().GetMixedCheckBoxIconImg(), mixed);
  EXPECT_TRUE(off.difference(on));
  EXPECT_TRUE(off.difference(mixed));
  EXPECT_TRUE(on.difference(mixed));
  canvasOf(manager().GetTreeGlyphImg(false), off);
  canvasOf(manager().GetTreeGlyphImg(true), on);
  EXPECT_TRUE(off.difference(on));
}

/// A style of which only state 1 leaves a trace.
HRESULT WINAPI drawFirstState(HTHEME, HDC device, int, int state, RECT const * area, RECT const *) {
  if (state == 1)
    FillRect(device, area, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  return S_OK;
}

TEST_F(ThemeImages, HaveNothingOfTheStateThatWasDrawnBefore) {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "uxtheme.dll",
                          {{"DrawThemeBackground", reinterpret_cast<void *>(drawFirstState)}});
  Canvas shown(16, 16);
  canvasOf(manager().GetCheckBoxIconImg(true), shown);
  GdiFlush();
  EXPECT_EQ(shown.at(8, 8), quadOf(kMagenta));
  canvasOf(manager().GetCheckBoxIconImg(false), shown);
  GdiFlush();
  EXPECT_EQ(shown.at(8, 8), 0x000000u);
  canvasOf(manager().GetTreeGlyphImg(true), shown);
  GdiFlush();
  EXPECT_EQ(shown.at(8, 8), quadOf(kWhite));
}

TEST_F(ThemeImages, GiveTheirPixelsBackWhenTheyAreForgottenAndAtTheEnd) {
  manager().GetCheckBoxIconImg(true); // with what the toolkit keeps for good
  KivThemeManager::SysThemeChanged();
  svtest::countGdiObjects({"SV0105.dll", "kivara.dll"});
  for (bool const ends : {false, true}) {
    manager().GetCheckBoxIconImg(true);
    manager().GetMixedCheckBoxIconImg();
    manager().GetTreeGlyphImg(true);
    EXPECT_EQ(svtest::gdiObjects(), 5);
    if (ends)
      KivExitAppEvent("end(0)").trigger();
    else
      KivThemeManager::SysThemeChanged();
    EXPECT_EQ(svtest::gdiObjects(), 0) << (ends ? "at the end" : "when forgotten");
  }
}

class ThemeImageCalls : public ToolkitTest {
protected:
  ThemeImageCalls() { noteStyleCalls(); }
  Resources resources;
};

TEST_F(ThemeImageCalls, MakeBothCheckBoxesAtOnceAndNoneTwice) {
  SV::Image const * const checked = &manager().GetCheckBoxIconImg(true);
  EXPECT_EQ(styleCalls().drawn, (std::vector<std::string>{"3,1", "3,5"}));
  SV::Image const * const unchecked = &manager().GetCheckBoxIconImg(false);
  EXPECT_NE(checked, unchecked);
  EXPECT_EQ(&manager().GetCheckBoxIconImg(true), checked);
  EXPECT_EQ(&manager().GetCheckBoxIconImg(false), unchecked);
  EXPECT_EQ(styleCalls().drawn.size(), 2u);
  EXPECT_EQ(styleCalls().opened, std::vector<std::string>{"Button"});
  EXPECT_EQ(styleCalls().windows, std::vector<HWND>{nullptr});
  EXPECT_EQ(styleCalls().open, 0);
}

TEST_F(ThemeImageCalls, MakeBothGlyphsAtOnceAndTheMixedBoxByItself) {
  manager().GetTreeGlyphImg(false);
  manager().GetTreeGlyphImg(true);
  EXPECT_EQ(styleCalls().drawn, (std::vector<std::string>{"2,1", "2,2"}));
  manager().GetMixedCheckBoxIconImg();
  manager().GetMixedCheckBoxIconImg();
  EXPECT_EQ(styleCalls().drawn, (std::vector<std::string>{"2,1", "2,2", "3,9"}));
  EXPECT_EQ(styleCalls().opened, (std::vector<std::string>{"TreeView", "Button"}));
  EXPECT_EQ(styleCalls().windows, (std::vector<HWND>{nullptr, nullptr}));
  EXPECT_EQ(styleCalls().open, 0);
}

// Some styles draw a box in the middle of any area, so that it looks the same in another one.
TEST_F(ThemeImageCalls, LeaveAnEdgeOfOnePixel) {
  manager().GetCheckBoxIconImg(true);
  manager().GetMixedCheckBoxIconImg();
  manager().GetTreeGlyphImg(true);
  ASSERT_EQ(styleCalls().areas.size(), 5u);
  for (RECT const & area : styleCalls().areas)
    EXPECT_EQ(SV::Rectangle(area), SV::Rectangle(1, 1, 14, 14));
}

TEST_F(ThemeImageCalls, ThatWereNeverAskedForAreNotForgottenEither) {
  manager();
  KivThemeManager::SysThemeChanged();
  EXPECT_TRUE(styleCalls().opened.empty());
  EXPECT_FALSE(manager().GetCheckBoxIconImg(true).IsEmpty());
}

TEST_F(ThemeImageCalls, AreMadeAnewAfterAChangeOfTheSystem) {
  KivThemeManager::SysThemeChanged(); // before any of them is there
  for (int round = 0; round < 2; ++round) {
    styleCalls().drawn.clear();
    manager().GetCheckBoxIconImg(true);
    manager().GetMixedCheckBoxIconImg();
    manager().GetTreeGlyphImg(true);
    EXPECT_EQ(styleCalls().drawn, (std::vector<std::string>{"3,1", "3,5", "3,9", "2,1", "2,2"})) << round;
    KivThemeManager::SysThemeChanged();
  }
}

TEST_F(ThemeImageCalls, AreForgottenWithTheManager) {
  manager().GetCheckBoxIconImg(true);
  KivExitAppEvent("end(0)").trigger();
  manager().GetCheckBoxIconImg(true);
  EXPECT_EQ(styleCalls().drawn.size(), 4u);
}

TEST_F(ThemeImagesWithoutStyles, AreThoseOfTheArchive) {
  struct {
    SV::Image const & image;
    char const * name;
  } const rows[] = {{manager().GetCheckBoxIconImg(false), "selbox/chkbox0.png"},
                    {manager().GetCheckBoxIconImg(true), "selbox/chkbox1.png"},
                    {manager().GetMixedCheckBoxIconImg(), "selbox/chkbox2.png"}};
  for (auto const & row : rows) {
    EXPECT_EQ(row.image.GetSizePixel(), (SV::Size{16, 16})) << row.name;
    EXPECT_EQ(row.image.GetBitmap().GethBitmap(), SV::ImagePool::GetImage(row.name).GetBitmap().GethBitmap())
        << row.name;
    EXPECT_EQ(row.image.GetMaskMode(), SV::IMAGE_MASK_ALPHA) << row.name;
  }
}

TEST_F(ThemeImagesWithoutStyles, OfTreesAreThoseOfTheLanguagePack) {
  constexpr POINT kPlus = {8, 6}; // where the upright line of the closed one is
  Canvas closed(16, 16);
  Canvas open(16, 16);
  ASSERT_EQ(manager().GetTreeGlyphImg(false).GetSizePixel(), (SV::Size{16, 16}));
  ASSERT_EQ(manager().GetTreeGlyphImg(true).GetSizePixel(), (SV::Size{16, 16}));
  canvasOf(manager().GetTreeGlyphImg(false), closed);
  canvasOf(manager().GetTreeGlyphImg(true), open);
  GdiFlush();
  EXPECT_EQ(closed.at(kPlus.x, kPlus.y), 0x000000u);
  EXPECT_EQ(open.at(kPlus.x, kPlus.y), 0xFFFFFFu);
  for (Canvas const * const each : {&closed, &open}) {
    EXPECT_EQ(each->at(8, 8), 0x000000u);
    EXPECT_EQ(each->at(4, 4), 0x808080u);
    EXPECT_EQ(each->at(0, 0), 0xFFFFFFu);
  }
}

TEST_F(ThemeImagesWithoutStyles, AreEmptyWithoutArchiveAndLanguagePack) {
  SV::ImagePool::SetPoolFile("no such file.zip");
  SV::Resource::SetResManager(nullptr);
  EXPECT_TRUE(manager().GetCheckBoxIconImg(false).IsEmpty());
  EXPECT_TRUE(manager().GetCheckBoxIconImg(true).IsEmpty());
  EXPECT_TRUE(manager().GetMixedCheckBoxIconImg().IsEmpty());
  EXPECT_TRUE(application.exceptions.empty());
  EXPECT_TRUE(manager().GetTreeGlyphImg(false).IsEmpty());
  EXPECT_TRUE(manager().GetTreeGlyphImg(true).IsEmpty());
  ASSERT_EQ(application.exceptions.size(), 2u);
  EXPECT_EQ(application.exceptions[0].arg, 0x2006272u);
  EXPECT_EQ(application.exceptions[1].arg, 0x2006273u);
}

TEST_F(ThemeImagesWithoutStyles, AreReadAnewAfterAChangeOfTheSystem) {
  SV::ImagePool::SetPoolFile("");
  EXPECT_TRUE(manager().GetCheckBoxIconImg(true).IsEmpty());
  SV::ImagePool::SetPoolFile(Kiv_GetProgramPathFilename("agfx.zip"));
  EXPECT_TRUE(manager().GetCheckBoxIconImg(true).IsEmpty());
  KivThemeManager::SysThemeChanged();
  EXPECT_FALSE(manager().GetCheckBoxIconImg(true).IsEmpty());
}

} // namespace
