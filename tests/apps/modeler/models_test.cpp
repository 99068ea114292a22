// Process models and languages of the sample product.
#include "modeler_run.hpp"

#include "support/pixels.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using modeler::documents;
using modeler::mainWindow;
using modeler::waitForDocument;

constexpr WPARAM kOpenSample = 103;
constexpr WPARAM kEnglish = 501;
constexpr WPARAM kGerman = 502;
constexpr WPARAM kOpen = 102;
constexpr WPARAM kShowEvents = 204;

/// Its document, or null.
HWND openSample(HWND window) {
  PostMessageA(window, WM_COMMAND, kOpenSample, 0);
  return modeler::documentOf(window, "Handling of an order");
}

TEST(Modeler, ShowsItsSampleModel) {
  ProductRun run("modeler", "-journalout.log");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  std::size_t const before = support::readWindow(window).colours();
  EXPECT_TRUE(openSample(window));
  EXPECT_TRUE(support::eventually([&] { return support::readWindow(window).colours() > before; }));
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_NE(run.file("out.log").value_or("").find("order.txt, 8 nodes\r\n"), std::string::npos);
}

TEST(Modeler, ReadsAModelInWordsOfEitherLanguage) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt",
                     "Prozess \"Gemischt\"\r\nBeginn a \"A\"\r\nactivity b \"B \\\"b\\\"\" Dauer 5\r\n"
                     "Aktivit\xE4t c \"C\"\r\nFluss a b\r\nflow b c \"weiter\"\r\n");
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" -journalout.log");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  EXPECT_TRUE(waitForDocument(window, "Gemischt"));
  EXPECT_NE(run.file("out.log").value_or("").find("model.txt, 3 nodes\r\n"), std::string::npos);
}

struct BadModel {
  char const * content;
  char const * fault;
};
std::ostream & operator<<(std::ostream & out, BadModel const & row) { return out << row.fault; }

class ModelerFault : public testing::TestWithParam<BadModel> {};
TEST_P(ModelerFault, IsToldWithItsLine) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", GetParam().content);
  ProductRun run("modeler",
                 "\"-model" + folder / "model.txt" + "\" -no_dialogs -no_windows -log_no_dialogsdialogs.log");
  EXPECT_EQ(run.exitCode(), 0u);
  std::string const log = run.file("dialogs.log").value_or("");
  EXPECT_NE(log.find(GetParam().fault), std::string::npos) << log;
}
INSTANTIATE_TEST_SUITE_P(Models, ModelerFault,
                         testing::Values(BadModel{"process \"A\"\r\nround a \"A\"\r\n",
                                                  "Line 2: 'round' begins no statement."},
                                         BadModel{"process\r\n", "Line 1: a text in quotation marks is missing."},
                                         BadModel{"start \"A\"\r\n", "Line 1: an identifier is missing."},
                                         BadModel{"start a \"A\"\r\nend a \"B\"\r\n", "Line 2: 'a' is there twice."},
                                         BadModel{"start a \"A\"\r\nflow a b\r\n", "Line 2: there is no 'b' above."},
                                         BadModel{"# all of it\r\nactivity a \"A\" duration long\r\n",
                                                  "Line 2: a duration in minutes is missing."}));

/// What the program's own box says, whose title is that of the main window.
support::BoxTexts answerOwnBox(ProductRun & run, int button) {
  HWND box = nullptr;
  support::eventually([&] {
    for (HWND const window : support::findWindows({.processId = run.child().processId(), .title = modeler::title()}))
      if (support::childById(window, button) != nullptr || !support::readBox(window).buttons.empty())
        box = window;
    return box != nullptr;
  });
  support::BoxTexts read = support::readBox(box);
  EXPECT_TRUE(support::pressButton(box, button));
  EXPECT_TRUE(support::waitUntilGone(box));
  return read;
}

TEST(Modeler, TellsOfAModelThatCannotBeRead) {
  ProductRun run("modeler", "-modelnone.txt");
  auto const box = answerOwnBox(run, IDOK);
  ASSERT_FALSE(box.texts.empty());
  EXPECT_EQ(box.texts.back(), "The process model none.txt cannot be shown.\n\nThe file cannot be read.");
  EXPECT_EQ(box.buttons, (std::vector<std::string>{"OK", "Help"}));
}

constexpr char kSmallModel[] = "process \"A \\\"b\\\"\"\r\nstart a \"A\"\r\nactivity b \"B\" duration 5\r\n"
                               "decision c \"C\"\r\nend d \"D\"\r\nflow a b\r\nflow b c \"go \\\"on\\\"\"\r\n";

TEST(Modeler, SavesItsModelAsItWasRead) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", kSmallModel);
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" -savecopy.txt -journalout.log");
  HWND const window = mainWindow(run);
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(run.file("copy.txt").value_or(""), kSmallModel);
  EXPECT_NE(run.file("out.log").value_or("").find("saved: copy.txt"), std::string::npos);
}

