// Where libraries are taken from: those of the system, those that a program ships, and those that somebody has planted.

#include "planted.hpp"

#include "adll.hpp"
#include "support/processes/child_process.hpp"
#include "sv/sv.hpp"

#include <gtest/gtest.h>

using namespace sectest;
using Lines = std::vector<std::string>;

namespace {

// Libraries of the system

/// A program that needs one of them, in a folder of its own.
class LibraryOfTheSystem : public testing::TestWithParam<char const *> {
protected:
  LibraryOfTheSystem() { copyOfBin("late_libraries.exe", folder_ / "late_libraries.exe"); }

  /// Runs the program. Its folder for temporary files and that of the system come first in PATH.
  support::ProgramResult run() const {
    std::string const name = GetParam();
    auto environment = planted_.ending();
    environment["KIVARA_BIN"] = support::binFolder();
    environment["PATH"] = inPath_.path() + ';' + support::binFolder();
    return support::runProgram(
        {.program = folder_ / "late_libraries.exe", .arguments = name + " -ptiger", .environment = environment});
  }

  Planted const planted_;
  support::TempFolder const folder_;
  support::TempFolder const inPath_;
};

TEST_P(LibraryOfTheSystem, IsNotTakenFromTheWorkingFolderOrFromPath) {
  Planted::put(GetParam());
  Planted::put(inPath_ / GetParam());
  support::ProgramResult const result = run();
  EXPECT_EQ(result.exitCode, 0u);
  EXPECT_EQ(planted_.loaded(), Lines{});
}

TEST_P(LibraryOfTheSystem, IsTakenFromTheFolderOfTheProgramFirst) {
  Planted::put(folder_ / GetParam());
  EXPECT_EQ(run().exitCode, 99u) << "what was planted runs with all rights of the program";
  EXPECT_EQ(planted_.loaded(), Lines{lower(folder_ / GetParam())});
  ASSERT_EQ(planted_.seen().size(), 1u);
  EXPECT_TRUE(planted_.seen()[0].ends_with(" -ptiger")) << "and sees what it has";
}

INSTANTIATE_TEST_SUITE_P(Each, LibraryOfTheSystem,
                         testing::Values("winhttp.dll", "msimg32.dll", "uxtheme.dll", "ole32.dll", "windowscodecs.dll",
                                         "secur32.dll", "winspool.drv", "shell32.dll"),
                         [](auto const & row) {
                           std::string const name = row.param;
                           return name.substr(0, name.find('.'));
                         });

// Libraries that a program names or needs

TEST(BareLibraryName, IsLookedForInTheWorkingFolderToo) {
  Planted const planted;
  Planted::put("aproducts.dll");
  KivDLLLoader loader;
  EXPECT_TRUE(loader.load("aproducts.dll"));
  EXPECT_EQ(planted.loaded().size(), 1u);
}

TEST(BareLibraryName, IsNotLookedForThereWithTheFlagsOfTheSystem) {
  Planted const planted;
  Planted::put("aproducts.dll");
  KivDLLLoader loader;
  EXPECT_FALSE(loader.loadExt("aproducts.dll", LOAD_LIBRARY_SEARCH_SYSTEM32));
  EXPECT_FALSE(loader.loadExt("aproducts.dll", LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));
  EXPECT_FALSE(loader.load((support::binFolder() + "aproducts.dll").c_str()));
  EXPECT_EQ(planted.loaded(), Lines{});
}

/// A host in a folder of its own, with a plug-in whose library was not shipped.
class IncompletePlugin : public testing::Test {
protected:
  IncompletePlugin() {
    makeFolder(folder_ / "plugins");
    copyOfBin("plugin_host.exe", folder_ / "plugin_host.exe");
    copyOfBin("plugin_needing.dll", folder_ / "plugins\\plugin_needing.dll");
    Planted::put("plugin_needed.dll");
  }

  void run(std::string const & words) const {
    auto environment = planted_.ending();
    environment["PATH"] = support::binFolder();
    support::runProgram({.program = folder_ / "plugin_host.exe", .arguments = words, .environment = environment});
  }

  Planted const planted_;
  support::TempFolder const folder_;
};

TEST_F(IncompletePlugin, GetsItsLibraryFromTheWorkingFolder) {
  run("all");
  ASSERT_EQ(planted_.loaded().size(), 1u);
  EXPECT_TRUE(planted_.loaded()[0].ends_with("\\plugin_needed.dll"));
  EXPECT_FALSE(planted_.loaded()[0].starts_with(lower(folder_.path())));
}

TEST_F(IncompletePlugin, DoesNotGetItFromThereWhereTheProgramSearchesItsOwnFoldersAlone) {
  run("-own all");
  EXPECT_EQ(planted_.loaded(), Lines{});
}

TEST_F(IncompletePlugin, DoesNotGetItFromThereWhenItIsComplete) {
  copyOfBin("plugin_needed.dll", folder_ / "plugin_needed.dll");
  run("all");
  EXPECT_EQ(planted_.loaded(), Lines{});
}

// Plug-ins and language packs

/// A host with planted.dll as its plug-in.
TEST(PluginOfAnybody, HasRunBeforeAnythingOfItIsLookedAt) {
  Planted const planted;
  support::TempFolder const folder;
  makeFolder(folder / "plugins");
  copyOfBin("plugin_host.exe", folder / "plugin_host.exe");
  Planted::put(folder / "plugins\\planted.dll");
  support::ProgramResult const run = support::runProgram({.program = folder / "plugin_host.exe",
                                                          .arguments = "all -uscott -ptiger",
                                                          .environment = {{"PATH", support::binFolder()}}});
  EXPECT_TRUE(run.output.starts_with("0 0")) << "it is no plug-in, and is refused: " << run.output;
  EXPECT_EQ(planted.loaded(), Lines{lower(folder / "plugins\\planted.dll")});
  ASSERT_EQ(planted.seen().size(), 1u);
  EXPECT_TRUE(planted.seen()[0].ends_with(" -uscott -ptiger")) << "it sees what the program has";
}

TEST(PluginOfAnybody, MayEndTheProgram) {
  Planted const planted;
  support::TempFolder const folder;
  Planted::put(folder / "planted.dll");
  EXPECT_EQ(support::runProgram(
                {.program = "plugin_host", .arguments = folder / "planted.dll", .environment = planted.ending()})
                .exitCode,
            99u);
}

TEST(LanguagePack, IsReadAsDataAndRunsNoCode) {
  Planted const planted;
  support::TempFolder const folder;
  Planted::put(folder / "texts72.dll");
  SV::ResMgr const pack((folder / "texts72.dll").c_str());
  EXPECT_TRUE(pack.IsLoaded());
  EXPECT_EQ(planted.loaded(), Lines{});
  EXPECT_NE(LoadLibraryA((folder / "texts72.dll").c_str()), nullptr);
  EXPECT_EQ(planted.loaded().size(), 1u) << "it has code";
}

} // namespace
