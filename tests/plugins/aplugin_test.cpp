#include "aplugin.hpp"

#include "plugin_run.hpp"
#include "support/harness/process_guard.hpp"
#include "support/imports/import_hook.hpp"
#include "support/processes/debug_lines.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <type_traits>

using kivtest::fixturePath;
using kivtest::isInProcess;
using kivtest::Lines;
using kivtest::Manager;
using kivtest::plugin;
using kivtest::pluginsOf;

namespace {

static_assert(std::is_abstract_v<KivBasicPlugin> && std::has_virtual_destructor_v<KivBasicPlugin>);
static_assert(std::has_virtual_destructor_v<KivPluginManager>);
static_assert(sizeof(KivBasicPlugin) == 4 * sizeof(void *), "the pointer to the operations, type, loader and name");
static_assert(sizeof(KivPluginGeneral) == sizeof(KivBasicPlugin));
static_assert(sizeof(KivPluginKivScript) == sizeof(KivBasicPlugin) + 6 * sizeof(void *));

/// With a log.
class Plugins : public testing::Test {
protected:
  Plugins() {
    kivtest::initCommandLine(true);
    manager.emplace();
  }

  /// The lines of one attempt, after those of the construction and of the call itself.
  Lines attempt(std::string const & path, KivPluginLoadResult expected) {
    std::size_t const before = kivtest::logLines().size();
    EXPECT_EQ(manager->LoadSinglePlugin(path.c_str()), expected) << path;
    Lines const all = kivtest::logLines();
    EXPECT_GE(all.size(), before + 2);
    EXPECT_EQ(all.at(before), "KivPluginManager::LoadSinglePlugin (" + path + ")");
    EXPECT_EQ(all.at(before + 1), "KivPluginManager::_TryToLoadPlugin (" + path + ")");
    return {all.begin() + static_cast<std::ptrdiff_t>(before) + 2, all.end()};
  }

  /// The same for one that is refused: it is gone afterwards.
  Lines refused(std::string const & path, KivPluginLoadResult expected) {
    Lines const lines = attempt(path, expected);
    EXPECT_FALSE(isInProcess(path));
    EXPECT_TRUE(pluginsOf(*manager).empty());
    return lines;
  }

