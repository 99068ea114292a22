#include "aappinfo.hpp"
#include "modeler/modeler_run.hpp"
#include "support/console.hpp"
#include "support/pixels.hpp"
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

TEST(Modeler, HasAConsoleWhenAskedFor) {
  ProductRun run(support::ProgramStart{.program = "modeler", .arguments = "-console", .withoutStreams = true});
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  support::ConsoleView const console(run.child().processId());
  EXPECT_EQ(console.title(), std::string("[KIVARA ") + Kiv_GetBuildVersionString().c_str() + "] - dynamic console");
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
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

/// Waits until the list holds that row behind those that were there before.
bool waitForRow(HWND list, std::string const & row) {
  return support::eventually([&] {
    Lines const rows = rowsOf(list);
    return !rows.empty() && rows.back() == row;
  });
}

TEST(Modeler, ListsTheEventsSinceItsStart) {
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  HWND const list = eventList(window);
  ASSERT_TRUE(list);
  EXPECT_TRUE(waitForRow(list, "850\tBeforeGrabFocus\t"));
  EXPECT_EQ(rowsOf(list), (Lines{"840\tAppChangeStartupPhase\t[kiv] Loading the texts",
                                 "840\tAppChangeStartupPhase\t[kiv] Opening the main window",
                                 "848\tKivWindowStackChanged\t+= 1 [" + title() + "]", "775\tAppInitialized\t",
                                 "850\tBeforeGrabFocus\t"}));
}

TEST(Modeler, ListsEventsAsTheyComeWithWhatTheyCarry) {
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  HWND const list = eventList(window);
  ASSERT_TRUE(waitForRow(list, "850\tBeforeGrabFocus\t"));
  PostMessageA(window, WM_COMMAND, kRaiseUser, 0);
  EXPECT_TRUE(waitForRow(list, "701\tUser\tAfterRename, user 17, permission type -1, database permission 0"));
  PostMessageA(window, WM_COMMAND, kRaiseUserGroup, 0);
  EXPECT_TRUE(waitForRow(list, "702\tUserGroup\tAfterAddUser, group 4, user 17"));
  HWND const listener =
      support::waitForWindow({.processId = run.child().processId(), .className = "SV0105.Listener", .visible = false});
  PostMessageA(listener, WM_FONTCHANGE, 0, 0);
  EXPECT_TRUE(waitForRow(list, "849\tSystemSettingsChanged\tfonts"));
}

TEST(Modeler, KeepsItsEventsWhenTheirWindowIsClosedAndOpenedAgain) {
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  HWND const list = eventList(window);
  ASSERT_TRUE(waitForRow(list, "850\tBeforeGrabFocus\t"));
  std::size_t const before = rowsOf(list).size();
  PostMessageA(GetParent(list), WM_CLOSE, 0, 0);
  ASSERT_TRUE(support::waitUntilGone(list));
  PostMessageA(window, WM_COMMAND, kRaiseUserGroup, 0);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  HWND const again = eventList(window);
  ASSERT_TRUE(waitForRow(again, "850\tBeforeGrabFocus\t"));
  Lines const rows = rowsOf(again);
  EXPECT_EQ(rows.size(), before + 2);
  EXPECT_EQ(rows[before], "702\tUserGroup\tAfterAddUser, group 4, user 17");
  PostMessageA(window, WM_COMMAND, kRaiseUserGroup, 0);
  EXPECT_TRUE(waitForRow(again, rows[before]));
}

TEST(Modeler, TracesItsEventsToTheLastOne) {
  ProductRun run("modeler", "-trace -trfout.txt");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  Lines events = linesOf(run.file("out.txt").value_or(""));
  std::erase_if(events, [](std::string const & line) { return !line.starts_with("event "); });
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