/// Saves a model under the name of a file that is there, and gives that answer. The file afterwards.
std::string saveOverAFile(char const * answer) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", kSmallModel);
  support::writeFile(folder / "old.txt", "old");
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" \"-save" + folder / "old.txt" + "\"");
  HWND box = nullptr;
  EXPECT_TRUE(support::eventually([&] {
    for (HWND const window : support::findWindows({.processId = run.child().processId(), .title = modeler::title()}))
      if (support::readBox(window).buttons.size() == 2)
        box = window;
    return box != nullptr;
  }));
  std::string const text = support::readBox(box).texts.back();
  EXPECT_NE(text.find("old.txt is there already.\n\nOverwrite it?"), std::string::npos) << text;
  EXPECT_TRUE(support::pressButton(box, answer));
  EXPECT_TRUE(support::waitUntilGone(box));
  EXPECT_TRUE(support::closeWindow(mainWindow(run)));
  EXPECT_EQ(run.exitCode(), 0u);
  return support::readFile(folder / "old.txt").value_or("");
}

TEST(Modeler, OverwritesAFileWhenItsUserAgrees) { EXPECT_EQ(saveOverAFile("Yes"), kSmallModel); }

TEST(Modeler, LeavesAFileAloneWhenItsUserDoesNotAgree) { EXPECT_EQ(saveOverAFile("No"), "old"); }

TEST(Modeler, OverwritesNothingUnderSuppressionAndSaysSoInTheLog) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", kSmallModel);
  support::writeFile(folder / "old.txt", "old");
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" \"-save" + folder / "old.txt" +
                                "\" -no_dialogs -log_no_dialogsdialogs.log");
  EXPECT_TRUE(support::closeWindow(mainWindow(run)));
  EXPECT_EQ(run.exitCode(), 0u);
  EXPECT_EQ(support::readFile(folder / "old.txt").value_or(""), "old");
  EXPECT_NE(run.file("dialogs.log").value_or("").find("old.txt is there already.\r\n\r\nOverwrite it?\r\n"),
            std::string::npos);
}

TEST(Modeler, TellsThatAFileCannotBeWritten) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", kSmallModel);
  ProductRun run("modeler", "\"-model" + folder / "model.txt" + "\" -savenowhere\\copy.txt");
  EXPECT_EQ(answerOwnBox(run, IDOK).texts.back(), "The file nowhere\\copy.txt cannot be written.");
}

TEST(Modeler, TellsOfFaultsInItsLanguage) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", "start a \"A\"\r\nflow a b\r\n");
  ProductRun run("modeler",
                 "-langde \"-model" + folder / "model.txt" + "\" -no_dialogs -no_windows -log_no_dialogsdialogs.log");
  EXPECT_EQ(run.exitCode(), 0u);
  std::string const log = run.file("dialogs.log").value_or("");
  EXPECT_NE(log.find("model.txt kann nicht gezeigt werden."), std::string::npos) << log;
  EXPECT_NE(log.find("Zeile 2: dar\xFC"
                     "ber steht kein 'b'."),
            std::string::npos)
      << log;
}

/// Chains of nodes below each other.
std::string largeModel() {
  std::string text = "process \"Large\"\r\n";
  for (char chain = 'a'; chain <= 'l'; ++chain)
    for (char place = 'a'; place <= 'l'; ++place) {
      text += std::string("activity ") + chain + place + " \"Step " + chain + place + "\"\r\n";
      if (place > 'a')
        text += std::string("flow ") + chain + static_cast<char>(place - 1) + ' ' + chain + place + "\r\n";
    }
  return text;
}

bool hasBars(HWND document) {
  return (GetWindowLongA(document, GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL)) == (WS_HSCROLL | WS_VSCROLL);
}

struct ScrollCase {
  UINT message;
  WPARAM there;
  WPARAM back;
};
std::ostream & operator<<(std::ostream & out, ScrollCase const & row) { return out << row.message << ' ' << row.there; }

/// What the window shows once it has drawn itself to the end: two looks that are alike.
support::Pixels settled(HWND window) {
  support::Pixels last = support::readWindow(window);
  EXPECT_TRUE(support::eventually([&] {
    support::Pixels const now = support::readWindow(window);
    bool const isSettled = now == last;
    last = now;
    return isSettled;
  }));
  return last;
}

/// A run with the large model in front.
class ModelerScroll : public testing::TestWithParam<ScrollCase> {
protected:
  ModelerScroll() { support::writeFile(folder_ / "model.txt", largeModel()); }

