// What the themes draw, pixel by pixel beside a model.

#include "atheme.hpp"

#include "ui/themes/themetest.hpp"

namespace {

using namespace themetest;

INSTANTIATE_TEST_SUITE_P(Themes, ThemeDrawing, allCases(), caseName);

TEST_P(ThemeDrawing, HasTheColoursOfItsPalette) {
  for (long index = -2; index < 15; ++index) {
    COLORREF const color = static_cast<COLORREF>(theme.GetColor(index).GetRGB());
    COLORREF const listed = model.color(static_cast<int>(index));
    EXPECT_TRUE(alike(quadOf(color), quadOf(listed))) << index << std::hex << ' ' << color;
    if (GetParam().theme == 1) { // numbers of a table, not computed
      EXPECT_EQ(color, listed) << index;
    }
  }
}

TEST_P(ThemeDrawing, DrawsCaptionsAndFrames) {
  for (int part = -1; part <= 11; ++part)
    for (SV::Rectangle const & area : areas())
      compare(
          "part " + std::to_string(part) + ", " + describe(area),
          [&] { theme.Draw(window, static_cast<KivThemeClass>(part), area); },
          [&] { model.caption(part, area.ToSystem()); });
}

TEST_P(ThemeDrawing, DrawsTextsOfCaptions) {
  for (int part = -1; part <= 10; ++part)
    for (char const * const text :
         {"", "i", "Properties", "A long title of a pane that has quite some room \xE4\xF6\xFC"})
      for (SV::Rectangle const & area : areas())
        compare(
            "part " + std::to_string(part) + ", " + text + ", " + describe(area),
            [&] { theme.DrawText(window, static_cast<KivThemeClass>(part), area, text); },
            [&] { model.text(part, area.ToSystem(), text); });
}

TEST_P(ThemeDrawing, CutsTextsWhereTheyStopToFit) {
  for (std::string const text : {"A long title", "iWW"}) // the last one is wider than its dots
    for (long width = 1; width < 110; ++width) {
      SV::Rectangle const area({10, 9}, {width, 18});
      compare(
          text + ", " + describe(area), [&] { theme.DrawText(window, CaptionActive, area, text.c_str()); },
          [&] { model.text(CaptionActive, area.ToSystem(), text); });
    }
}

TEST_P(ThemeDrawing, DrawsCloseButtons) {
  for (int part = -1; part <= 10; ++part)
    for (bool const hot : {false, true})
      for (bool const pressed : {false, true})
        for (SV::Rectangle const & area : areas())
          compare(
              "part " + std::to_string(part) + (hot ? ", hot, " : ", ") + (pressed ? "pressed, " : "") + describe(area),
              [&] { theme.DrawCloseButton(window, static_cast<KivThemeClass>(part), area, hot, pressed); },
              [&] { model.closeButton(part, area.ToSystem(), hot, pressed); });
}

TEST_P(ThemeDrawing, DrawsBackgroundsOfMenus) {
  compare(
      "menu", [&] { theme.DrawMenuBackground(window); }, [&] { model.menu(); });
}

TEST_P(ThemeDrawing, DrawsBackgroundsOfToolbars) {
  for (bool const vertical : {false, true})
    for (SV::Rectangle const & area : areas())
      compare((vertical ? "vertical, " : "") + describe(area),
              [&] { theme.DrawToolbarBackground(window, vertical, area); },
              [&] { model.toolbar(vertical, area.ToSystem()); });
}

TEST_P(ThemeDrawing, DrawsBackgroundsOfStatusBars) {
  for (SV::Rectangle const & area : areas())
    compare(
        describe(area), [&] { theme.DrawStatusBarBackground(window, area); },
        [&] { model.statusBar(area.ToSystem()); });
}

TEST_P(ThemeDrawing, DrawsButtonsOfToolbars) {
  for (bool const enabled : {true, false}) {
    window.SetEnabled(enabled);
    for (int look = 0; look < 16; ++look)
      for (SV::Rectangle const & area : areas()) {
        ButtonLook const state = {(look & 1) != 0, (look & 2) != 0, (look & 4) != 0, (look & 8) != 0};
        compare(
            std::to_string(look) + (enabled ? ", " : ", disabled, ") + describe(area),
            [&] {
              theme.DrawToolbarButton(window, window, area, state.checked, state.hot, state.pressed, state.white);
            },
            [&] { model.button(area.ToSystem(), state, enabled); });
      }
  }
}

TEST_P(ThemeDrawing, DrawsThosePartsOfRectanglesThatLieOnTheDevice) {
  for (SV::Rectangle const & area : {SV::Rectangle({-5, -6}, {40, 30}), SV::Rectangle({-4, -7}, {40, 30}),
                                     SV::Rectangle({320, 321}, {40, 30}), SV::Rectangle({-20, -21}, {400, 400}),
                                     SV::Rectangle({0, 100}, {330, 20}), SV::Rectangle({100, -20}, {20, 400})}) {
    RECT const edges = area.ToSystem();
    for (int part = 0; part < 10; ++part) {
      auto const each = static_cast<KivThemeClass>(part);
      std::string const what = "part " + std::to_string(part) + " at " + std::to_string(area.Left());
      compare(
          what, [&] { theme.Draw(window, each, area); }, [&] { model.caption(part, edges); });
      compare(
          what, [&] { theme.DrawText(window, each, area, "Text"); }, [&] { model.text(part, edges, "Text"); });
      compare(
          what, [&] { theme.DrawCloseButton(window, each, area, false, false); },
          [&] { model.closeButton(part, edges, false, false); });
    }
    for (bool const vertical : {false, true})
      compare(
          "tool bar", [&] { theme.DrawToolbarBackground(window, vertical, area); },
          [&] { model.toolbar(vertical, edges); });
    compare(
        "status bar", [&] { theme.DrawStatusBarBackground(window, area); }, [&] { model.statusBar(edges); });
    compare(
        "button", [&] { theme.DrawToolbarButton(window, window, area, false, true, false, false); },
        [&] {
          model.button(edges, {false, true, false, false}, true);
        });
  }
}

} // namespace
