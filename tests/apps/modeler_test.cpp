#include "aappinfo.hpp"
#include "frame/product_run.hpp"
#include "support/console.hpp"
#include "support/pixels.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace {

std::string title() { return std::string("KIVARA Modeler ") + Kiv_GetVersionString().c_str(); }

HWND mainWindow(ProductRun & run) {
  return support::waitForWindow({.processId = run.child().processId(), .title = title()});
}

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

TEST(Modeler, EndsByItselfWithoutWindows) {
  ProductRun run("modeler", "-no_windows");
  EXPECT_EQ(run.exitCode(), 0u);
}

} // namespace
