// Activities of the sample product that are dragged, and copied, to its start window.
#include "modeler_run.hpp"

#include "support/windows/pixels.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

#include <optional>

namespace {

using modeler::documentOf;
using modeler::mainWindow;

constexpr WPARAM kCopy = 131;
constexpr WPARAM kPaste = 132;
constexpr WPARAM kTile = 203;
constexpr char kModel[] = "process \"M\"\r\nstart a \"Begin\"\r\nactivity b \"First\"\r\ndecision c \"Which\"\r\n"
                          "activity d \"Second\"\r\nflow a b\r\nflow b c\r\nflow c d\r\n";

/// The program with a model, whose window and start window lie side by side.
class ModelerDrag : public testing::Test {
protected:
  void start(std::string const & model, std::string const & options, std::string const & startTitle) {
    support::writeFile(folder / "model.txt", model);
    run = std::make_unique<ProductRun>("modeler", options + " \"-model" + folder / "model.txt" + "\" -journalout.log");
    window = mainWindow(*run);
    ASSERT_TRUE(window);
    document = documentOf(window, "M");
    facts = documentOf(window, startTitle);
    ASSERT_TRUE(document);
    ASSERT_TRUE(facts);
    SendMessageA(window, WM_COMMAND, kTile, 0);
    activate();
  }
  void start() { start(kModel, "-lang2057", "Start"); }

  void activate() const { SendMessageA(GetParent(document), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(document), 0); }
  void command(WPARAM id) const { SendMessageA(window, WM_COMMAND, id, 0); }
  void key(WPARAM code) const { SendMessageA(document, WM_KEYDOWN, code, 1); }

  std::string journal() const { return run->file("out.log").value_or(""); }
  bool takes(std::string const & text) const {
    return support::eventually([&] { return journal().find("taken: " + text + "\r\n") != std::string::npos; });
  }

  /// Where on the screen the first activity is, by its colour.
  std::optional<POINT> activity() const {
    constexpr support::Pixel kFill = 0xF7EBDC;
    std::optional<POINT> found;
    support::eventually([&] {
      support::Pixels const picture = support::readWindow(document);
      for (int y = 0; y < picture.height() && !found; ++y)
        for (int x = 0; x < picture.width() && !found; ++x)
          if (picture.at(x, y) == kFill)
            found = POINT{x, y + 2};
      return found.has_value();
    });
    if (found)
      ClientToScreen(document, &*found);
    return found;
  }

  POINT middleOfStart() const {
    RECT const area = support::clientRectangle(facts);
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
  }

  static LPARAM place(HWND in, POINT point) {
    ScreenToClient(in, &point);
    return MAKELPARAM(point.x, point.y);
  }

  /// From the activity over the start window, with the messages of the mouse; the button stays down.
  void drag(POINT const & from) const {
    SendMessageA(document, WM_LBUTTONDOWN, MK_LBUTTON, place(document, from));
    SendMessageA(document, WM_MOUSEMOVE, MK_LBUTTON, place(document, {from.x + 20, from.y}));
    SendMessageA(document, WM_MOUSEMOVE, MK_LBUTTON, place(document, middleOfStart()));
  }
  void drop() const { SendMessageA(document, WM_LBUTTONUP, 0, place(document, middleOfStart())); }

  /// What the program says in a box, which is closed.
  std::string boxText() const {
    std::vector<std::string> const texts = modeler::answerOwnBox(*run, IDOK).texts;
    return texts.empty() ? "no box" : texts.back();
  }

  HWND capture() const {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) ? info.hwndCapture : nullptr;
  }

  support::TempFolder folder;
  std::unique_ptr<ProductRun> run;
  HWND window = nullptr;
  HWND document = nullptr;
  HWND facts = nullptr;
};

TEST_F(ModelerDrag, DropsAnActivityOnTheStartWindowWhichShowsIt) {
  ASSERT_NO_FATAL_FAILURE(start());
  std::optional<POINT> const from = activity();
  ASSERT_TRUE(from);
  support::Pixels const before = support::readWindow(facts);
  drag(*from);
  EXPECT_EQ(capture(), document);
  drop();
  EXPECT_TRUE(takes("First"));
  EXPECT_EQ(capture(), nullptr);
  EXPECT_TRUE(support::eventually([&] { return !(support::readWindow(facts) == before); }));
}

TEST_F(ModelerDrag, AClickSelectsAndDragsNothing) {
  ASSERT_NO_FATAL_FAILURE(start());
  std::optional<POINT> const from = activity();
  ASSERT_TRUE(from);
  support::Pixels const before = support::readWindow(document);
  SendMessageA(document, WM_LBUTTONDOWN, MK_LBUTTON, place(document, *from));
  SendMessageA(document, WM_MOUSEMOVE, MK_LBUTTON, place(document, {from->x + 1, from->y}));
  EXPECT_EQ(capture(), nullptr);
  SendMessageA(document, WM_LBUTTONUP, 0, place(document, *from));
  EXPECT_TRUE(support::eventually([&] { return !(support::readWindow(document) == before); })) << "it has a frame";
  drop();
  EXPECT_EQ(journal().find("taken"), std::string::npos);
}

