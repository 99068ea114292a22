// A file of settings that was damaged: what it does not say any more is as in a new one, and it takes new settings.
#include "background/settings.hpp"

#include "support/data/damage.hpp"
#include "support/data/files.hpp"

#include "acmdline.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr char kFile[] = "look.ini";

TEST(SettingsDamage, LeavesALookAndRoomForANewOne) {
  static char program[] = "modeler.exe";
  static char keep[] = "-keeplook.ini";
  static char * words[] = {program, keep};
  KivCmdline::init(2, words, true, "log");
  modeler::Settings const settings;
  support::Random random(131);
  constexpr char kSound[] = "[Modeler]\r\nTheme=Classic\r\nVisualStyles=0\r\nOutline=1\r\n[Other]\r\nTheme=1\r\n";
  support::WeakPlaces const marks = {.pieces = {"[", "]", "=", "\r\n", "\n", ";", "\"", "Theme=", "[Modeler]\r\n"}};
  for (std::size_t i = 0; i < support::times(30); ++i) {
    support::writeFile(kFile, support::damaged(kSound, random, marks));
    std::string const kept = settings.Get("Theme", "Modern").c_str();
    ASSERT_LT(kept.size(), 64u) << i;
    KivThemeManager::Instance().SetCurrentTheme("Modern");
    applyLook(settings);
    ASSERT_EQ(KivThemeManager::CurrentTheme().GetName(), kept == "Classic" ? "Classic" : "Modern") << i;
    chooseTheme(settings, "Classic");
    useVisualStyles(settings, i % 2 == 0);
    ASSERT_EQ(settings.Get("Theme", "Modern"), "Classic") << i;
    ASSERT_EQ(settings.IsOn("VisualStyles", i % 2 != 0), i % 2 == 0) << i;
    ASSERT_FALSE(support::exists("modeler.ini")) << i;
  }
}

} // namespace
