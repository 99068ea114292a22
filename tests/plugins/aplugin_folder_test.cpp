#include "aplugin.hpp"

#include "plugin_run.hpp"
#include "support/imports/import_hook.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

using kivtest::fixturePath;
using kivtest::isInProcess;
using kivtest::Lines;
using kivtest::plugin;
using kivtest::pluginsOf;

namespace {

std::string programPath;

DWORD WINAPI giveProgramPath(HMODULE, char * out, DWORD size) {
  lstrcpynA(out, programPath.c_str(), static_cast<int>(size));
  return static_cast<DWORD>(programPath.size());
}

/// A program in a folder of its own.
class PluginFolder : public testing::Test {
protected:
  PluginFolder() {
    programPath = program / "program.exe";
    support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                            {{"GetModuleFileNameA", reinterpret_cast<void *>(giveProgramPath)}});
    kivtest::initCommandLine(true);
    manager.emplace();
  }
  ~PluginFolder() override { manager.reset(); } // before the folder goes

  void makeFolder() { CreateDirectoryA((program / "plugins").c_str(), nullptr); }

  std::string inFolder(std::string const & name) const { return program / "plugins\\" + name; }

  void add(std::string const & name, std::string const & from = "plugin_fixture") {
    makeFolder();
    ASSERT_TRUE(CopyFileA(fixturePath(from).c_str(), inFolder(name).c_str(), TRUE));
  }

  /// The names of the plug-ins in the order of the list.
  Lines names() const {
    Lines found;
    for (KivBasicPlugin const * const each : pluginsOf(*manager)) {
      std::string const path = each->getPluginFilename().c_str();
      EXPECT_TRUE(path.starts_with(inFolder(""))) << path;
      found.push_back(path.substr(inFolder("").size()));
    }
    return found;
  }

  support::TempFolder const program;
  std::optional<kivtest::Manager> manager;
};

TEST_F(PluginFolder, ThatIsMissingGivesNoPlugins) {
  EXPECT_FALSE(manager->LoadPlugins());
  EXPECT_TRUE(pluginsOf(*manager).empty());
  EXPECT_EQ(kivtest::logLines().at(1), "KivPluginManager::LoadPlugins");
  EXPECT_EQ(kivtest::logLines().at(2), "KivPluginManager::GetAllPlugins");
}

TEST_F(PluginFolder, ThatIsEmptyGivesNoPlugins) {
  makeFolder();
  EXPECT_FALSE(manager->LoadPlugins());
  EXPECT_TRUE(pluginsOf(*manager).empty());
}

TEST_F(PluginFolder, ThatIsAFileGivesNoPlugins) {
  support::writeFile(program / "plugins", "");
  EXPECT_FALSE(manager->LoadPlugins());
}

TEST_F(PluginFolder, IsLoadedInTheByteOrderOfTheNames) {
  for (char const * const name :
       {"b.dll", "a.dll", "B.dll2.dll", "_.dll", "10.dll", "9.dll", "a b.dll", "\xE4.dll", "Z.dll"})
    add(name);
  EXPECT_TRUE(manager->LoadPlugins());
  EXPECT_EQ(names(),
            (Lines{"10.dll", "9.dll", "B.dll2.dll", "Z.dll", "_.dll", "a b.dll", "a.dll", "b.dll", "\xE4.dll"}));
}

TEST_F(PluginFolder, HasItsLinesInTheLog) {
  add("a b.dll");
  add("\xFC.dll", "plugin_no_type");
  manager->LoadPlugins();
  EXPECT_EQ(kivtest::logLines(), (Lines{"Start logging", "KivPluginManager::LoadPlugins",
                                        "KivPluginManager::_TryToLoadPlugin (" + inFolder("a b.dll") + ")",
                                        "+ DLL loaded", "+   Retrieved 'KivPluginFctGetVersion'",
                                        "+     Version matches", "+       Retrieved 'KivPluginFctGetType'",
                                        "+         Its a valid plugin type", "+           Plugin successfully loaded!",
                                        "KivPluginManager::_TryToLoadPlugin (" + inFolder("\xFC.dll") + ")",
                                        "+ DLL loaded", "+   Retrieved 'KivPluginFctGetVersion'",
                                        "+     Version matches", "-       Could not retrieve 'KivPluginFctGetType'"}));
}

