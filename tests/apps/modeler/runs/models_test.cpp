// Process models and languages of the sample product.
#include "modeler_run.hpp"

#include "support/windows/pixels.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <utility>

namespace {

using modeler::answerFileDialog;
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

std::string const kTimedModel = "process \"Timed\"\r\ndate \"2024:03:05\"\r\nKalender 220 7.5 # working time\r\n"
                                "start a \"A\"\r\nactivity b \"B\" duration \"00:001:07:00:00\"\r\n"
                                "activity c \"C\" Dauer 45\r\nend d \"D\"\r\n"
                                "flow a b\r\nflow b d\r\nflow a c\r\nflow c d\r\n";

/// The journal of a run that has opened the model.
std::string journalOf(std::string const & content, std::string const & options) {
  support::TempFolder const folder;
  support::writeFile(folder / "model.txt", content);
  ProductRun run("modeler", options + "\"-model" + folder / "model.txt" + "\" -no_windows -journalout.log");
  EXPECT_EQ(run.exitCode(), 0u);
  return run.file("out.log").value_or("");
}

// A day has 7.5 hours here: 1 day and 7 hours are 14.5 hours.
TEST(Modeler, AddsUpTheTimesOfEachPathInTheModelsCalendar) {
  std::string const journal = journalOf(kTimedModel, "");
  EXPECT_NE(journal.find("a > b > d: 00:001:07:00:00\r\n"), std::string::npos) << journal;
  EXPECT_NE(journal.find("a > c > d: 00:000:00:45:00\r\n"), std::string::npos) << journal;
}

TEST(Modeler, ShowsTheDateOfAModelInItsLanguage) {
  std::string const english = journalOf(kTimedModel, "");
  EXPECT_NE(english.find("Tuesday, 05 March 2024\r\n"), std::string::npos) << english;
  std::string const german = journalOf(kTimedModel, "-langde ");
  EXPECT_NE(german.find("Dienstag, 05. M\xE4rz 2024\r\n"), std::string::npos) << german;
}

TEST(Modeler, ShowsMinutesWhereAModelHasNothingElse) {
  std::string const model = "process \"P\"\r\nstart a \"A\" duration 50\r\nend b \"B\" duration 70\r\nflow a b\r\n";
  std::string const english = journalOf(model, "");
  EXPECT_NE(english.find("a > b: 120 min\r\n"), std::string::npos) << english;
  std::string const german = journalOf(model, "-langde ");
  EXPECT_NE(german.find("a > b: 120 Min.\r\n"), std::string::npos) << german;
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

/// What the window shows when its process has drawn all of it.
support::Pixels drawn(HWND window) {
  support::Pixels pixels = support::readWindow(window);
  EXPECT_TRUE(support::eventually([&] {
    support::Pixels const before = std::exchange(pixels, support::readWindow(window));
    return before == pixels;
  }));
  return pixels;
}

TEST(Modeler, DrawsAModelAnewInAnotherLanguage) {
  ProductRun run("modeler", "");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  HWND const document = openSample(window);
  ASSERT_TRUE(document);
  support::Pixels const english = drawn(document);
  PostMessageA(window, WM_COMMAND, kGerman, 0);
  EXPECT_TRUE(support::eventually([&] { return support::readWindow(document) != english; }));
  PostMessageA(window, WM_COMMAND, kEnglish, 0);
  EXPECT_TRUE(support::eventually([&] { return support::readWindow(document) == english; }));
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

// Titles show the language: the texts of a menu cannot be read from another process.
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

TEST(Modeler, StartsInTheLanguageOfTheOption) {
  ProductRun run("modeler", "-langde");
  HWND const window = mainWindow(run);
  ASSERT_TRUE(window);
  PostMessageA(window, WM_COMMAND, kShowEvents, 0);
  EXPECT_TRUE(waitForDocument(window, "Ereignisse"));
}

} // namespace
