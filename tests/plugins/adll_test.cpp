#include "adll.hpp"

#include "support/data/files.hpp"
#include "support/imports/import_hook.hpp"
#include "support/processes/debug_lines.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

using Lines = std::vector<std::string>;

namespace {

/// As somebody who uses a library through a loader would have it.
class Loader : public KivDLLLoader {
public:
  using KivDLLLoader::_getGenericFunctionPtr;
  using KivDLLLoader::_rememberLastError;
};

static_assert(std::has_virtual_destructor_v<KivDLLLoader>);
static_assert(!std::is_copy_constructible_v<KivDLLLoader> && !std::is_copy_assignable_v<KivDLLLoader>);
static_assert(sizeof(KivDLLLoader) == 4 * sizeof(void *), "the pointer to the operations, handle, error and name");

std::string fixture(char const * name) { return support::binFolder() + name; }
std::string const kFirst = fixture("plugin_fixture.dll");
std::string const kSecond = fixture("plugin_needed.dll");

bool isInProcess(char const * name) { return GetModuleHandleA(name) != nullptr; }

void replaceInLibrary(char const * function, void * replacement) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "KERNEL32.dll", {{function, replacement}});
}

TEST(DLLLoader, HasNothingAtFirst) {
  Loader const loader;
  EXPECT_FALSE(loader.isLoaded());
  EXPECT_EQ(loader.getLastError(), 0u);
  EXPECT_STREQ(loader.getFilename().c_str(), "");
}

TEST(DLLLoader, LoadsALibraryAndFindsWhatItExports) {
  Loader loader;
  EXPECT_TRUE(loader.load(kSecond.c_str()));
  EXPECT_TRUE(loader.isLoaded());
  EXPECT_EQ(loader.getLastError(), 0u);
  EXPECT_EQ(loader.getFilename().c_str(), kSecond);
  auto * const answer = reinterpret_cast<int (*)()>(loader._getGenericFunctionPtr("answerOfNeeded"));
  ASSERT_NE(answer, nullptr);
  EXPECT_EQ(answer(), 42);
}

TEST(DLLLoader, AMissingFunctionIsNullAndTheLastError) {
  Loader loader;
  ASSERT_TRUE(loader.load(kSecond.c_str()));
  EXPECT_EQ(loader._getGenericFunctionPtr("answerofneeded"), nullptr) << "names are case-sensitive";
  EXPECT_EQ(loader.getLastError(), unsigned{ERROR_PROC_NOT_FOUND});
  EXPECT_EQ(loader._getGenericFunctionPtr(nullptr), nullptr);
  EXPECT_NE(loader._getGenericFunctionPtr("answerOfNeeded"), nullptr);
  EXPECT_EQ(loader.getLastError(), 0u);
}

TEST(DLLLoader, UnloadsAndForgetsTheName) {
  Loader loader;
  ASSERT_TRUE(loader.load(kSecond.c_str()));
  loader._getGenericFunctionPtr("missing");
  EXPECT_TRUE(loader.unload());
  EXPECT_FALSE(loader.isLoaded());
  EXPECT_EQ(loader.getLastError(), 0u);
  EXPECT_STREQ(loader.getFilename().c_str(), "");
  EXPECT_FALSE(isInProcess("plugin_needed.dll"));
}

TEST(DLLLoader, AFailedLoadKeepsNameAndError) {
  Loader loader;
  EXPECT_FALSE(loader.load("not there.dll"));
  EXPECT_FALSE(loader.isLoaded());
  EXPECT_EQ(loader.getLastError(), unsigned{ERROR_MOD_NOT_FOUND});
  EXPECT_STREQ(loader.getFilename().c_str(), "not there.dll");
}

TEST(DLLLoader, UnloadAfterAFailedLoadIsFalseAndTheErrorStays) {
  support::DebugLines const debug;
  Loader loader;
  EXPECT_TRUE(loader.unload()) << "before any error";
  loader.load("not there.dll");
  EXPECT_FALSE(loader.unload());
  EXPECT_EQ(loader.getLastError(), unsigned{ERROR_MOD_NOT_FOUND});
  EXPECT_STREQ(loader.getFilename().c_str(), "not there.dll");
  EXPECT_EQ(debug.all(), Lines{"[kivdll] Load 'not there.dll'\n"});
}