  std::optional<Manager> manager;
};

TEST_F(Plugins, AGeneralOneIsKept) {
  EXPECT_EQ(attempt(fixturePath(), KIV_PLUGIN_LOADED),
            (Lines{"+ DLL loaded", "+   Retrieved 'KivPluginFctGetVersion'", "+     Version matches",
                   "+       Retrieved 'KivPluginFctGetType'", "+         Its a valid plugin type",
                   "+           Plugin successfully loaded!"}));
  KivBasicPluginList const plugins = pluginsOf(*manager);
  ASSERT_EQ(plugins.size(), 1u);
  EXPECT_EQ(plugins[0]->getPluginType(), KIV_PLUGIN_GENERAL);
  EXPECT_STREQ(plugins[0]->getPluginName().c_str(), "General");
  EXPECT_EQ(plugins[0]->getPluginFilename().c_str(), fixturePath());
  EXPECT_NE(dynamic_cast<KivPluginGeneral *>(plugins[0]), nullptr);
  EXPECT_TRUE(plugins[0]->init());
  EXPECT_TRUE(isInProcess("plugin_fixture.dll"));
}

TEST_F(Plugins, AScriptOneIsKept) {
  plugin("TYPE", "102");
  EXPECT_EQ(attempt(fixturePath(), KIV_PLUGIN_LOADED).back(), "+           Plugin successfully loaded!");
  KivBasicPluginList const plugins = pluginsOf(*manager);
  ASSERT_EQ(plugins.size(), 1u);
  EXPECT_EQ(plugins[0]->getPluginType(), KIV_PLUGIN_KIVSCRIPT);
  EXPECT_STREQ(plugins[0]->getPluginName().c_str(), "KivScript");
  EXPECT_EQ(plugins[0]->getPluginFilename().c_str(), fixturePath());
  EXPECT_NE(dynamic_cast<KivPluginKivScript *>(plugins[0]), nullptr);
}

TEST(PluginNumbers, AreThoseThatProductsKnow) {
  EXPECT_EQ(KIV_PLUGIN_GENERAL, 101);
  EXPECT_EQ(KIV_PLUGIN_KIVSCRIPT, 102);
  EXPECT_EQ(KIV_PLUGIN_LOADED, 78);
  EXPECT_EQ(KIV_PLUGIN_NOT_LOADED, 79);
  EXPECT_EQ(KIV_PLUGIN_ENTRY_MISSING, 80);
  EXPECT_EQ(KIV_PLUGIN_NOT_VALID, 81);
  EXPECT_EQ(KIV_PLUGIN_DECLINED, 82);
  EXPECT_EQ(KIV_PLUGIN_KIVSCRIPT_RUNTIME, 42);
  EXPECT_EQ(KIV_PLUGIN_KIVSCRIPT_TOOLKIT, 43);
  EXPECT_EQ(KIV_PLUGIN_KIVSCRIPT_BOTH, 44);
}

// Files that are no library

Lines const kNotLoaded{"- DLL could not be loaded!"};

std::string fixtureBytes() { return support::readFile(fixturePath()).value(); }

TEST_F(Plugins, AFileThatIsNotThereIsNotLoaded) {
  EXPECT_EQ(refused(support::binFolder() + "not there.dll", KIV_PLUGIN_NOT_LOADED), kNotLoaded);
}

TEST_F(Plugins, ATextIsNotLoaded) {
  support::writeFile("text.dll", "This is no library.");
  EXPECT_EQ(refused("text.dll", KIV_PLUGIN_NOT_LOADED), kNotLoaded);
}

TEST_F(Plugins, AnEmptyFileIsNotLoaded) {
  support::writeFile("empty.dll", "");
  EXPECT_EQ(refused("empty.dll", KIV_PLUGIN_NOT_LOADED), kNotLoaded);
}

TEST_F(Plugins, ATruncatedLibraryIsNotLoaded) {
  for (std::size_t const size : {2u, 100u, 600u}) {
    support::writeFile("cut.dll", fixtureBytes().substr(0, size));
    EXPECT_EQ(refused("cut.dll", KIV_PLUGIN_NOT_LOADED), kNotLoaded) << size;
  }
}

TEST_F(Plugins, ALibraryForAnotherMachineIsNotLoaded) {
  std::string bytes = fixtureBytes();
  auto const header = *reinterpret_cast<std::uint32_t const *>(bytes.data() + 0x3C);
  auto & machine = *reinterpret_cast<std::uint16_t *>(bytes.data() + header + 4);
  ASSERT_EQ(machine, IMAGE_FILE_MACHINE_AMD64);
  machine = IMAGE_FILE_MACHINE_ARM64;
  support::writeFile("arm.dll", bytes);
  EXPECT_EQ(refused("arm.dll", KIV_PLUGIN_NOT_LOADED), kNotLoaded);
}

TEST_F(Plugins, OneThatNeedsAMissingLibraryIsNotLoadedAndShowsNoBox) {
  std::string bytes = support::readFile(fixturePath("plugin_needing")).value();
  std::string const needed = "plugin_needed.dll";
  std::size_t const at = bytes.find(needed);
  ASSERT_NE(at, std::string::npos);
  bytes.replace(at, needed.size(), "plugin_absent.dll");
  support::writeFile("needing.dll", bytes);
  EXPECT_EQ(refused("needing.dll", KIV_PLUGIN_NOT_LOADED), kNotLoaded);
  EXPECT_EQ(manager->LoadSinglePlugin(fixturePath("plugin_needing").c_str()), KIV_PLUGIN_LOADED);
}

TEST_F(Plugins, AFolderIsNotLoaded) {
  CreateDirectoryA("folder.dll", nullptr);
  EXPECT_EQ(refused("folder.dll", KIV_PLUGIN_NOT_LOADED), kNotLoaded);
}

TEST_F(Plugins, TheEmptyNameIsNotLoadedAndNullIsThat) {
  EXPECT_EQ(refused("", KIV_PLUGIN_NOT_LOADED), kNotLoaded);
  std::size_t const before = kivtest::logLines().size();
  EXPECT_EQ(manager->LoadSinglePlugin(nullptr), KIV_PLUGIN_NOT_LOADED);
  EXPECT_EQ(kivtest::logLines().at(before), "KivPluginManager::LoadSinglePlugin ()");
  EXPECT_EQ(kivtest::logLines().at(before + 1), "KivPluginManager::_TryToLoadPlugin ()");
}

class WhileLoading : public Plugins, public testing::WithParamInterface<char const *> {};

// What a library does wrong while it is loaded is for the system, which refuses the library.
TEST_P(WhileLoading, AFailureIsThatOfTheLoad) {
  plugin("LOADING", GetParam());
  EXPECT_EQ(refused(fixturePath(), KIV_PLUGIN_NOT_LOADED), kNotLoaded);
}
INSTANTIATE_TEST_SUITE_P(Table, WhileLoading, testing::Values("refuse", "fault"));

// Windows refuses such a library too. Wine passes the exception on and never gives its lock on the loader back, so that the
// process cannot end as others do.
TEST_F(Plugins, WhatALibraryThrowsWhileItIsLoadedIsLeftToTheSystem) {
  plugin("LOADING", "throw");
  try {
    EXPECT_EQ(manager->LoadSinglePlugin(fixturePath().c_str()), KIV_PLUGIN_NOT_LOADED);
  } catch (...) { // no longer of its type, after the frames of the loader
  }
  EXPECT_TRUE(pluginsOf(*manager).empty());
  support::endTest(HasFailure());
}

TEST_F(Plugins, ALibraryThatRefusesWithoutAnErrorCodeIsNotLoaded) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll",
                          {{"LoadLibraryA", reinterpret_cast<void *>(+[](char const *) -> HMODULE {
                              SetLastError(0);
                              return nullptr;
                            })}});
  EXPECT_EQ(refused("any.dll", KIV_PLUGIN_NOT_LOADED), kNotLoaded);
}

