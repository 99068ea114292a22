#include "apps/modeler/runs/modeler_run.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace {

using modeler::mainWindow;

constexpr WPARAM kRaiseUser = 401;
constexpr WPARAM kRaiseUserGroup = 402;
constexpr WPARAM kCountLines = 1001;
constexpr WPARAM kCountWords = 1002;

TEST(ModelerCommands, OfScriptPluginsAnswerFromTheMenu) {
  support::TempFolder const folder;
  support::writeFile(folder / "a model.txt", "process \"One\"\r\nstart a \"A\"\r\n");
  ProductRun run("modeler", "\"-model" + folder / "a model.txt" + "\" -journalout.log");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  EXPECT_TRUE(modeler::waitForDocument(window, "One"));
  PostMessageA(window, WM_COMMAND, kCountLines, 0);
  EXPECT_EQ(modeler::answerOwnBox(run, IDOK, "CountLines").texts, std::vector<std::string>{"2"});
  PostMessageA(window, WM_COMMAND, kCountWords, 0);
  EXPECT_EQ(modeler::answerOwnBox(run, IDOK, "CountWords").texts, std::vector<std::string>{"5"});
  std::string const journal = run.file("out.log").value_or("");
  EXPECT_NE(journal.find(": command: CountLines: 2\r\n"), std::string::npos) << journal;
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
}

TEST(ModelerCommands, ThatAreNotExecutedAreReported) {
  ProductRun run("modeler", "-journalout.log");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kCountLines, 0);
  EXPECT_EQ(modeler::answerOwnBox(run, IDOK).texts,
            std::vector<std::string>{"The command CountLines was not executed."});
  EXPECT_NE(run.file("out.log").value_or("").find(": command: CountLines: not executed\r\n"), std::string::npos);
}

TEST(ModelerPluginRun, GeneralPluginsHearOfUsersAndTheLogHasTheLoading) {
  ProductRun run("modeler", "-trace -trfout.txt -plug_log");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kRaiseUser, 0);
  PostMessageA(window, WM_COMMAND, kRaiseUserGroup, 0);
  EXPECT_TRUE(support::eventually([&] {
    return run.file("out.txt").value_or("").find("userwatch: group 4: AfterAddUser, user 17\r\n") != std::string::npos;
  }));
  EXPECT_NE(run.file("out.txt").value_or("").find("userwatch: user 17: AfterRename\r\n"), std::string::npos);
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  std::string const log = run.file("_plugin_manager.log").value_or("");
  EXPECT_TRUE(log.starts_with("Start logging\r\nKivPluginManager::LoadPlugins\r\n")) << log;
  EXPECT_TRUE(log.ends_with("KivPluginManager::DiscardPlugins\r\n")) << log;
}

} // namespace
