// A file of settings that was damaged: what it does not say any more is as in a new one, and it takes new settings.
#include "background/settings.hpp"

#include "support/damage.hpp"
#include "support/files.hpp"

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
    ASSERT_LT(settings.Get("Theme", "Modern").Len(), 64) << i;
    applyLook(settings);
    std::string const theme = KivThemeManager::CurrentTheme().GetName().c_str();
    ASSERT_TRUE(theme == "Modern" || theme == "Classic") << i;
    chooseTheme(settings, "Classic");
    useVisualStyles(settings, i % 2 == 0);
    ASSERT_FALSE(support::exists("modeler.ini")) << i;
  }
}

} // namespace