// Entry points

Lines const kVersionMatches{"+ DLL loaded", "+   Retrieved 'KivPluginFctGetVersion'", "+     Version matches"};

Lines with(Lines lines, std::string const & last) {
  lines.push_back(last);
  return lines;
}

TEST_F(Plugins, WithoutAVersionFunctionAnEntryIsMissing) {
  EXPECT_EQ(refused(fixturePath("plugin_no_version"), KIV_PLUGIN_ENTRY_MISSING),
            (Lines{"+ DLL loaded", "-   Could not retrieve 'KivPluginFctGetVersion'"}));
}

TEST_F(Plugins, WithoutATypeFunctionAnEntryIsMissing) {
  EXPECT_EQ(refused(fixturePath("plugin_no_type"), KIV_PLUGIN_ENTRY_MISSING),
            with(kVersionMatches, "-       Could not retrieve 'KivPluginFctGetType'"));
}

class OtherVersions : public Plugins, public testing::WithParamInterface<int> {};

TEST_P(OtherVersions, AreRefused) {
  std::string const version = std::to_string(Kiv_GetVersionIdentifier() + GetParam());
  plugin("VERSION", version);
  EXPECT_EQ(refused(fixturePath(), KIV_PLUGIN_NOT_VALID),
            (Lines{"+ DLL loaded", "+   Retrieved 'KivPluginFctGetVersion'",
                   "-     This plugin is for another version (" + version + ")!"}));
}
// Another build alone, older and newer; another low part; another high part; far away.
INSTANTIATE_TEST_SUITE_P(Table, OtherVersions, testing::Values(-1, 1, -1000, 1000, -10000, 10000, -100000));

class OtherTypes : public Plugins, public testing::WithParamInterface<char const *> {};

TEST_P(OtherTypes, AreRefused) {
  plugin("TYPE", GetParam());
  Lines lines = with(kVersionMatches, "+       Retrieved 'KivPluginFctGetType'");
  EXPECT_EQ(refused(fixturePath(), KIV_PLUGIN_NOT_VALID),
            with(lines, std::string("-         Its not a valid plugin type (") + GetParam() + ")"));
}
INSTANTIATE_TEST_SUITE_P(Table, OtherTypes, testing::Values("103", "100", "0", "-1"));

