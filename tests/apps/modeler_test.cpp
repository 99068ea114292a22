#include "aappinfo.hpp"
#include "apps/modeler/runs/modeler_run.hpp"
#include "support/processes/console.hpp"
#include "support/windows/pixels.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace {

using modeler::mainWindow;
using modeler::title;

TEST(Modeler, RunsFromItsCommandLineToTheCloseOfItsWindow) {
  ProductRun run("modeler", "-trace -trfout.txt -pidfileout.pid -h14");
  unsigned long const id = run.child().processId();
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  EXPECT_EQ(run.file("out.pid"), std::to_string(id) + "\r\n");
  EXPECT_TRUE(run.file("out.txt"));
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
}

TEST(Modeler, DrawsItsWindow) {
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  EXPECT_GT(support::readWindow(window).colours(), 2u);
}

TEST(Modeler, StartsWithoutTheLibrariesThatAreLoadedLate) {
  ProductRun run("modeler", "");
  ASSERT_TRUE(mainWindow(run));
  std::set<std::string> const modules = run.child().modules();
  EXPECT_EQ(modules.count("kivara.dll"), 1u);
  EXPECT_EQ(modules.count("winhttp.dll"), 0u);
}

TEST(Modeler, HasAConsoleWhenAskedFor) {
  ProductRun run(support::ProgramStart{.program = "modeler", .arguments = "-console", .withoutStreams = true});
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  support::ConsoleView const console(run.child().processId());
  EXPECT_EQ(console.title(), std::string("[KIVARA ") + Kiv_GetBuildVersionString().c_str() + "] - dynamic console");
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
}

TEST(Modeler, RecordsTheMessagesOfItsWindowWhenAskedTo) {
  ProductRun run("modeler", "-watch");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  std::string const record = run.file("_kiv_hooks.txt").value_or("");
  EXPECT_EQ(record.substr(0, 20), "--- [hooking window ") << record;
  EXPECT_NE(record.find("h] --- [main window] ---n["), std::string::npos) << record;
  EXPECT_NE(record.find("(WM_CLOSE)\r\n"), std::string::npos) << record;
  EXPECT_TRUE(record.ends_with("# -- [end of program session] ---\r\n\r\n")) << record;
}

// Its window of events

using Lines = std::vector<std::string>;

constexpr WPARAM kShowEvents = 204;
constexpr WPARAM kRaiseUser = 401;
constexpr WPARAM kRaiseUserGroup = 402;

/// The list that has come, or null.
HWND eventList(HWND window) {
  HWND list = nullptr;
  support::eventually([&] {
    for (HWND const child : support::children(window))
      if (support::windowClass(child) == "ListBox")
        list = child;
    return list != nullptr;
  });
  return list;
}

Lines rowsOf(HWND list) {
  Lines rows;
  auto const count = static_cast<WPARAM>(SendMessageW(list, LB_GETCOUNT, 0, 0));
  for (WPARAM index = 0; index < count; ++index) {
    // In the W form: Wine does not convert a row for another process.
    wchar_t text[500] = L"";
    SendMessageW(list, LB_GETTEXT, index, reinterpret_cast<LPARAM>(text));
    rows.emplace_back();
    for (wchar_t const * each = text; *each != 0; ++each)
      rows.back() += static_cast<char>(*each);
  }
  return rows;
}

constexpr char kFocusRow[] = "850\tBeforeGrabFocus\t";
constexpr char kInitializedRow[] = "775\tAppInitialized\t";
constexpr char kUserRow[] = "701\tUser\tAfterRename, user 17, permission type -1, database permission 0";
constexpr char kUserGroupRow[] = "702\tUserGroup\tAfterAddUser, group 4, user 17";
constexpr char kFontsRow[] = "849\tSystemSettingsChanged\tfonts";

/// The rows without those that may come at any time: the focus depends on when the list was opened, and all windows of the
/// desktop, which the tests share, hear of the system's changes.
Lines steadyRows(HWND list) {
  Lines rows = rowsOf(list);
  std::erase_if(
      rows, [](std::string const & row) { return row == kFocusRow || (row.starts_with("849\t") && row != kFontsRow); });
  return rows;
}

testing::AssertionResult isRow(bool found, HWND list, std::string const & row) {
  if (found)
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << row << " is missing in " << testing::PrintToString(rowsOf(list));
}

