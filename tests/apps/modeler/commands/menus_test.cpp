#include "commands/menus.hpp"
#include "commands/program/languagecommands.hpp"

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
  EXPECT_STREQ(file.GetItemText(900).c_str(), "~On");
  EXPECT_FALSE(file.IsItemChecked(900));
  file.Select(900);
  EXPECT_TRUE(isOn);
  EXPECT_TRUE(file.IsItemChecked(900));
  EXPECT_FALSE(file.IsItemEnabled(900));
  file.Select(901);
  EXPECT_TRUE(isOn) << "none has this identifier";
}

TEST_F(ModelerMenus, GiveALetterThatIsFreeToNamesWithoutAMnemonic) {
  modeler::Menus menus;
  auto const command = [](unsigned short id, char const * name) {
    return modeler::Command{modeler::MENU_FILE, id, [name] { return String(name); }, [] {}};
  };
  menus.Add({command(901, "Open"), command(902, "~Print"), command(903, "Options"), command(904, "~Old")});
  SV::Menu & file = menu(menus, modeler::MENU_FILE);
  EXPECT_STREQ(file.GetItemText(901).c_str(), "Op~en");
  EXPECT_STREQ(file.GetItemText(902).c_str(), "~Print");
  EXPECT_STREQ(file.GetItemText(903).c_str(), "Op~tions");
  menus.Refresh();
  EXPECT_STREQ(file.GetItemText(901).c_str(), "Op~en");
}

TEST_F(ModelerMenus, DoNotCallACommandThatIsNotEnabled) {
  modeler::Menus menus;
  int calls = 0;
  modeler::Command command = {modeler::MENU_FILE, 901, [] { return String("~Go"); }, [&] { ++calls; }};
  command.isEnabled = [&] { return calls == 0; };
  menus.Add({command});
  menus.Choose(901);
  menus.Choose(901);
  EXPECT_EQ(calls, 1);
}

TEST_F(ModelerMenus, ListTheKeysThatNamesGive) {
  modeler::Menus menus;
  auto const nothing = [] {};
  menus.Add({{modeler::MENU_FILE, 901, [] { return String("~Open...\tCtrl+O"); }, nothing},
             {modeler::MENU_FILE, 902, [] { return String("~Print"); }, nothing},
             {modeler::MENU_EDIT, 903, [] { return String("~Find\tF3"); }, nothing}});
  ISequence<modeler::Menus::Key> const keys = menus.GetKeys();
  ASSERT_EQ(keys.size(), 2u);
  EXPECT_STREQ(keys[0].key.c_str(), "Ctrl+O");
  EXPECT_STREQ(keys[0].name.c_str(), "Open");
  EXPECT_STREQ(keys[1].key.c_str(), "F3");
}

TEST_F(ModelerMenus, EndWithCommandsThatMayBeOtherOnesEachTime) {
  modeler::Menus menus;
  std::vector<unsigned short> shown = {901, 902};
  unsigned short called = 0;
  menus.Add({{modeler::MENU_WINDOW, 900, [] { return String("~Tile"); }, [] {}}});
  menus.AddVariable(modeler::MENU_WINDOW, [&] {
    modeler::Commands commands;
    for (unsigned short const id : shown)
      commands.push_back({modeler::MENU_WINDOW, id, [id] { return "~" + String(id); }, [&called, id] { called = id; }});
    return commands;
  });
  SV::Menu & window = menu(menus, modeler::MENU_WINDOW);
  EXPECT_EQ(window.GetItemCount(), 4) << "with the separator";
  window.Select(902);
  EXPECT_EQ(called, 902);
  shown = {903};
  menus.Refresh();
  EXPECT_EQ(window.GetItemCount(), 3);
  EXPECT_EQ(window.GetItemId(2), 903);
  menus.Choose(902);
  menus.Choose(903);
  EXPECT_EQ(called, 903);
  shown.clear();
  menus.Refresh();
  EXPECT_EQ(window.GetItemId(0), 900);
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
