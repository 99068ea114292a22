// Rules of the drawings that no table of places and colours shows.

#include "acolor.hpp"
#include "support/imports/import_hook.hpp"
#include "ui/themes/stylecalls.hpp"
#include "ui/themes/themetest.hpp"

#include <array>

namespace {

using namespace themetest;

SV::Rectangle const kArea({10, 9}, {100, 18});

class ClassicByHand : public ThemeTest {
protected:
  ClassicByHand() : ThemeTest({0, Styles::NotUsed}) {}
};

class ClassicStyled : public ThemeTest {};

class ModernStyled : public ThemeTest {
protected:
  ModernStyled() : ThemeTest({1, Styles::On}) {}
};

/// A user who has styles off, while themes would use them.
class ClassicWithoutStyles : public ThemeTest {
protected:
  ClassicWithoutStyles() : ThemeTest({0, Styles::Off}) {}
};

TEST_F(ClassicByHand, CaptionsHaveStripesAndCloseButtonsEdges) {
  theme.Draw(window, CaptionActive, kArea);
  GdiFlush();
  for (int y = 9; y < 27; ++y)
    EXPECT_TRUE(alike(drawn.at(50, y), quadOf(model.color((y - 9) % 2 == 0 ? 7 : 8)))) << y;
  theme.DrawCloseButton(window, CaptionActive, {{10, 9}, {16, 16}}, false, false);
  GdiFlush();
  EXPECT_EQ(drawn.at(10, 9), quadOf(GetSysColor(COLOR_BTNHIGHLIGHT)));
  EXPECT_EQ(drawn.at(25, 24), 0x404040u);
}

TEST_F(ClassicByHand, AnIdleButtonDrawsNothing) {
  for (long index = 0; index < 2; ++index)
    for (bool const white : {false, true})
      KivThemeManager::Instance().GetTheme(index).DrawToolbarButton(window, window, kArea, false, false, false, white);
  EXPECT_TRUE(drawn.isUntouched());
}

TEST_F(ClassicByHand, PartsBeyondThoseThatThereAreDrawNothing) {
  for (long index = 0; index < 2; ++index)
    for (int const part : {-1, 10, 11, 1000, -1000}) {
      KivTheme const & each = KivThemeManager::Instance().GetTheme(index);
      each.Draw(window, static_cast<KivThemeClass>(part), kArea);
    }
  for (long index = 0; index < 2; ++index)
    for (int const part : {-1, 4, 9, 10, 1000}) {
      KivTheme const & each = KivThemeManager::Instance().GetTheme(index);
      each.DrawText(window, static_cast<KivThemeClass>(part), kArea, "Text");
      each.DrawCloseButton(window, static_cast<KivThemeClass>(part), kArea, true, true);
    }
  EXPECT_TRUE(drawn.isUntouched());
}

// Texts

class CaptionWidths : public ClassicByHand {
protected:
  long widthOf(std::string const & text) const {
    SV::OutputDevice device(expected.context());
    SV::Font font = SV::Application::GetAppFont();
    font.ChangeSize({0, 12});
    font.ChangeWeight(SV::WEIGHT_BOLD);
    device.ChangeFont(font);
    return device.GetTextSize(text.c_str()).width;
  }