TEST_F(Plugins, TheVersionIsComparedBeforeTheTypeIsLookedUp) {
  std::string const version = std::to_string(Kiv_GetVersionIdentifier() + 1);
  plugin("VERSION", version);
  EXPECT_EQ(refused(fixturePath("plugin_no_type"), KIV_PLUGIN_NOT_VALID).back(),
            "-     This plugin is for another version (" + version + ")!");
}

TEST_F(Plugins, TheTypeIsCheckedBeforeTheFunctionsOfAScriptPlugin) {
  plugin("TYPE", "103");
  EXPECT_EQ(refused(fixturePath("plugin_no_execution"), KIV_PLUGIN_NOT_VALID).back(),
            "-         Its not a valid plugin type (103)");
}

struct Missing {
  char const * plugin;
  char const * function;
};
std::ostream & operator<<(std::ostream & out, Missing const & row) { return out << row.plugin; }

class MissingFunctions : public Plugins, public testing::WithParamInterface<Missing> {};

TEST_P(MissingFunctions, OfAScriptPluginAreADeclineThatDoesNotNameThem) {
  plugin("TYPE", "102");
  Lines const lines = refused(fixturePath(GetParam().plugin), KIV_PLUGIN_DECLINED);
  EXPECT_EQ(lines.back(), "-           Failed to init plugin - maybe not for this application!");
  for (std::string const & line : lines)
    EXPECT_EQ(line.find(GetParam().function), std::string::npos) << line;
}

TEST_P(MissingFunctions, OfAScriptPluginDoNotMatterToAGeneralOne) {
  attempt(fixturePath(GetParam().plugin), KIV_PLUGIN_LOADED);
}

constexpr Missing kMissing[] = {
    {"plugin_no_execution", "KivPluginFctKivScriptGetExecutionType"},
    {"plugin_no_port", "KivPluginFctKivScriptGetMessagePortName"},
    {"plugin_no_message", "KivPluginFctKivScriptHandleRequestMsg"},
    {"plugin_no_direct", "KivPluginFctKivScriptHandleRequestDirect"},
    {"plugin_no_existing", "KivPluginFctKivScriptIsCommandExisting"},
    {"plugin_no_commands", "KivPluginFctKivScriptGetAllCommands"},
};
INSTANTIATE_TEST_SUITE_P(Table, MissingFunctions, testing::ValuesIn(kMissing));

TEST_F(Plugins, OneThatDeclinesHasItsLines) {
  Kiv_SetApplicationType(KIV_APPLICATION_RUNTIME);
  plugin("TYPE", "102");
  plugin("EXECUTION", "43");
  Lines lines = with(kVersionMatches, "+       Retrieved 'KivPluginFctGetType'");
  lines = with(lines, "+         Its a valid plugin type");
  EXPECT_EQ(refused(fixturePath(), KIV_PLUGIN_DECLINED),
            with(lines, "-           Failed to init plugin - maybe not for this application!"));
}

// What its code does is not caught, and it may still be needed to handle what was thrown.
TEST_F(Plugins, WhatAnEntryPointThrowsReachesTheCallerAndThePluginStaysLoaded) {
  plugin("VERSION", "throw");
  EXPECT_THROW(manager->LoadSinglePlugin(fixturePath().c_str()), int);
  EXPECT_TRUE(isInProcess("plugin_fixture.dll"));
  EXPECT_TRUE(pluginsOf(*manager).empty());
}

TEST_F(Plugins, TheErrorModeOfTheThreadHoldsBoxesBackDuringAnAttemptOnly) {
  SetThreadErrorMode(SEM_NOOPENFILEERRORBOX, nullptr);
  manager->LoadSinglePlugin(fixturePath().c_str());
  char mode[16] = "";
  GetEnvironmentVariableA("KIVARA_PLUGIN_ERRORMODE", mode, sizeof mode);
  EXPECT_EQ(std::string(mode), std::to_string(SEM_NOOPENFILEERRORBOX | SEM_FAILCRITICALERRORS));
  EXPECT_EQ(GetThreadErrorMode(), unsigned{SEM_NOOPENFILEERRORBOX});
  plugin("VERSION", "throw");
  EXPECT_THROW(manager->LoadSinglePlugin(fixturePath().c_str()), int);
  EXPECT_EQ(GetThreadErrorMode(), unsigned{SEM_NOOPENFILEERRORBOX});
}