/// Waits until the list ends with that row.
testing::AssertionResult comesLast(HWND list, std::string const & row) {
  bool const found = support::eventually([&] {
    Lines const rows = steadyRows(list);
    return !rows.empty() && rows.back() == row;
  });
  return isRow(found, list, row);
}

/// Waits until the list holds that row.
testing::AssertionResult comes(HWND list, std::string const & row) {
  bool const found = support::eventually([&] {
    Lines const rows = rowsOf(list);
    return std::find(rows.begin(), rows.end(), row) != rows.end();
  });
  return isRow(found, list, row);
}

TEST(Modeler, ListsTheEventsSinceItsStart) {
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  HWND const list = eventList(window);
  ASSERT_TRUE(list);
  EXPECT_TRUE(comes(list, kFocusRow));
  EXPECT_TRUE(comesLast(list, kInitializedRow));
  EXPECT_EQ(steadyRows(list), (Lines{"840\tAppChangeStartupPhase\t[kiv] Loading the texts",
                                     "840\tAppChangeStartupPhase\t[kiv] Opening the main window",
                                     "848\tKivWindowStackChanged\t+= 1 [" + title() + "]", "775\tAppInitialized\t"}));
}

TEST(Modeler, ListsEventsAsTheyComeWithWhatTheyCarry) {
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  HWND const list = eventList(window);
  ASSERT_TRUE(list);
  PostMessageA(window, WM_COMMAND, kRaiseUser, 0);
  EXPECT_TRUE(comesLast(list, kUserRow));
  PostMessageA(window, WM_COMMAND, kRaiseUserGroup, 0);
  EXPECT_TRUE(comesLast(list, kUserGroupRow));
  HWND const listener =
      support::waitForWindow({.processId = run.child().processId(), .className = "SV0105.Listener", .visible = false});
  PostMessageA(listener, WM_FONTCHANGE, 0, 0);
  EXPECT_TRUE(comesLast(list, kFontsRow));
}

TEST(Modeler, KeepsItsEventsWhenTheirWindowIsClosedAndOpenedAgain) {
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  HWND const list = eventList(window);
  ASSERT_TRUE(list);
  ASSERT_TRUE(comesLast(list, kInitializedRow));
  Lines const before = steadyRows(list);
  PostMessageA(GetParent(list), WM_CLOSE, 0, 0);
  ASSERT_TRUE(support::waitUntilGone(list));
  PostMessageA(window, WM_COMMAND, kRaiseUserGroup, 0);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  HWND const again = eventList(window);
  ASSERT_TRUE(again);
  EXPECT_TRUE(comesLast(again, kUserGroupRow));
  EXPECT_EQ(steadyRows(again).size(), before.size() + 1);
  PostMessageA(window, WM_COMMAND, kRaiseUser, 0);
  EXPECT_TRUE(comesLast(again, kUserRow));
  EXPECT_EQ(steadyRows(again).size(), before.size() + 2);
}

TEST(Modeler, TracesItsEventsToTheLastOne) {
  ProductRun run("modeler", "-trace -trfout.txt");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  Lines events = linesOf(run.file("out.txt").value_or(""));
  std::erase_if(events, [](std::string const & line) {
    return !line.starts_with("event ") || line.starts_with("event 849 "); // the system's changes may come at any time
  });
  ASSERT_GE(events.size(), 2u);
  EXPECT_EQ(Lines(events.end() - 2, events.end()),
            (Lines{"event 848 KivWindowStackChanged -= 0 [" + title() + "]", "event 776 AppExit end(0)"}));
}

TEST(Modeler, ShowsItsStartAtAConsole) {
  ProductRun run(support::ProgramStart{.program = "modeler", .arguments = "-console", .withoutStreams = true});
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  support::ConsoleView const console(run.child().processId());
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  Lines const lines = console.lines();
  for (std::string const line : {"[kiv] Loading the texts", "[kiv] Opening the main window",
                                 "[kiv] Application initialized", "[kiv] Application shutdown event recognized"})
    EXPECT_EQ(std::count(lines.begin(), lines.end(), line), 1) << line;
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "[kiv] WinStack: += 1 [" + title() + "]"), 1);
}

TEST(Modeler, EndsByItselfWithoutWindows) {
  ProductRun run("modeler", "-no_windows");
  EXPECT_EQ(run.exitCode(), 0u);
}

} // namespace