  /// Whether a caption of that width shows this text as it shows \p other without a limit.
  void expectShown(std::string const & text, long width, std::string const & other) {
    compare(
        text + " in " + std::to_string(width),
        [&] {
          theme.DrawText(window, CaptionActive, {{10, 9}, {width, 18}}, text.c_str());
        },
        [&] {
          model.text(CaptionActive, {10, 9, 310, 27}, other);
        });
  }
};

TEST_F(CaptionWidths, ATextThatFitsLessSixPixelsIsShownWhole) {
  expectShown("Properties", widthOf("Properties") + 6, "Properties");
  std::string cut = "Properties";
  do
    cut.pop_back();
  while (widthOf(cut + "...") > widthOf("Properties") - 1);
  expectShown("Properties", widthOf("Properties") + 5, cut + "...");
}

TEST_F(CaptionWidths, RoomForOneCharacterShowsDots) {
  expectShown("Properties", widthOf("P") + 6, "...");
  expectShown("Properties", 1, "...");
  expectShown("P", widthOf("P") + 5, "...");
  expectShown("", 1, "");
}

TEST_F(CaptionWidths, ALongTextOfNarrowCharactersIsShownAsFarAsItFits) {
  std::string const text(600, 'i');
  long const whole = widthOf(text) + 6;
  Canvas ours(static_cast<int>(whole) + 20, 30);
  Canvas theirs(ours.width(), ours.height());
  CanvasWindow wide(ours);
  for (long const width : {whole, whole - 1, whole * 2 / 3, whole / 3}) {
    ours.reset();
    theirs.reset();
    SV::Rectangle const area({10, 9}, {width, 18});
    theme.DrawText(wide, CaptionActive, area, text.c_str());
    Model(theirs, wide.GethWnd(), false, true, false).text(CaptionActive, area.ToSystem(), text);
    EXPECT_FALSE(ours.difference(theirs)) << width << " of " << whole;
  }
}

/// A theme whose captions have two given colours.
class TwoColors : public KivTheme {
public:
  TwoColors(unsigned long first, unsigned long second) : KivTheme("Two"), first_(first), second_(second) {}
  SV::Color GetColor(long index) const override {
    SV::Color color;
    color.SetRGB(index == 5 || index == 7 ? first_ : second_);
    return color;
  }

private:
  unsigned long first_;
  unsigned long second_;
};

/// How many pixels have exactly that colour.
int count(Canvas const & canvas, Quad quad) {
  GdiFlush();
  int pixels = 0;
  for (int y = 0; y < canvas.height(); ++y)
    for (int x = 0; x < canvas.width(); ++x)
      pixels += canvas.at(x, y) == quad ? 1 : 0;
  return pixels;
}

/// Makes the canvas one colour, so that each pixel that differs is one of the text.
void wipe(Canvas & canvas, Quad quad) {
  GdiFlush();
  for (int y = 0; y < canvas.height(); ++y)
    for (int x = 0; x < canvas.width(); ++x)
      canvas.at(x, y) = quad;
}

TEST_F(ClassicByHand, TextsAreBlackOverColoursWhoseMeanBrightnessIsAbove150) {
  // The brightness of a gray of 152 is 150, since its three parts are cut off; of 153 it is 151.
  struct {
    unsigned long first;
    unsigned long second;
    bool black;
  } const rows[] = {{0x989898, 0x989898, false}, {0x999999, 0x989898, true}, {0x989898, 0x999999, true},
                    {0xFFFFFF, 0x000000, false}, {0xFFFFFF, 0xFFFFFF, true}, {0x000000, 0x000000, false}};
  for (auto const & row : rows) {
    wipe(drawn, 0x00FF00);
    TwoColors(row.first, row.second).DrawText(window, PlainCaptionInactive, kArea, "Text");
    int const blacks = count(drawn, 0x000000);
    int const whites = count(drawn, 0xFFFFFF);
    // One of the two is the shadow in some rows.
    EXPECT_GT(row.black ? blacks : whites, 20) << std::hex << row.first << ' ' << row.second;
    if (row.first != 0xFFFFFF && row.first != 0x000000) {
      EXPECT_EQ(row.black ? whites : blacks, 0) << std::hex << row.first << ' ' << row.second;
    }
  }
}

COLORREF captionText;
DWORD WINAPI colorWithCaptionText(int index) {
  if (index == COLOR_CAPTIONTEXT)
    return captionText;
  return index == COLOR_ACTIVECAPTION ? 0x6080A0 : GetSysColor(index);
}

TEST_F(ClassicStyled, ShadowsAreTheCaptionsColourBelowADarkTextAndHalfOfItBelowALightOne) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "USER32.dll",
                          {{"GetSysColor", reinterpret_cast<void *>(colorWithCaptionText)}});
  struct {
    COLORREF text;
    Quad shadow;
  } const rows[] = {{0x818181, 0xA08060}, {0x828282, 0x504030}, {0x000000, 0xA08060}, {0xFFFFFF, 0x504030}};
  for (auto const & row : rows) { // the brightness of 0x81 is 128, of 0x82 it is 129
    captionText = row.text;
    wipe(drawn, 0x00FF00);
    theme.DrawText(window, CaptionActive, kArea, "Text");
    GdiFlush();
    EXPECT_GT(count(drawn, row.shadow), 5) << std::hex << row.text;
    EXPECT_EQ(count(drawn, row.shadow == 0xA08060 ? 0x504030 : 0xA08060), 0) << std::hex << row.text;
  }
}

TEST_F(ClassicByHand, TextsAreTransparentWhateverTheApplicationsFontIs) {
  SV::Font font = SV::Application::GetAppFont();
  font.ChangeTransparent(false);
  font.ChangeFillColor(SV::COL_RED);
  SV::Application::ChangeAppFont(font);
  wipe(drawn, 0x00FF00);
  theme.DrawText(window, CaptionActive, kArea, "Text");
  EXPECT_EQ(count(drawn, 0x800000), 0);
  EXPECT_GT(count(drawn, 0x00FF00), 330 * 330 - 100 * 18);
}

// Parts and states, of which some look alike in some styles

struct NotedCalls {
  NotedCalls() { noteStyleCalls(); }
};

