#include "support/processes/child_process.hpp"
#include "sv0105/drawing/page.hpp"

namespace {

using SV::CVisualStylesXP;
using SV::Rectangle;
using namespace svtest;

constexpr int kCheckBox = 3; // part of "Button"
constexpr int kUnchecked = 1;
constexpr int kChecked = 5;

class VisualStyles : public ToolkitTest {
protected:
  VisualStyles() {
    if (!CVisualStylesXP::IsAppThemed())
      ADD_FAILURE() << "visual styles are off in this prefix";
  }

  Page page;
};

TEST_F(VisualStyles, AreThoseOfTheApplication) {
  EXPECT_EQ(&SV::Application::GetVisualStylesXP(), &SV::Application::GetVisualStylesXP());
  EXPECT_TRUE(SV::Application::GetVisualStylesXP().IsAppThemed());
}

TEST_F(VisualStyles, DrawAPartIntoAllOfTheRectangleAndNowhereElse) {
  void * const theme = CVisualStylesXP::OpenThemeData(nullptr, "Button");
  ASSERT_NE(theme, nullptr);
  EXPECT_TRUE(
      CVisualStylesXP::DrawThemeBackground(theme, page.context(), kCheckBox, kUnchecked, Rectangle(1, 1, 14, 14)));
  support::Pixels const unchecked = page.pixels();
  EXPECT_GT(page.drawn(), 20u);
  for (int i = 0; i < 30; ++i) {
    EXPECT_EQ(unchecked.at(i, 0), kWhite);
    EXPECT_EQ(unchecked.at(i, 15), kWhite);
    EXPECT_EQ(unchecked.at(15, i), kWhite);
  }
  page.wipe();
  EXPECT_TRUE(
      CVisualStylesXP::DrawThemeBackground(theme, page.context(), kCheckBox, kChecked, Rectangle(1, 1, 14, 14)));
  EXPECT_FALSE(page.pixels() == unchecked);
  EXPECT_TRUE(CVisualStylesXP::CloseThemeData(theme));
}

TEST_F(VisualStyles, DrawNothingIntoAnEmptyRectangle) {
  void * const theme = CVisualStylesXP::OpenThemeData(nullptr, "Button");
  EXPECT_FALSE(
      CVisualStylesXP::DrawThemeBackground(theme, page.context(), kCheckBox, kUnchecked, Rectangle(9, 9, 5, 5)));
  EXPECT_EQ(page.drawn(), 0u);
  CVisualStylesXP::CloseThemeData(theme);
}

TEST_F(VisualStyles, TakeTheFirstOfSeveralClassesThatThereIs) {
  void * const theme = CVisualStylesXP::OpenThemeData(nullptr, "NoSuchClass;Button");
  EXPECT_NE(theme, nullptr);
  CVisualStylesXP::CloseThemeData(theme);
  EXPECT_EQ(CVisualStylesXP::OpenThemeData(nullptr, "NoSuchClass"), nullptr);
  EXPECT_EQ(CVisualStylesXP::OpenThemeData(nullptr, ""), nullptr);
}

TEST_F(VisualStyles, DoNothingWithoutAHandle) {
  EXPECT_FALSE(CVisualStylesXP::CloseThemeData(nullptr));
  EXPECT_FALSE(
      CVisualStylesXP::DrawThemeBackground(nullptr, page.context(), kCheckBox, kUnchecked, Rectangle(1, 1, 9, 9)));
  EXPECT_EQ(page.drawn(), 0u);
}

TEST_F(VisualStyles, OpenForAWindowToo) {
  SV::Window const window(nullptr);
  void * const theme = CVisualStylesXP::OpenThemeData(window.GethWnd(), "Window");
  EXPECT_NE(theme, nullptr);
  EXPECT_TRUE(CVisualStylesXP::CloseThemeData(theme));
}

} // namespace
