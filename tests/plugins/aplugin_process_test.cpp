#include "plugin_run.hpp"
#include "support/processes/child_process.hpp"
#include "support/windows/windows.hpp"

#include <gtest/gtest.h>

using kivtest::fixturePath;
using kivtest::Lines;

namespace {

TEST(PluginProcess, ThatNeverDiscardedItsPluginsDoesSoAtItsEnd) {
  support::ProgramResult const host =
      support::runProgram({.program = "plugin_host", .arguments = "-plug_log " + fixturePath()});
  EXPECT_EQ(host.exitCode, 0u);
  EXPECT_EQ(host.output, "78\r\n");
  EXPECT_EQ(host.errors, "");
  Lines const lines = kivtest::logLines();
  EXPECT_EQ(lines.front(), "Start logging");
  EXPECT_EQ(lines.back(), "KivPluginManager::DiscardPlugins");
}

TEST(PluginProcess, LoadsWhatLiesBelowTheProgramAndNotBelowTheCurrentFolder) {
  support::TempFolder const folder;
  CreateDirectoryA((folder / "plugins").c_str(), nullptr);
  CreateDirectoryA("plugins", nullptr);
  std::string const program = folder / "host.exe";
  ASSERT_TRUE(CopyFileA((support::binFolder() + "plugin_host.exe").c_str(), program.c_str(), TRUE));
  ASSERT_TRUE(CopyFileA(fixturePath().c_str(), "plugins\\a.dll", TRUE));
  support::ProgramStart const start{
      .program = program, .arguments = "all", .environment = {{"PATH", support::binFolder()}}};
  EXPECT_EQ(support::runProgram(start).output, "0 0\r\n");
  ASSERT_TRUE(CopyFileA(fixturePath().c_str(), (folder / "plugins\\a b.dll").c_str(), TRUE));
  ASSERT_TRUE(CopyFileA(fixturePath().c_str(), (folder / "plugins\\\xFC.dll").c_str(), TRUE));
  EXPECT_EQ(support::runProgram(start).output, "1 2\r\n");
}

TEST(PluginProcess, EndsByAFaultInAnEntryPoint) {
  support::TempFolder const reports;
  support::ChildProcess host(
      {.program = "plugin_host",
       .arguments = "-plug_log " + fixturePath(),
       .environment = {{"KIVARA_PLUGIN_VERSION", "fault"}, {"KIVDUMP_NO_ENCRYPT", "1"}, {"TMP", reports.path()}}});
  HWND const box = support::waitForWindow({.processId = host.processId(), .className = support::kBoxClass});
  EXPECT_TRUE(support::pressButton(box, IDOK));
  EXPECT_EQ(host.waitForEnd(), 0xC0000005u);
  EXPECT_EQ(host.output(), "");
  Lines lines = kivtest::logLines();
  ASSERT_GE(lines.size(), 3u);
  EXPECT_EQ(Lines(lines.end() - 3, lines.end()),
            (Lines{"+   Retrieved 'KivPluginFctGetVersion'", "KivPluginManager::GetAllPlugins", "  Got 0 plugins"}))
      << "the crash report asks for the plug-ins";
  std::string const report = support::readFile(reports.path() + "\\plugin_host.exe.log").value_or("");
  EXPECT_NE(report.find("[DONE]"), std::string::npos);
}

} // namespace
