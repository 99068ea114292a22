#include "apps/modeler/in_process.hpp"
#include "commands/menus.hpp"
#include "commands/program/lookcommands.hpp"
#include "texts/viewtexts.hpp"

#include <gtest/gtest.h>

using SV::String;

namespace {

/// In English, with choices kept in a file of the test's.
class ModelerLookCommands : public modeler::InProcess {
protected:
  ModelerLookCommands() {
    settings.emplace();
    menus.AddMenu(modeler::MENU_VIEW, modeler::kMenuView);
    menus.Add(modeler::lookCommands(*settings));
  }

  std::string kept() const { return support::readFile(folder / "kept.ini").value_or(""); }

  static std::string themeInUse() { return KivThemeManager::CurrentTheme().GetName().c_str(); }

  std::optional<modeler::Settings> settings;
  modeler::Menus menus;
};

TEST_F(ModelerLookCommands, ChooseAThemeMarkItAndKeepIt) {
  EXPECT_TRUE(menus.IsChecked(modeler::VIEW_MODERN));
  EXPECT_FALSE(menus.IsChecked(modeler::VIEW_CLASSIC));
  menus.Choose(modeler::VIEW_CLASSIC);
  EXPECT_EQ(themeInUse(), "Classic");
  EXPECT_FALSE(menus.IsChecked(modeler::VIEW_MODERN));
  EXPECT_TRUE(menus.IsChecked(modeler::VIEW_CLASSIC));
  EXPECT_EQ(kept(), "[Modeler]\r\nTheme=Classic\r\n");
}

TEST_F(ModelerLookCommands, SwitchVisualStylesAndKeepThat) {
  EXPECT_TRUE(menus.IsChecked(modeler::VIEW_STYLES));
  menus.Choose(modeler::VIEW_STYLES);
  EXPECT_FALSE(KivThemeManager::Instance().IsVisualStylesXPEnabled());
  EXPECT_FALSE(menus.IsChecked(modeler::VIEW_STYLES));
  EXPECT_EQ(kept(), "[Modeler]\r\nVisualStyles=0\r\n");
  EXPECT_EQ(themeInUse(), "Modern");
  menus.Choose(modeler::VIEW_STYLES);
  EXPECT_TRUE(KivThemeManager::Instance().IsVisualStylesXPEnabled());
}

TEST_F(ModelerLookCommands, FindTheLookOfTheLastRunAgain) {
  settings->Set("Theme", "Classic");
  settings->SetOn("VisualStyles", false);
  modeler::applyLook(*settings);
  EXPECT_EQ(themeInUse(), "Classic");
  EXPECT_FALSE(KivThemeManager::Instance().IsVisualStylesXPEnabled());
}

TEST_F(ModelerLookCommands, TakeNoNoticeOfAThemeThatDoesNotExist) {
  settings->Set("Theme", String("A name that is much longer than what any theme has, and longer than its room too"));
  modeler::applyLook(*settings);
  EXPECT_EQ(themeInUse(), "Modern");
}

TEST_F(ModelerLookCommands, NameWhatShowsThemElsewhere) {
  int refreshed = 0;
  menus.ChangeRefreshHdl([&] { ++refreshed; });
  menus.Choose(modeler::VIEW_CLASSIC);
  EXPECT_EQ(refreshed, 1);
  EXPECT_STREQ(modeler::plain(menus.GetName(modeler::VIEW_CLASSIC)).c_str(), "Classic look");
  EXPECT_EQ(menus.GetName(999).Len(), 0);
  EXPECT_FALSE(menus.IsChecked(999));
  menus.Choose(999);
  EXPECT_EQ(refreshed, 1);
}

TEST(ModelerPlainText, HasNoMnemonicNoDotsAndNoKey) {
  EXPECT_STREQ(modeler::plain("~Open...").c_str(), "Open");
  EXPECT_STREQ(modeler::plain("Ne~xt part\tF6").c_str(), "Next part");
  EXPECT_STREQ(modeler::plain("").c_str(), "");
}

} // namespace