TEST_F(ModelerDrag, EscapeEndsIt) {
  ASSERT_NO_FATAL_FAILURE(start());
  std::optional<POINT> const from = activity();
  ASSERT_TRUE(from);
  drag(*from);
  key(VK_ESCAPE);
  EXPECT_EQ(capture(), nullptr);
  drop();
  EXPECT_EQ(journal().find("taken"), std::string::npos);
}

TEST_F(ModelerDrag, DropsNothingOnTheModelItself) {
  ASSERT_NO_FATAL_FAILURE(start());
  std::optional<POINT> const from = activity();
  ASSERT_TRUE(from);
  drag(*from);
  SendMessageA(document, WM_LBUTTONUP, 0, place(document, *from));
  EXPECT_EQ(capture(), nullptr);
  EXPECT_EQ(journal().find("taken"), std::string::npos);
}

TEST_F(ModelerDrag, DragsNothingFromBesideTheActivities) {
  ASSERT_NO_FATAL_FAILURE(start());
  POINT corner = {1, 1};
  ClientToScreen(document, &corner);
  drag(corner);
  EXPECT_EQ(capture(), nullptr);
  drop();
  EXPECT_EQ(journal().find("taken"), std::string::npos);
}

TEST_F(ModelerDrag, EndsWithTheWindowOfTheModel) {
  ASSERT_NO_FATAL_FAILURE(start());
  std::optional<POINT> const from = activity();
  ASSERT_TRUE(from);
  drag(*from);
  SendMessageA(document, WM_CLOSE, 0, 0);
  EXPECT_EQ(capture(), nullptr);
  PostMessageA(window, WM_COMMAND, kPaste, 0);
  EXPECT_EQ(boxText(), "No activity has been copied: select one by Tab, and copy it.");
}

// By keyboard

TEST_F(ModelerDrag, CopiesTheFirstActivityWhenNoneIsSelected) {
  ASSERT_NO_FATAL_FAILURE(start());
  command(kCopy);
  command(kPaste);
  EXPECT_TRUE(takes("First"));
}

TEST_F(ModelerDrag, CopiesTheActivityThatTabSelects) {
  ASSERT_NO_FATAL_FAILURE(start());
  key(VK_TAB);
  key(VK_TAB); // over the decision
  command(kCopy);
  command(kPaste);
  EXPECT_TRUE(takes("Second"));
  activate();
  key(VK_TAB); // from the last to the first
  command(kCopy);
  command(kPaste);
  EXPECT_TRUE(takes("First"));
}

TEST_F(ModelerDrag, PastesIntoAStartWindowThatHasBeenClosed) {
  ASSERT_NO_FATAL_FAILURE(start());
  command(kCopy);
  SendMessageA(facts, WM_CLOSE, 0, 0);
  command(kPaste);
  EXPECT_TRUE(takes("First"));
  EXPECT_TRUE(documentOf(window, "Start"));
}

TEST_F(ModelerDrag, PastesOnceWhatHasBeenCopied) {
  ASSERT_NO_FATAL_FAILURE(start());
  command(kCopy);
  command(kPaste);
  PostMessageA(window, WM_COMMAND, kPaste, 0);
  EXPECT_EQ(boxText(), "No activity has been copied: select one by Tab, and copy it.");
}

TEST_F(ModelerDrag, EscapeForgetsWhatHasBeenCopied) {
  ASSERT_NO_FATAL_FAILURE(start());
  command(kCopy);
  key(VK_ESCAPE);
  PostMessageA(window, WM_COMMAND, kPaste, 0);
  modeler::answerOwnBox(*run, IDOK);
  EXPECT_EQ(journal().find("taken"), std::string::npos);
}

TEST_F(ModelerDrag, SaysInGermanThatNothingHasBeenCopied) {
  ASSERT_NO_FATAL_FAILURE(start(kModel, "-lang1031", "Start"));
  PostMessageA(window, WM_COMMAND, kPaste, 0);
  EXPECT_EQ(boxText(), "Es wurde keine Aktivit\xE4t kopiert: eine mit Tab ausw\xE4hlen und kopieren.");
}

TEST_F(ModelerDrag, SaysThatThereIsNoActivityOrNoModel) {
  ASSERT_NO_FATAL_FAILURE(start("process \"M\"\r\nstart a \"Begin\"\r\n", "-lang2057", "Start"));
  key(VK_TAB);
  PostMessageA(window, WM_COMMAND, kCopy, 0);
  EXPECT_EQ(boxText(), "The model has no activity.");
  SendMessageA(GetParent(facts), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(facts), 0);
  PostMessageA(window, WM_COMMAND, kCopy, 0);
  EXPECT_EQ(boxText(), "No process model is in front: open one first.");
}

} // namespace