class StyledParts : NotedCalls, public ThemeTest {
protected:
  /// What the style was asked for by one drawing.
  template <class Draw> std::string asked(Draw const & draw) {
    styleCalls() = {};
    draw();
    std::string all;
    for (std::size_t i = 0; i < styleCalls().drawn.size(); ++i)
      all += styleCalls().opened.at(i) + " " + styleCalls().drawn[i];
    EXPECT_EQ(styleCalls().open, 0);
    return all;
  }
};

TEST_F(StyledParts, OfCaptionsAndFramesAreThoseOfTheTable) {
  char const * const rows[] = {"Window 2,1",  "Window 2,2",  "Window 2,1",  "Window 2,2",  "Window 10,1",
                               "Window 10,2", "Window 11,1", "Window 11,2", "Window 12,1", "Window 12,2"};
  for (int part = 0; part < 10; ++part)
    EXPECT_EQ(asked([&] { theme.Draw(window, static_cast<KivThemeClass>(part), kArea); }), rows[part]) << part;
  KivTheme const & modern = KivThemeManager::Instance().GetTheme(1);
  for (int part = 0; part < 10; ++part)
    EXPECT_EQ(asked([&] { modern.Draw(window, static_cast<KivThemeClass>(part), kArea); }), part < 2 ? "" : rows[part])
        << part;
}

TEST_F(StyledParts, OfFramedCaptionsReachBeyondTheRectangle) {
  // left, top, right and bottom, the last two outside of it
  std::vector<std::array<long, 4>> const edges = {
      {8, 7, 112, 27}, {8, 7, 112, 27}, {10, 9, 110, 27}, {10, 9, 110, 27}, {10, 9, 110, 27}};
  for (int part = 0; part < 5; ++part) {
    asked([&] { theme.Draw(window, static_cast<KivThemeClass>(part), kArea); });
    RECT const area = styleCalls().areas.at(0);
    EXPECT_EQ((std::array<long, 4>{area.left, area.top, area.right, area.bottom}),
              edges[static_cast<std::size_t>(part)])
        << part;
  }
}

TEST_F(StyledParts, OfCloseButtonsFollowHotAndPressed) {
  char const * const rows[] = {"Window 18,1", "Window 18,2", "Window 18,3", "Window 18,3"};
  for (int part = 0; part < 4; ++part)
    for (int look = 0; look < 4; ++look)
      EXPECT_EQ(asked([&] {
                  theme.DrawCloseButton(window, static_cast<KivThemeClass>(part), kArea, (look & 1) != 0,
                                        (look & 2) != 0);
                }),
                rows[look])
          << part;
}

TEST_F(StyledParts, OfToolbarButtonsFollowCheckedHotAndPressed) {
  struct {
    bool checked;
    bool hot;
    bool pressed;
    char const * asked;
  } const rows[] = {{false, false, false, "Toolbar 1,1"}, {true, false, false, "Toolbar 1,5"},
                    {false, true, false, "Toolbar 1,2"},  {true, true, false, "Toolbar 1,6"},
                    {false, false, true, "Toolbar 1,3"},  {true, false, true, "Toolbar 1,3"},
                    {false, true, true, "Toolbar 1,3"},   {true, true, true, "Toolbar 1,3"}};
  for (long index = 0; index < 2; ++index)
    for (auto const & row : rows)
      EXPECT_EQ(asked([&] {
                  KivThemeManager::Instance().GetTheme(index).DrawToolbarButton(window, window, kArea, row.checked,
                                                                                row.hot, row.pressed, false);
                }),
                row.asked);
}

// Modern

BOOL WINAPI versionOfXP(OSVERSIONINFOA * version) {
  version->dwMajorVersion = 5;
  version->dwMinorVersion = 1;
  version->dwPlatformId = VER_PLATFORM_WIN32_NT;
  return TRUE;
}

TEST_F(ModernStyled, ButtonsAreDrawnByHandBeforeVista) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"GetVersionExA", reinterpret_cast<void *>(versionOfXP)}});
  ASSERT_FALSE(Kiv_IsAtLeastWindowsVista());
  Model const byHand(expected, window.GethWnd(), true, true, false);
  ButtonLook const hot = {false, true, false, false};
  compare(
      "hot", [&] { theme.DrawToolbarButton(window, window, kArea, false, true, false, false); },
      [&] { byHand.button(kArea.ToSystem(), hot, true); });
  KivTheme const & classic = KivThemeManager::Instance().GetTheme(0);
  compare(
      "Classic", [&] { classic.DrawToolbarButton(window, window, kArea, false, true, false, false); },
      [&] { Model(expected, window.GethWnd(), false, true, true).button(kArea.ToSystem(), hot, true); });
}

TEST_F(ModernStyled, WithoutItsPictureACloseButtonIsNotDrawn) {
  SV::ImagePool::SetPoolFile("");
  for (int part = 0; part < 4; ++part)
    for (bool const hot : {false, true})
      theme.DrawCloseButton(window, static_cast<KivThemeClass>(part), kArea, hot, false);
  EXPECT_TRUE(drawn.isUntouched());
}

