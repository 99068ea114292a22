// The sample of dialogs and controls, as its user has it.
#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "support/windows/pixels.hpp"
#include "support/windows/windows.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

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
  EXPECT_EQ(classes.at("Button"), 8);
  EXPECT_EQ(classes.at("Static"), 8);
  EXPECT_EQ(classes.at("ListBox"), 1);
  EXPECT_EQ(classes.at("ComboBox"), 2);
  EXPECT_EQ(classes.at("Edit"), 3);
  EXPECT_EQ(classes.at("msctls_updown32"), 2);
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

TEST(ControlsSample, AsksInTheLanguageOfTheProgram) {
  support::ChildProcess child({.program = "controls", .arguments = "-lang1031"});
  HWND const dialog = support::waitForWindow({.processId = child.processId(), .title = "Bedienelemente"});
  ASSERT_NE(dialog, nullptr);
  ASSERT_TRUE(support::pressButton(dialog, "Frage"));
  HWND box = nullptr;
  ASSERT_TRUE(support::eventually([&] {
    for (HWND const window : support::findWindows({.processId = child.processId()}))
      if (window != dialog)
        box = window;
    return box != nullptr;
  }));
  EXPECT_EQ(support::readBox(box).buttons, (std::vector<std::string>{"Ja", "Nein", "Abbrechen"}));
  support::closeWindow(box);
  EXPECT_TRUE(support::waitUntilGone(box));
  support::pressButton(dialog, IDCANCEL);
  EXPECT_EQ(child.waitForEnd(), 0u);
}

/// The last control of a class: that of the beginning of the year.
HWND lastOf(HWND dialog, std::string const & className) {
  HWND last = nullptr;
  for (HWND const child : support::children(dialog))
    if (support::windowClass(child) == className)
      last = child;
  return last;
}

/// The field for the day: the last one with buttons in it.
HWND dayField(HWND dialog) { return GetParent(lastOf(dialog, "msctls_updown32")); }

/// What the list reports when the user selects an entry.
void choose(HWND dialog, HWND list, WPARAM entry) {
  SendMessageA(list, CB_SETCURSEL, entry, 0);
  SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
}

void expectYearStart(char const * option, char const * title, char const * april) {
  support::ChildProcess child({.program = "controls", .arguments = option});
  HWND const dialog = support::waitForWindow({.processId = child.processId(), .title = title});
  ASSERT_NE(dialog, nullptr);
  HWND const day = dayField(dialog);
  HWND const month = lastOf(dialog, "ComboBox");
  EXPECT_EQ(support::windowText(day), "1.");
  EXPECT_EQ(support::windowText(month), april);
  choose(dialog, month, 1);
  for (int step = 0; step < 40; ++step)
    SendMessageA(day, WM_KEYDOWN, VK_UP, 1);
  EXPECT_EQ(support::windowText(day), "28.") << "the days of February";
  RECT const field = support::windowRectangle(day);
  RECT const list = support::windowRectangle(month);
  EXPECT_EQ(field.top, list.top);
  EXPECT_LT(field.right, list.left) << "they do not lie on each other";
  support::pressButton(dialog, IDOK);
  EXPECT_EQ(child.waitForEnd(), 0u);
}

TEST(ControlsSample, AsksForADayAndAMonth) { expectYearStart("-lang2057", "Controls", "April"); }

TEST(ControlsSample, AsksForADayAndAMonthInGerman) { expectYearStart("-lang1031", "Bedienelemente", "April"); }

TEST(ControlsSample, FieldsKeepTheirButtonsWhenTheyGetAndLoseTheKeyboard) {
  support::ChildProcess child({.program = "controls", .arguments = "-lang2057"});
  HWND const dialog = support::waitForWindow({.processId = child.processId(), .title = "Controls"});
  ASSERT_NE(dialog, nullptr);
  SetWindowPos(dialog, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  HWND const field = dayField(dialog);
  HWND const spin = lastOf(dialog, "msctls_updown32");
  auto const shown = [&] { return support::readWindow(spin).colours(); };
  ASSERT_TRUE(support::eventually([&] { return shown() > 1; }));
  std::size_t const before = shown();
  for (HWND const focused : {field, lastOf(dialog, "ComboBox")}) {
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(focused), TRUE);
    EXPECT_TRUE(support::eventually([&] { return shown() == before; }, 3)) << "only one colour is left";
    Sleep(100); // drawn over later
    EXPECT_EQ(shown(), before);
  }
  support::pressButton(dialog, IDOK);
  EXPECT_EQ(child.waitForEnd(), 0u);
}

TEST(ControlsSample, ShowsNothingUnderSuppression) {
  support::ChildProcess child({.program = "controls", .arguments = "-lang2057 -no_dialogs -log_dialogslog.txt"});
  EXPECT_EQ(child.waitForEnd(), 0u);
  EXPECT_EQ(support::readFile("log.txt").value_or(""), "Controls\r\n");
}

} // namespace
