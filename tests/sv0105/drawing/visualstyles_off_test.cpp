// A process whose user has switched visual styles off.

#include "support/windows/visual_styles.hpp"
#include "sv0105/drawing/page.hpp"

namespace {

using SV::CVisualStylesXP;
using SV::Rectangle;
using namespace svtest;

class VisualStylesOff : support::VisualStylesOff, public ToolkitTest {
protected:
  Page page;
};

TEST_F(VisualStylesOff, AreNotThoseOfTheApplication) {
  EXPECT_FALSE(CVisualStylesXP::IsAppThemed());
  EXPECT_FALSE(SV::Application::GetVisualStylesXP().IsAppThemed());
}

TEST_F(VisualStylesOff, HaveNoClassAtAll) {
  SV::Window const window(nullptr);
  for (char const * const name : {"Window", "Button", "Toolbar", "Status", "TreeView", "Progress", "Tab", "Spin",
                                  "Edit", "NoSuchClass;Button", "NoSuchClass", ""}) {
    EXPECT_EQ(CVisualStylesXP::OpenThemeData(nullptr, name), nullptr) << name;
    EXPECT_EQ(CVisualStylesXP::OpenThemeData(window.GethWnd(), name), nullptr) << name;
  }
}

TEST_F(VisualStylesOff, DrawNothing) {
  void * const theme = CVisualStylesXP::OpenThemeData(nullptr, "Button");
  EXPECT_FALSE(CVisualStylesXP::DrawThemeBackground(theme, page.context(), 3, 1, Rectangle(1, 1, 14, 14)));
  EXPECT_EQ(page.drawn(), 0u);
  EXPECT_FALSE(CVisualStylesXP::CloseThemeData(theme));
}

/// The system draws the controls by itself then.
TEST_F(VisualStylesOff, LeaveControlsAsTheyAre) {
  SV::Dialog dialog(nullptr, SV::WB_TITLE);
  dialog.SetPosSizePixel({0, 0}, {200, 100});
  SV::PushButton button(&dialog);
  button.SetPosSizePixel({10, 10}, {80, 24});
  button.SetText("Press");
  button.Show();
  dialog.Show();
  SV::Application::Reschedule();
  RECT area;
  GetClientRect(button.GethWnd(), &area);
  SendMessageA(button.GethWnd(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(page.context()), PRF_CLIENT);
  EXPECT_GT(page.drawn(), 100u);
  EXPECT_EQ(page.pixel(20, 4), GetSysColor(COLOR_BTNFACE)); // one colour: a style's button runs through several
}

} // namespace
