// The sample of dialogs and controls, as its user has it.
#include "support/child_process.hpp"
#include "support/files.hpp"
#include "support/windows.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

/// How many controls of each class a dialog has.
std::map<std::string, int> classesIn(HWND dialog) {
  std::map<std::string, int> classes;
  for (HWND const child : support::children(dialog))
    ++classes[support::windowClass(child)];
  return classes;
}

TEST(ControlsSample, ShowsEachKindOfControl) {
  support::ChildProcess child({.program = "controls", .arguments = "-lang2057"});
  HWND const dialog = support::waitForWindow({.processId = child.processId(), .title = "Controls"});
  ASSERT_NE(dialog, nullptr);
  std::map<std::string, int> const classes = classesIn(dialog);
  EXPECT_EQ(classes.at("Button"), 7);
  EXPECT_EQ(classes.at("Static"), 6);
  EXPECT_EQ(classes.at("ListBox"), 1);
  EXPECT_EQ(classes.at("ComboBox"), 1);
  EXPECT_EQ(classes.at("Edit"), 1);
  EXPECT_EQ(classes.at("msctls_updown32"), 1);
  support::pressButton(dialog, IDOK);
  EXPECT_EQ(child.waitForEnd(), 0u);
}

TEST(ControlsSample, SpeaksGermanToo) {
  support::ChildProcess child({.program = "controls", .arguments = "-lang1031"});
  HWND const dialog = support::waitForWindow({.processId = child.processId(), .title = "Bedienelemente"});
  ASSERT_NE(dialog, nullptr);
  support::closeWindow(dialog);
  EXPECT_EQ(child.waitForEnd(), 0u);
}

TEST(ControlsSample, ShowsNothingUnderSuppression) {
  support::ChildProcess child({.program = "controls", .arguments = "-lang2057 -no_dialogs -log_dialogslog.txt"});
  EXPECT_EQ(child.waitForEnd(), 0u);
  EXPECT_EQ(support::readFile("log.txt").value_or(""), "Controls\r\n");
}

} // namespace