TEST(DLLLoader, ASecondLoadUnloadsTheFirstLibrary) {
  support::DebugLines const debug;
  Loader loader;
  EXPECT_TRUE(loader.load(kFirst.c_str()));
  EXPECT_TRUE(loader.load(kSecond.c_str()));
  EXPECT_FALSE(isInProcess("plugin_fixture.dll"));
  EXPECT_TRUE(isInProcess("plugin_needed.dll"));
  EXPECT_EQ(loader.getFilename().c_str(), kSecond);
  EXPECT_EQ(debug.all(), (Lines{"[kivdll] Load '" + kFirst + "'\n", "[kivdll] Unload '" + kFirst + "'\n",
                                "[kivdll] Load '" + kSecond + "'\n"}));
}

TEST(DLLLoader, ASecondLoadThatFailsUnloadsTheFirstLibraryToo) {
  Loader loader;
  EXPECT_TRUE(loader.load(kFirst.c_str()));
  EXPECT_FALSE(loader.loadExt("not there.dll", 0));
  EXPECT_FALSE(isInProcess("plugin_fixture.dll"));
}

TEST(DLLLoader, ItsOwnNameMayBeLoadedAgain) {
  Loader loader;
  ASSERT_TRUE(loader.load(kSecond.c_str()));
  EXPECT_TRUE(loader.load(loader.getFilename().c_str()));
  EXPECT_EQ(loader.getFilename().c_str(), kSecond);
  EXPECT_TRUE(loader.loadExt(loader.getFilename().c_str(), 0));
  EXPECT_EQ(loader.getFilename().c_str(), kSecond);
}

TEST(DLLLoader, LoadExtPassesItsFlagsOn) {
  support::DebugLines const debug;
  Loader loader;
  EXPECT_TRUE(loader.loadExt(kSecond.c_str(), LOAD_LIBRARY_AS_DATAFILE));
  EXPECT_TRUE(loader.isLoaded());
  EXPECT_FALSE(isInProcess("plugin_needed.dll")) << "its bytes alone";
  EXPECT_TRUE(loader.loadExt(kSecond.c_str(), 0));
  EXPECT_TRUE(isInProcess("plugin_needed.dll"));
  EXPECT_EQ(debug.all(), (Lines{"[kivdll] LoadEx '" + kSecond + "'\n", "[kivdll] Unload '" + kSecond + "'\n",
                                "[kivdll] LoadEx '" + kSecond + "'\n"}));
}

TEST(DLLLoader, AFailedLoadExtKeepsNameAndError) {
  support::DebugLines const debug;
  Loader loader;
  EXPECT_FALSE(loader.loadExt("not there.dll", 0));
  EXPECT_EQ(loader.getLastError(), unsigned{ERROR_MOD_NOT_FOUND});
  EXPECT_STREQ(loader.getFilename().c_str(), "not there.dll");
  EXPECT_EQ(debug.all(), Lines{"[kivdll] LoadEx 'not there.dll'\n"});
}

TEST(DLLLoader, UnloadsWithItsObject) {
  support::DebugLines const debug;
  {
    std::unique_ptr<KivDLLLoader> const loader = std::make_unique<Loader>();
    ASSERT_TRUE(loader->load(kSecond.c_str()));
  }
  EXPECT_FALSE(isInProcess("plugin_needed.dll"));
  EXPECT_EQ(debug.all(), (Lines{"[kivdll] Load '" + kSecond + "'\n", "[kivdll] Unload '" + kSecond + "'\n"}));
}

BOOL WINAPI refuseToFree(HMODULE) {
  SetLastError(ERROR_ACCESS_DENIED);
  return FALSE;
}