  support::TempFolder folder_;
};
TEST_P(ModelerScroll, MovesALargeModelThereAndBack) {
  ProductRun run("modeler", "\"-model" + folder_ / "model.txt" + "\"");
  ASSERT_TRUE(mainWindow(run));
  HWND const document = modeler::documentOf(mainWindow(run), "Large");
  ASSERT_TRUE(document);
  EXPECT_TRUE(hasBars(document));
  support::Pixels const before = settled(document);
  PostMessageA(document, GetParam().message, GetParam().there, 0);
  EXPECT_TRUE(support::eventually([&] { return support::readWindow(document) != before; }));
  PostMessageA(document, GetParam().message, GetParam().back, 0);
  EXPECT_TRUE(support::eventually([&] { return support::readWindow(document) == before; }));
}
constexpr WPARAM kWheelDown = static_cast<WPARAM>(static_cast<WORD>(-WHEEL_DELTA)) << 16;
constexpr WPARAM kWheelUp = static_cast<WPARAM>(WHEEL_DELTA) << 16;
INSTANTIATE_TEST_SUITE_P(
    Ways, ModelerScroll,
    testing::Values(ScrollCase{WM_HSCROLL, SB_PAGEDOWN, SB_PAGEUP}, ScrollCase{WM_VSCROLL, SB_LINEDOWN, SB_LINEUP},
                    ScrollCase{WM_VSCROLL, SB_BOTTOM, SB_TOP}, ScrollCase{WM_KEYDOWN, VK_END, VK_HOME},
                    ScrollCase{WM_KEYDOWN, VK_NEXT, VK_PRIOR}, ScrollCase{WM_MOUSEWHEEL, kWheelDown, kWheelUp},
                    ScrollCase{WM_MOUSEWHEEL, kWheelDown | MK_SHIFT, kWheelUp | MK_SHIFT}));

TEST(Modeler, ShowsAModelThatFitsWithoutScrollBars) {
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  HWND const document = openSample(window);
  ASSERT_TRUE(document);
  EXPECT_EQ(GetWindowLongA(document, GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL), 0);
  RECT const full = support::windowRectangle(document);
  SetWindowPos(document, nullptr, 0, 0, (full.right - full.left) / 2, (full.bottom - full.top) / 2, SWP_NOZORDER);
  EXPECT_TRUE(support::eventually([&] { return hasBars(document); }));
  SetWindowPos(document, nullptr, 0, 0, full.right - full.left, full.bottom - full.top, SWP_NOZORDER);
  EXPECT_TRUE(support::eventually([&] { return !hasBars(document); }));
}

TEST(Modeler, DrawsAModelAnewInAnotherLanguage) {
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  HWND const document = openSample(window);
  ASSERT_TRUE(document);
  support::Pixels const english = support::readWindow(document);
  PostMessageA(window, WM_COMMAND, kGerman, 0);
  EXPECT_TRUE(support::eventually([&] { return support::readWindow(document) != english; }));
  PostMessageA(window, WM_COMMAND, kEnglish, 0);
  EXPECT_TRUE(support::eventually([&] { return support::readWindow(document) == english; }));
}

/// The dialog of the system, filled in as a user does.
void answerFileDialog(ProductRun & run, std::string const & fileName) {
  HWND const dialog = support::waitForWindow({.processId = run.child().processId(), .className = support::kBoxClass});
  ASSERT_TRUE(dialog);
  HWND field = nullptr;
  ASSERT_TRUE(support::eventually([&] {
    for (HWND const child : support::children(dialog))
      if (support::windowClass(child) == "Edit" && IsWindowVisible(child))
        field = child;
    return field != nullptr;
  }));
  SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(fileName.c_str()));
  EXPECT_TRUE(support::pressButton(dialog, IDOK));
}

TEST(Modeler, OpensAsManyModelsAsTheUserChooses) {
  support::TempFolder const folder;
  support::writeFile(folder / "one.txt", "process \"One\"\r\nstart a \"A\"\r\n");
  support::writeFile(folder / "two.txt", "process \"Two\"\r\nstart a \"A\"\r\n");
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kOpen, 0);
  answerFileDialog(run, folder / "one.txt");
  EXPECT_TRUE(waitForDocument(window, "One"));
  PostMessageA(window, WM_COMMAND, kOpen, 0);
  answerFileDialog(run, folder / "two.txt");
  EXPECT_TRUE(waitForDocument(window, "Two"));
  EXPECT_TRUE(waitForDocument(window, "One"));
}

// Titles tell the language: the texts of a menu cannot be read from another process.
TEST(Modeler, ChangesItsLanguageWhileItRuns) {
  ProductRun run("modeler", "-journalout.log");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  EXPECT_TRUE(waitForDocument(window, "Events"));
  PostMessageA(window, WM_COMMAND, kGerman, 0);
  EXPECT_TRUE(waitForDocument(window, "Ereignisse"));
  PostMessageA(window, WM_COMMAND, kEnglish, 0);
  EXPECT_TRUE(waitForDocument(window, "Events"));
  EXPECT_NE(run.file("out.log").value_or("").find("language: 1031\r\n"), std::string::npos);
}

TEST(Modeler, StartsInTheLanguageThatItIsTold) {
  ProductRun run("modeler", "-langde");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  EXPECT_TRUE(waitForDocument(window, "Ereignisse"));
}

} // namespace
