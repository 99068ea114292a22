// What a user sees of a product's main window, and what nobody sees under suppression.

#include "frame/product_run.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using Lines = std::vector<std::string>;

HWND mainWindow(ProductRun & run, bool visible) {
  return support::waitForWindow({.processId = run.child().processId(), .title = "Product", .visible = visible});
}

TEST(MainWindow, EndsTheProgramWithZeroWhenItIsClosed) {
  ProductRun run("frame_window", "");
  HWND const window = mainWindow(run, true);
  ASSERT_TRUE(window);
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.record(), (Lines{"prepareApplication", "runApplication", "visible 1", "destroyed"}));
}

struct Hidden {
  char const * arguments;
  char const * gui;
};
std::ostream & operator<<(std::ostream & out, Hidden const & row) { return out << row.arguments << " GUI " << row.gui; }

class HiddenWindow : public testing::TestWithParam<Hidden> {};
TEST_P(HiddenWindow, IsThereAndNeverSeen) {
  ProductRun run("frame_window", GetParam().arguments, {{"GUI", GetParam().gui}});
  ASSERT_TRUE(run.waitForRecord("visible 0"));
  HWND const window = mainWindow(run, false);
  ASSERT_TRUE(window);
  EXPECT_TRUE(support::findWindows({.processId = run.child().processId()}).empty());
  PostMessageA(window, WM_CLOSE, 0, 0);
  EXPECT_EQ(run.exitCode(), 0u);
}
INSTANTIATE_TEST_SUITE_P(Suppression, HiddenWindow, testing::Values(Hidden{"-no_windows", "1"}, Hidden{"", "0"}));

TEST(SevereExceptionBox, BelongsToTheMainWindow) {
  ProductRun run("frame_window", "", {{"CODE", "512"}});
  HWND const window = mainWindow(run, true);
  HWND const box = run.box();
  EXPECT_EQ(GetWindow(box, GW_OWNER), window);
  support::pressButton(box, "OK");
  EXPECT_EQ(run.exitCode(), 1u);
}

TEST(SevereExceptionBox, HasNoOwnerWhileNoWindowIsVisible) {
  ProductRun run("frame_window", "-no_windows", {{"CODE", "512"}});
  HWND const box = run.box();
  ASSERT_TRUE(box);
  EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
  support::pressButton(box, "OK");
  EXPECT_EQ(run.exitCode(), 1u);
}

TEST(SevereExceptionBox, OfAHostWithoutAGUIIsNotShown) {
  ProductRun run("frame_window", "", {{"CODE", "512"}, {"GUI", "0"}});
  EXPECT_EQ(run.exitCode(), 1u);
  EXPECT_EQ(run.record(), (Lines{"prepareApplication", "runApplication", "visible 0", "destroyed"}));
}

} // namespace