TEST(DLLLoader, AfterAFailedUnloadTheModuleStaysAndTheObjectHasNone) {
  Loader loader;
  ASSERT_TRUE(loader.load(kSecond.c_str()));
  replaceInLibrary("FreeLibrary", reinterpret_cast<void *>(refuseToFree));
  support::DebugLines const debug;
  EXPECT_FALSE(loader.unload());
  EXPECT_FALSE(loader.isLoaded());
  EXPECT_EQ(loader.getLastError(), unsigned{ERROR_ACCESS_DENIED});
  EXPECT_STREQ(loader.getFilename().c_str(), "");
  EXPECT_TRUE(isInProcess("plugin_needed.dll"));
  EXPECT_EQ(debug.all(), Lines{"[kivdll] Unload '" + kSecond + "'\n"});
}

TEST(DLLLoader, AFailedUnloadDoesNotStopTheLoadAfterIt) {
  Loader loader;
  ASSERT_TRUE(loader.load(kFirst.c_str()));
  replaceInLibrary("FreeLibrary", reinterpret_cast<void *>(refuseToFree));
  EXPECT_TRUE(loader.load(kSecond.c_str()));
  EXPECT_EQ(loader.getLastError(), 0u);
  EXPECT_EQ(loader.getFilename().c_str(), kSecond);
  EXPECT_TRUE(isInProcess("plugin_needed.dll"));
}

HMODULE WINAPI refuseWithoutAnError(char const *) {
  SetLastError(0);
  return nullptr;
}

TEST(DLLLoader, ARefusalWithoutAnErrorCodeIsNoFailure) {
  replaceInLibrary("LoadLibraryA", reinterpret_cast<void *>(refuseWithoutAnError));
  Loader loader;
  EXPECT_TRUE(loader.load("any.dll"));
  EXPECT_FALSE(loader.isLoaded());
}

TEST(DLLLoader, ANullNameIsTheEmptyOne) {
  support::DebugLines const debug;
  Loader loader;
  EXPECT_FALSE(loader.load(nullptr));
  EXPECT_FALSE(loader.loadExt(nullptr, 0));
  EXPECT_EQ(debug.all(), (Lines{"[kivdll] Load ''\n", "[kivdll] LoadEx ''\n"}));
}

TEST(DLLLoader, TheTextOfALongNameIsCutBeforeItsEnding) {
  for (std::size_t const length : {494u, 495u, 600u, 5000u}) {
    std::string const name(length, 'x');
    std::string const ofLoad = "[kivdll] Load '" + name.substr(0, 494) + "'\n";
    EXPECT_EQ(std::string("[kivdll] Load '" + name.substr(0, 494) + "'\n").size(), 511u);
    support::DebugLines const debug;
    Loader loader;
    EXPECT_FALSE(loader.load(name.c_str()));
    EXPECT_EQ(loader.getFilename().c_str(), name);
    EXPECT_FALSE(loader.loadExt(name.c_str(), 0));
    EXPECT_EQ(debug.all(), (Lines{ofLoad, "[kivdll] LoadEx '" + name.substr(0, 492) + "'\n"}));
  }
}

HMODULE lastSearched;

// Passes the call on, since imports that are bound late need it.
FARPROC WINAPI noteLibrary(HMODULE library, char const * name) {
  lastSearched = library;
  return GetProcAddress(library, name);
}

TEST(DLLLoader, AFunctionIsLookedUpEvenIfNothingIsLoaded) {
  replaceInLibrary("GetProcAddress", reinterpret_cast<void *>(noteLibrary));
  lastSearched = GetModuleHandleA("kivara.dll");
  Loader loader;
  EXPECT_EQ(loader._getGenericFunctionPtr("answerOfNeeded"), nullptr);
  EXPECT_EQ(lastSearched, nullptr);
  EXPECT_NE(loader.getLastError(), 0u);
}

TEST(DLLLoader, RemembersTheLastErrorOfAFailureOnly) {
  Loader loader;
  SetLastError(5);
  loader._rememberLastError(true);
  EXPECT_EQ(loader.getLastError(), 5u);
  loader._rememberLastError(false);
  EXPECT_EQ(loader.getLastError(), 0u);
}

} // namespace
