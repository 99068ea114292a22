#include "support/windows/windows.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

using support::ChildProcess;
using support::waitForWindow;

namespace {

HWND boxOf(ChildProcess const & child) {
  return waitForWindow({.processId = child.processId(), .className = support::kBoxClass});
}

} // namespace

TEST(Windows, ReadsWhatABoxSays) {
  ChildProcess child({.program = "message_box"});
  HWND const box = boxOf(child);
  ASSERT_TRUE(box);
  auto const read = support::readBox(box);
  EXPECT_EQ(read.title, "A caption");
  EXPECT_EQ(read.texts, std::vector<std::string>{"First line\nSecond line & more"});
  EXPECT_EQ(read.buttons, (std::vector<std::string>{"Retry", "Cancel"}));
}

TEST(Windows, PressesTheButtonOfALabel) {
  ChildProcess child({.program = "message_box"});
  HWND const box = boxOf(child);
  EXPECT_FALSE(support::pressButton(box, "Abort"));
  EXPECT_TRUE(support::pressButton(box, "Retry"));
  EXPECT_TRUE(support::waitUntilGone(box));
  EXPECT_EQ(child.waitForEnd(), DWORD{IDRETRY});
}

TEST(Windows, PressesTheButtonOfAnIdentifier) {
  ChildProcess child({.program = "message_box"});
  HWND const box = boxOf(child);
  EXPECT_FALSE(support::pressButton(box, IDOK));
  EXPECT_TRUE(support::pressButton(box, IDCANCEL));
  EXPECT_EQ(child.waitForEnd(), DWORD{IDCANCEL});
}

TEST(Windows, FindsOnlyWindowsOfTheProcess) {
  ChildProcess first({.program = "message_box"});
  ChildProcess second({.program = "message_box"});
  HWND const one = boxOf(first);
  HWND const two = boxOf(second);
  ASSERT_TRUE(one && two);
  EXPECT_NE(one, two);
  EXPECT_EQ(support::findWindows({.processId = first.processId(), .title = "A caption"}), std::vector<HWND>{one});
  EXPECT_TRUE(support::findWindows({.processId = first.processId(), .title = "Another"}).empty());
  EXPECT_EQ(waitForWindow({.processId = first.processId(), .className = "Other"}, 0.1), nullptr);
}

TEST(Windows, ClosesAWindowAndKnowsItsPlace) {
  ChildProcess child({.program = "painted_window"});
  HWND const window = waitForWindow({.processId = child.processId(), .title = "Painted"});
  ASSERT_TRUE(window);
  EXPECT_EQ(support::windowClass(window), "PaintedWindow");
  RECT const inner = support::clientRectangle(window);
  EXPECT_EQ(inner.right - inner.left, 60);
  EXPECT_EQ(inner.bottom - inner.top, 40);
  RECT const outer = support::windowRectangle(window);
  EXPECT_LE(outer.left, inner.left);
  EXPECT_GE(outer.bottom, inner.bottom);
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(child.waitForEnd(), 3u);
}

TEST(Windows, AWindowThatIsGoneYieldsNothing) {
  ChildProcess child({.program = "painted_window"});
  HWND const window = waitForWindow({.processId = child.processId(), .title = "Painted"});
  child.kill();
  EXPECT_TRUE(support::waitUntilGone(window));
  EXPECT_EQ(support::windowText(window), "");
  EXPECT_TRUE(support::children(window).empty());
  EXPECT_FALSE(support::pressButton(window, "OK"));
  EXPECT_FALSE(support::closeWindow(window));
}
