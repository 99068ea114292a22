#pragma once
/// \file
/// Themes that draw on a canvas, beside their model on another one.

#include "aplatfrm.hpp"
#include "atheme_manager.hpp"
#include "support/windows/visual_styles.hpp"
#include "sv0105/application/testapplication.hpp"
#include "ui/themes/model.hpp"

#include <string>
#include <vector>

namespace themetest {

/// Which drawings are to be expected.
enum class Styles { On, Off, NotUsed };

struct Case {
  long theme; ///< 0 Classic, 1 Modern
  Styles styles;
};

inline std::string nameOf(Case const & row) {
  char const * const styles[] = {"WithStyles", "WithoutStyles", "WithStylesUnused"};
  return std::string(row.theme == 0 ? "Classic" : "Modern") + styles[static_cast<int>(row.styles)];
}
inline std::ostream & operator<<(std::ostream & out, Case const & row) { return out << nameOf(row); }

inline auto allCases() {
  return testing::Values(Case{0, Styles::On}, Case{0, Styles::Off}, Case{0, Styles::NotUsed}, Case{1, Styles::On},
                         Case{1, Styles::Off}, Case{1, Styles::NotUsed});
}

inline std::string caseName(testing::TestParamInfo<Case> const & info) { return nameOf(info.param); }

/// Widths and heights, in pixels; the last one is inverted.
inline constexpr long kSides[] = {0, 1, 2, 3, 16, 300, -5};

inline std::vector<SV::Rectangle> areas() {
  std::vector<SV::Rectangle> all;
  for (long const width : kSides)
    for (long const height : kSides)
      all.push_back({{10, 9}, {width, height}});
  return all;
}

/// Pictures and a language pack, as the frame gives them to a program.
class Resources {
public:
  Resources() {
    SV::Resource::SetResManager(&manager_);
    SV::ImagePool::SetPoolFile(Kiv_GetProgramPathFilename("agfx.zip"));
  }
  Resources(Resources const &) = delete;
  Resources & operator=(Resources const &) = delete;
  ~Resources() {
    SV::Resource::SetResManager(nullptr);
    SV::ImagePool::SetPoolFile("");
  }

private:
  SV::ResMgr manager_{"language\\2057\\kivara72.dll"};
};

class ThemeTest : support::VisualStylesOff, public ToolkitTest {
protected:
  explicit ThemeTest(Case const & row = {0, Styles::On})
      : VisualStylesOff(row.styles == Styles::Off), theme(KivThemeManager::Instance().GetTheme(row.theme)),
        model(expected, window.GethWnd(), row.theme == 1, row.styles != Styles::Off, row.styles != Styles::NotUsed) {
    EXPECT_EQ(KivThemeManager::IsThemed(), row.styles != Styles::Off);
    KivThemeManager::Instance().SetVisualStylesXPEnabled(row.styles != Styles::NotUsed);
  }

  /// Draws both on fresh canvases and compares.
  template <class Ours, class Theirs> void compare(std::string const & what, Ours const & ours, Theirs const & theirs) {
    drawn.reset();
    expected.reset();
    ours();
    theirs();
    auto const place = drawn.difference(expected);
    EXPECT_FALSE(place) << what << ": at " << place->x << ", " << place->y << " is " << std::hex
                        << drawn.at(place->x, place->y) << ", expected " << expected.at(place->x, place->y)
                        << ", before " << Canvas::patternAt(place->x, place->y);
  }

  static std::string describe(SV::Rectangle const & area) {
    return std::to_string(area.GetWidth()) + " by " + std::to_string(area.GetHeight());
  }

  Resources resources;
  Canvas drawn;
  Canvas expected;
  CanvasWindow window{drawn};
  KivTheme const & theme;
  Model model;
};

class ThemeDrawing : public ThemeTest, public testing::WithParamInterface<Case> {
protected:
  ThemeDrawing() : ThemeTest(GetParam()) {}
};

} // namespace themetest
