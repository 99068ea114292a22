// What of the sample product follows the theme, seen from outside: parts that are shown and hidden, the theme that is kept.

#include "modeler_run.hpp"
#include "support/windows/pixels.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr WPARAM kToolBar = 601;
constexpr WPARAM kOutline = 602;
constexpr WPARAM kNotes = 603;
constexpr WPARAM kStatusBar = 604;
constexpr WPARAM kStyles = 605;
constexpr WPARAM kClassic = 607;

/// How many windows stand around the documents.
int visibleParts(HWND window) {
  int count = 0;
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
    count += IsWindowVisible(child) && support::windowClass(child) != "MDIClient" ? 1 : 0;
  return count;
}

HWND clientOf(HWND window) { return FindWindowExA(window, nullptr, "MDICLIENT", nullptr); }

RECT documentsIn(HWND window) {
  RECT area = support::windowRectangle(clientOf(window));
  MapWindowPoints(nullptr, window, reinterpret_cast<POINT *>(&area), 2);
  return area;
}

std::string kept(ProductRun & run) { return run.file("look.ini").value_or(""); }

bool keeps(ProductRun & run, std::string const & line) {
  return support::eventually([&] { return kept(run).find(line) != std::string::npos; });
}

support::ProgramStart startIn(std::string const & folder) {
  return {.program = "modeler", .arguments = "-keeplook.ini -journallog.txt", .workingFolder = folder};
}

TEST(ModelerLook, HasAllPartsAtTheFirstStart) {
  ProductRun run("modeler", "-keeplook.ini -journallog.txt");
  HWND const window = modeler::mainWindow(run);
  ASSERT_TRUE(window);
  EXPECT_TRUE(support::eventually([&] { return visibleParts(window) == 4; }));
  RECT const documents = documentsIn(window);
  EXPECT_GT(documents.left, 100);
  EXPECT_GT(documents.top, 15);
  EXPECT_FALSE(run.file("look.ini")) << "nothing has been chosen yet";
}

TEST(ModelerLook, HidesAndShowsPartsByTheMenuAndKeepsThat) {
  ProductRun run("modeler", "-keeplook.ini -journallog.txt");
  HWND const window = modeler::mainWindow(run);
  ASSERT_TRUE(window);
  int parts = 4;
  for (WPARAM const item : {kToolBar, kOutline, kNotes, kStatusBar}) {
    PostMessageA(window, WM_COMMAND, item, 0);
    --parts;
    EXPECT_TRUE(support::eventually([&] { return visibleParts(window) == parts; })) << item;
  }
  EXPECT_TRUE(support::eventually([&] {
    RECT all = {};
    GetClientRect(window, &all);
    RECT const documents = documentsIn(window);
    return EqualRect(&documents, &all) != FALSE;
  })) << "the documents have their room";
  for (char const * const line : {"ToolBar=0", "Outline=0", "Notes=0", "StatusBar=0"})
    EXPECT_TRUE(keeps(run, line)) << kept(run);
  PostMessageA(window, WM_COMMAND, kNotes, 0);
  EXPECT_TRUE(support::eventually([&] { return visibleParts(window) == 1; }));
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  ProductRun again(startIn(run.folder().path()));
  HWND const next = modeler::mainWindow(again);
  ASSERT_TRUE(next);
  EXPECT_TRUE(support::eventually([&] { return visibleParts(next) == 1; }));
}

TEST(ModelerLook, ClosesAPaneByItsButton) {
  ProductRun run("modeler", "-keeplook.ini -journallog.txt");
  HWND const window = modeler::mainWindow(run);
  ASSERT_TRUE(window);
  ASSERT_TRUE(support::eventually([&] { return visibleParts(window) == 4; }));
  RECT const documents = documentsIn(window);
  HWND const outline = ChildWindowFromPoint(window, {10, documents.top + 5});
  RECT area = {};
  GetClientRect(outline, &area);
  LPARAM const button = MAKELPARAM(area.right - 8, 8);
  PostMessageA(outline, WM_LBUTTONDOWN, MK_LBUTTON, button);
  PostMessageA(outline, WM_LBUTTONUP, 0, button);
  EXPECT_TRUE(support::eventually([&] { return !IsWindowVisible(outline); }));
  EXPECT_TRUE(keeps(run, "Outline=0")) << kept(run);
}

TEST(ModelerLook, IsKeptFromRunToRun) {
  ProductRun run("modeler", "-keeplook.ini -journallog.txt");
  HWND const window = modeler::mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kClassic, 0);
  PostMessageA(window, WM_COMMAND, kStyles, 0);
  EXPECT_TRUE(keeps(run, "Theme=Classic")) << kept(run);
  EXPECT_TRUE(keeps(run, "VisualStyles=0")) << kept(run);
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  ProductRun again(startIn(run.folder().path()));
  HWND const next = modeler::mainWindow(again);
  ASSERT_TRUE(next);
  PostMessageA(next, WM_COMMAND, kStyles, 0);
  EXPECT_TRUE(support::eventually([&] {
    return support::readFile(run.path("look.ini")).value_or("").find("VisualStyles=1") != std::string::npos;
  })) << "the command switches them on again, so they were off";
  EXPECT_NE(kept(run).find("Theme=Classic"), std::string::npos);
}

TEST(ModelerLook, ShowsAnotherThemeAtOnce) {
  ProductRun run("modeler", "-keeplook.ini -journallog.txt");
  HWND const window = modeler::mainWindow(run);
  ASSERT_TRUE(window);
  ASSERT_TRUE(support::eventually([&] { return visibleParts(window) == 4; }));
  HWND const bar = ChildWindowFromPoint(window, {300, 2});
  auto const looksBlue = [&] {
    support::Pixels const pixels = support::readWindow(bar);
    support::Pixel const pixel = pixels.at(pixels.width() - 3, pixels.height() - 3);
    return pixel != 0xFFFFFFFF && (pixel >> 16 & 0xFF) > (pixel & 0xFF) + 20;
  };
  EXPECT_TRUE(support::eventually(looksBlue));
  PostMessageA(window, WM_COMMAND, kClassic, 0);
  EXPECT_TRUE(support::eventually([&] { return !looksBlue(); }));
}

TEST(ModelerLook, HasAPictureBehindTheWindows) {
  ProductRun run("modeler", "-keeplook.ini -journallog.txt");
  HWND const window = modeler::mainWindow(run);
  ASSERT_TRUE(window);
  EXPECT_TRUE(support::eventually([&] { return support::readWindow(clientOf(window)).colours() > 100; }));
}

} // namespace
