// The smallest sample as it was built and shipped with the installation.

#include "package/package_paths.hpp"
#include "support/processes/child_process.hpp"
#include "support/windows/windows.hpp"
#include "tools/winapi.hpp"

#include <psapi.h>

#include <gtest/gtest.h>

namespace {

support::ProgramStart minimal(std::string const & arguments = "") {
  return {.program = packagePath("minimal-installed/bin/minimal.exe"), .arguments = arguments};
}

HWND mainWindow(support::ChildProcess const & child) {
  return support::waitForWindow({.processId = child.processId(), .title = "The shortest program"});
}

/// The files that the process has loaded.
std::vector<std::string> modulesOf(support::ChildProcess const & child) {
  HMODULE modules[200];
  DWORD bytes = 0;
  K32EnumProcessModules(child.handle(), modules, sizeof modules, &bytes);
  std::vector<std::string> paths;
  for (DWORD i = 0; i < bytes / sizeof *modules; ++i) {
    char path[MAX_PATH] = "";
    K32GetModuleFileNameExA(child.handle(), modules[i], path, sizeof path);
    paths.emplace_back(path);
  }
  return paths;
}

} // namespace

TEST(MinimalProgram, ShowsItsWindowUntilTheUserClosesIt) {
  support::ChildProcess const child(minimal());
  HWND const window = mainWindow(child);
  ASSERT_TRUE(window);
  EXPECT_TRUE(child.running());
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(child.waitForEnd(), 0u);
}

TEST(MinimalProgram, EndsByItselfWhenAskedTo) {
  support::ChildProcess const child(minimal("-close"));
  EXPECT_EQ(child.waitForEnd(), 0u);
}

TEST(MinimalProgram, SpeaksTheLanguageOfTheOption) {
  support::ChildProcess const child(minimal("-langde"));
  EXPECT_TRUE(support::waitForWindow({.processId = child.processId(), .title = "Das k\xFCrzeste Programm"}));
}

TEST(MinimalProgram, LoadsTheDllsThatWereCopiedBesideIt) {
  support::ChildProcess const child(minimal());
  ASSERT_TRUE(mainWindow(child));
  auto const modules = modulesOf(child);
  for (std::string const name : {"kivara.dll", "SV0105.dll", "TL0105.dll", "libstdc++-6.dll", "libgcc_s_seh-1.dll"})
    EXPECT_EQ(std::count(modules.begin(), modules.end(), packagePath("minimal-installed/bin/" + name)), 1) << name;
}
