#include "commands/languagecommands.hpp"
#include "commands/menus.hpp"

#include <algorithm>

#include <gtest/gtest.h>

using SV::String;

namespace {

/// In English, with the program's texts.
class ModelerMenus : public testing::Test {
protected:
  ModelerMenus() {
    static char program[] = "modeler.exe";
    static char * words[] = {program};
    KivCmdline::init(1, words, true, "log");
    KivInternational::InitAvailableLanguages();
    KivInternational::SetCurrentLanguageID(2057);
    KivInternational::createResourceManager("kivara", true);
    KivInternational::createResourceManager("modeler", true);
  }

  /// The menu under a title of the bar.
  static SV::Menu & menu(modeler::Menus & menus, modeler::Item title) { return *menus.GetBar().GetPopupMenu(title); }

  modeler::Journal journal;
};

TEST_F(ModelerMenus, StandInTheirOrderWithHelpLast) {
  modeler::Menus menus;
  menus.AddMenu(modeler::MENU_PLUGINS, modeler::Text::MenuFile);
  modeler::Item const order[] = {modeler::MENU_FILE,   modeler::MENU_EDIT,     modeler::MENU_RAISE,
                                 modeler::MENU_WINDOW, modeler::MENU_LANGUAGE, modeler::MENU_PLUGINS,
                                 modeler::MENU_HELP};
  for (unsigned short i = 0; i < 7; ++i)
    EXPECT_EQ(menus.GetBar().GetItemId(i), order[i]);
}

TEST_F(ModelerMenus, CallTheCommandAndShowWhatItHasChanged) {
  modeler::Menus menus;
  bool isOn = false;
  modeler::Command command = {modeler::MENU_FILE, 900, [] { return String("On"); }, [&] { isOn = !isOn; }};
  command.isChecked = [&] { return isOn; };
  command.isEnabled = [&] { return !isOn; };
  menus.Add({modeler::separator(modeler::MENU_FILE), command});
  SV::Menu & file = menu(menus, modeler::MENU_FILE);
  EXPECT_EQ(file.GetItemId(0), 0);
  EXPECT_STREQ(file.GetItemText(900).c_str(), "On");
  EXPECT_FALSE(file.IsItemChecked(900));
  file.Select(900);
  EXPECT_TRUE(isOn);
  EXPECT_TRUE(file.IsItemChecked(900));
  EXPECT_FALSE(file.IsItemEnabled(900));
  file.Select(901);
  EXPECT_TRUE(isOn) << "none has this identifier";
}

TEST_F(ModelerMenus, MarkTheLanguageInUseAndFollowIt) {
  int changes = 0;
  modeler::Menus menus;
  menus.Add(modeler::languageCommands(journal, [&] { ++changes; }));
  SV::Menu & languages = menu(menus, modeler::MENU_LANGUAGE);
  auto const itemOf = [&](unsigned short language) {
    ISequence<unsigned short> const & all = KivInternational::GetAvailableLanguages();
    return static_cast<unsigned short>(modeler::LANGUAGE_FIRST +
                                       (std::find(all.begin(), all.end(), language) - all.begin()));
  };
  EXPECT_TRUE(languages.IsItemChecked(itemOf(2057)));
  EXPECT_FALSE(languages.IsItemChecked(itemOf(1031)));
  EXPECT_STREQ(menus.GetBar().GetItemText(modeler::MENU_FILE).c_str(), "~File");
  languages.Select(itemOf(1031));
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(KivInternational::GetCurrentLanguageID(), 1031);
  EXPECT_FALSE(languages.IsItemChecked(itemOf(2057)));
  EXPECT_TRUE(languages.IsItemChecked(itemOf(1031)));
  EXPECT_STREQ(menus.GetBar().GetItemText(modeler::MENU_FILE).c_str(), "~Datei");
}

} // namespace