// The list

TEST_F(Plugins, AreListedInTheOrderOfLoading) {
  plugin("TYPE", "102");
  manager->LoadSinglePlugin(fixturePath().c_str());
  plugin("TYPE", "101");
  manager->LoadSinglePlugin(fixturePath("plugin_needing").c_str());
  manager->LoadSinglePlugin(fixturePath("plugin_no_commands").c_str());
  KivBasicPluginList const plugins = pluginsOf(*manager);
  ASSERT_EQ(plugins.size(), 3u);
  EXPECT_EQ(plugins[0]->getPluginFilename().c_str(), fixturePath());
  EXPECT_EQ(plugins[1]->getPluginFilename().c_str(), fixturePath("plugin_needing"));
  EXPECT_EQ(plugins[2]->getPluginFilename().c_str(), fixturePath("plugin_no_commands"));
  KivBasicPluginList scripts;
  manager->GetAllPluginsOfType(KIV_PLUGIN_KIVSCRIPT, scripts, true);
  EXPECT_EQ(scripts, (KivBasicPluginList{plugins[0]}));
  KivBasicPluginList generals;
  manager->GetAllPluginsOfType(KIV_PLUGIN_GENERAL, generals, true);
  EXPECT_EQ(generals, (KivBasicPluginList{plugins[1], plugins[2]}));
}

TEST_F(Plugins, AreAppendedUnlessTheListIsToBeCleared) {
  manager->LoadSinglePlugin(fixturePath().c_str());
  KivBasicPluginList list;
  manager->GetAllPlugins(list, false);
  manager->GetAllPlugins(list, false);
  manager->GetAllPluginsOfType(KIV_PLUGIN_GENERAL, list, false);
  EXPECT_EQ(list.size(), 3u);
  manager->GetAllPlugins(list, true);
  EXPECT_EQ(list.size(), 1u);
  manager->GetAllPluginsOfType(KIV_PLUGIN_GENERAL, list, true);
  EXPECT_EQ(list.size(), 1u);
  manager->GetAllPluginsOfType(KIV_PLUGIN_KIVSCRIPT, list, true);
  EXPECT_TRUE(list.empty());
  EXPECT_TRUE(isInProcess("plugin_fixture.dll")) << "clearing deletes nothing";
}

TEST_F(Plugins, ThatAreListedAreCountedInTheLogAsTheListThenHasThem) {
  manager->LoadSinglePlugin(fixturePath().c_str());
  std::size_t const before = kivtest::logLines().size();
  KivBasicPluginList list;
  manager->GetAllPlugins(list, true);
  manager->GetAllPlugins(list, false);
  manager->GetAllPluginsOfType(KIV_PLUGIN_KIVSCRIPT, list, false);
  Lines const all = kivtest::logLines();
  EXPECT_EQ((Lines{all.begin() + static_cast<std::ptrdiff_t>(before), all.end()}),
            (Lines{"KivPluginManager::GetAllPlugins", "  Got 1 plugins", "KivPluginManager::GetAllPlugins",
                   "  Got 2 plugins", "KivPluginManager::GetAllPluginsOfType (102)", "  Got 2 plugins"}));
}

TEST_F(Plugins, AreUnloadedWhenTheyAreDiscardedInTheOrderOfLoading) {
  manager->LoadSinglePlugin(fixturePath().c_str());
  manager->LoadSinglePlugin(fixturePath("plugin_no_port").c_str());
  support::DebugLines const debug;
  EXPECT_TRUE(manager->DiscardPlugins());
  EXPECT_EQ(debug.of("[kivdll]"), (Lines{"[kivdll] Unload '" + fixturePath() + "'\n",
                                         "[kivdll] Unload '" + fixturePath("plugin_no_port") + "'\n"}));
  EXPECT_FALSE(isInProcess("plugin_fixture.dll"));
  EXPECT_FALSE(isInProcess("plugin_no_port.dll"));
  EXPECT_TRUE(pluginsOf(*manager).empty());
  EXPECT_TRUE(manager->DiscardPlugins()) << "without any";
}