// White is half of its own way over black: 128 of 255.
TEST_F(ModernStyled, CloseButtonsOfInactiveCaptionsAreAtExactlyHalfStrength) {
  SV::Rectangle const area({10, 9}, {16, 16});
  wipe(drawn, 0x000000);
  theme.DrawCloseButton(window, CaptionActive, area, false, false);
  int const whites = count(drawn, 0xFFFFFF);
  ASSERT_GT(whites, 0);
  wipe(drawn, 0x000000);
  theme.DrawCloseButton(window, CaptionInactive, area, false, false);
  EXPECT_EQ(count(drawn, 0x808080), whites);
}

TEST_F(ClassicByHand, WithoutALanguagePackACloseButtonHasNoCross) {
  SV::Resource::SetResManager(nullptr);
  theme.DrawCloseButton(window, CaptionActive, {{10, 9}, {16, 16}}, false, false);
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].arg, 0x2002BBBu);
  GdiFlush();
  for (int y = 11; y < 22; ++y)
    EXPECT_EQ(drawn.at(18, y), quadOf(GetSysColor(COLOR_BTNFACE))) << y;
  theme.DrawCloseButton(window, CaptionActive, {{10, 9}, {16, 16}}, false, false);
  EXPECT_EQ(application.exceptions.size(), 1u) << "it is asked for once";
}

// Bars follow the setting of the themes alone, whether or not the user has styles.
TEST_F(ClassicWithoutStyles, ToolBarsRunFromColourToColour) {
  theme.DrawToolbarBackground(window, true, {{0, 0}, {330, 330}});
  GdiFlush();
  EXPECT_TRUE(alike(drawn.at(5, 0), quadOf(model.color(1))));
  EXPECT_FALSE(alike(drawn.at(5, 329), quadOf(model.color(1))));
}

// The lines of a status bar follow the user's setting alone.
TEST_F(ClassicByHand, StatusBarsHaveTheirLinesWhereTheUserHasStyles) {
  theme.DrawStatusBarBackground(window, {{0, 0}, {330, 330}});
  GdiFlush();
  EXPECT_FALSE(alike(drawn.at(5, 0), quadOf(model.color(0))));
  EXPECT_TRUE(alike(drawn.at(5, 100), quadOf(model.color(0))));
}

TEST_F(ClassicByHand, StatusBarsHaveLinesOfExactlyTheirFactors) {
  theme.DrawStatusBarBackground(window, {{0, 0}, {330, 330}});
  GdiFlush();
  struct {
    int row;
    double factor;
  } const lines[] = {{0, 0.632},   {1, 0.815},   {2, 0.912},   {3, 0.984},   {4, 1.011},
                     {325, 0.991}, {326, 0.975}, {327, 0.942}, {328, 0.919}, {329, 0.945}};
  for (auto const & line : lines)
    for (int const x : {0, 329})
      EXPECT_EQ(drawn.at(x, line.row), quadOf(static_cast<COLORREF>(mulColor(theme.GetColor(0), line.factor).GetRGB())))
          << line.row;
}

TEST_F(ClassicByHand, ColoursAreExactlyThoseOfTheTable) {
  SV::Color const face = SV::COL_FACE;
  SV::Color const mixed = srcOver(face, SV::COL_HIGHLIGHT, 0.5);
  SV::Color const rows[] = {face,
                            mulColor(face, 1.05),
                            mulColor(face, 0.98),
                            mulColor(face, 1.25),
                            mulColor(face, 0.8),
                            srcOver(face, SV::COL_GRAY, 0.3),
                            srcOver(face, SV::COL_GRAY, 0.2),
                            srcOver(face, SV::COL_HIGHLIGHT, 0.4),
                            srcOver(face, SV::COL_HIGHLIGHT, 0.3),
                            mulColor(mixed, 0.8),
                            mulColor(face, 1.25)};
  for (long index = 0; index < std::ssize(rows); ++index)
    EXPECT_EQ(theme.GetColor(index).GetRGB(), rows[index].GetRGB()) << index;
}

TEST_F(ClassicByHand, StatusBarsLowerThanTheirLinesDrawThemOverEachOther) {
  for (int height = 1; height < 12; ++height) {
    Canvas ours(30, height);
    Canvas theirs(30, height);
    CanvasWindow low(ours);
    SV::Rectangle const whole({0, 0}, {30, height});
    theme.DrawStatusBarBackground(low, whole);
    Model(theirs, low.GethWnd(), false, true, false).statusBar(whole.ToSystem());
    EXPECT_FALSE(ours.difference(theirs)) << height;
  }
}

} // namespace