TEST_F(PluginFolder, PassesOverAFolderNamedLikeALibrary) {
  add("a.dll");
  CreateDirectoryA(inFolder("x.dll").c_str(), nullptr);
  EXPECT_TRUE(manager->LoadPlugins());
  EXPECT_EQ(names(), Lines{"a.dll"});
  for (std::string const & line : kivtest::logLines())
    EXPECT_EQ(line.find("x.dll"), std::string::npos) << line;
}

TEST_F(PluginFolder, WithAFolderNamedLikeALibraryAloneGivesNoPlugins) {
  makeFolder();
  CreateDirectoryA(inFolder("x.dll").c_str(), nullptr);
  EXPECT_FALSE(manager->LoadPlugins());
}

TEST_F(PluginFolder, TakesOtherFilesAsNone) {
  add("a.exe");
  add("a.dll.txt");
  add("dll");
  EXPECT_FALSE(manager->LoadPlugins());
  EXPECT_EQ(kivtest::logLines(), (Lines{"Start logging", "KivPluginManager::LoadPlugins"}));
}

TEST_F(PluginFolder, LooksAtTheEndingInAnyCase) {
  add("a.DLL");
  EXPECT_TRUE(manager->LoadPlugins());
}

TEST_F(PluginFolder, IsNotSearchedInItsOwnFolders) {
  makeFolder();
  CreateDirectoryA(inFolder("more").c_str(), nullptr);
  ASSERT_TRUE(CopyFileA(fixturePath().c_str(), inFolder("more\\a.dll").c_str(), TRUE));
  EXPECT_FALSE(manager->LoadPlugins());
}

TEST_F(PluginFolder, ABadLibraryDoesNotStopTheOthers) {
  add("a.dll");
  makeFolder();
  support::writeFile(inFolder("b.dll"), "no library");
  add("c.dll", "plugin_no_version");
  add("d.dll");
  EXPECT_TRUE(manager->LoadPlugins());
  EXPECT_EQ(names(), (Lines{"a.dll", "d.dll"}));
  EXPECT_FALSE(isInProcess("c.dll"));
}

TEST_F(PluginFolder, WithBadLibrariesAloneGivesNoPlugins) {
  add("c.dll", "plugin_no_version");
  EXPECT_FALSE(manager->LoadPlugins());
}

TEST_F(PluginFolder, WithBadLibrariesAloneIsTrueWhereAPluginIsThereAlready) {
  add("c.dll", "plugin_no_version");
  ASSERT_EQ(manager->LoadSinglePlugin(fixturePath().c_str()), KIV_PLUGIN_LOADED);
  EXPECT_TRUE(manager->LoadPlugins());
}

TEST_F(PluginFolder, ThatIsLoadedTwiceGivesEachPluginTwice) {
  add("a.dll");
  add("b.dll");
  EXPECT_TRUE(manager->LoadPlugins());
  EXPECT_TRUE(manager->LoadPlugins());
  EXPECT_EQ(names(), (Lines{"a.dll", "b.dll", "a.dll", "b.dll"}));
  EXPECT_TRUE(manager->DiscardPlugins());
  EXPECT_FALSE(isInProcess(inFolder("a.dll")));
}

TEST_F(PluginFolder, MayHaveFiveHundredPlugins) {
  for (int i = 0; i < 500; ++i)
    add(std::to_string(1000 + i) + ".dll");
  EXPECT_TRUE(manager->LoadPlugins());
  Lines const all = names();
  EXPECT_EQ(all.size(), 500u);
  EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
  EXPECT_TRUE(isInProcess(inFolder("1499.dll")));
  EXPECT_TRUE(manager->DiscardPlugins());
  for (std::string const & name : all)
    EXPECT_FALSE(isInProcess(inFolder(name))) << name;
}

} // namespace