TEST_F(Plugins, AreDiscardedWithTheManager) {
  manager->LoadSinglePlugin(fixturePath().c_str());
  manager.reset();
  EXPECT_FALSE(isInProcess("plugin_fixture.dll"));
  EXPECT_EQ(kivtest::logLines().back(), "KivPluginManager::DiscardPlugins");
  EXPECT_TRUE(DeleteFileA("_plugin_manager.log")) << "it is closed";
}

TEST_F(Plugins, ThatAreLoadedTwiceAreTwoPlugins) {
  manager->LoadSinglePlugin(fixturePath().c_str());
  manager->LoadSinglePlugin(fixturePath().c_str());
  EXPECT_EQ(pluginsOf(*manager).size(), 2u);
}

TEST_F(Plugins, MayBeLoadedAgainAfterTheyWereDiscarded) {
  manager->LoadSinglePlugin(fixturePath().c_str());
  manager->DiscardPlugins();
  EXPECT_EQ(manager->LoadSinglePlugin(fixturePath().c_str()), KIV_PLUGIN_LOADED);
  EXPECT_EQ(pluginsOf(*manager).size(), 1u);
  EXPECT_TRUE(isInProcess("plugin_fixture.dll"));
}

// The log

TEST(PluginLog, BeginsAnewWithALineOfItsOwn) {
  support::writeFile("_plugin_manager.log", "of the run before");
  kivtest::initCommandLine(true);
  Manager const manager;
  EXPECT_EQ(kivtest::logLines(), (Lines{"Start logging"}));
}

TEST(PluginLog, IsNotWrittenWithoutItsOption) {
  kivtest::initCommandLine(false);
  Manager manager;
  EXPECT_EQ(manager.LoadSinglePlugin(fixturePath().c_str()), KIV_PLUGIN_LOADED);
  EXPECT_EQ(pluginsOf(manager).size(), 1u);
  manager.DiscardPlugins();
  EXPECT_FALSE(support::exists("_plugin_manager.log"));
}

TEST(PluginLog, ThatCannotBeWrittenIsDoneWithout) {
  CreateDirectoryA("_plugin_manager.log", nullptr);
  kivtest::initCommandLine(true);
  Manager manager;
  EXPECT_EQ(manager.LoadSinglePlugin(fixturePath().c_str()), KIV_PLUGIN_LOADED);
  EXPECT_EQ(pluginsOf(manager).size(), 1u);
}

TEST(PluginLog, HasAPathThatLooksLikeAFormatAsItIs) {
  kivtest::initCommandLine(true);
  Manager manager;
  manager.LoadSinglePlugin("50%s %n.dll");
  EXPECT_EQ(kivtest::logLines().at(2), "KivPluginManager::_TryToLoadPlugin (50%s %n.dll)");
}

TEST(PluginLog, HasNoLineOfTheSingleLoadForAnAttemptAlone) {
  kivtest::initCommandLine(true);
  Manager manager;
  EXPECT_EQ(manager._TryToLoadPlugin("not there.dll"), KIV_PLUGIN_NOT_LOADED);
  EXPECT_EQ(kivtest::logLines(), (Lines{"Start logging", "KivPluginManager::_TryToLoadPlugin (not there.dll)",
                                        "- DLL could not be loaded!"}));
}

// The one manager of the process

TEST(PluginManager, IsOneForTheProcess) {
  kivtest::initCommandLine(false);
  EXPECT_EQ(KivPluginManager::_Existing(), nullptr);
  KivPluginManager & manager = KivPluginManager::Instance();
  EXPECT_EQ(&KivPluginManager::Instance(), &manager);
  EXPECT_EQ(KivPluginManager::_Existing(), &manager);
  static_assert(!std::is_copy_constructible_v<KivPluginManager>);
}

} // namespace
