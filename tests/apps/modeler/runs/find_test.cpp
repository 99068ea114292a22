// The sample product looks for texts in its models.
#include "modeler_run.hpp"

#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace {

constexpr WPARAM kFind = 711;
constexpr WPARAM kFindNext = 712;

enum Kind : WPARAM { kPlain, kWildcards, kExpression };

class ModelerFind : public testing::Test {
protected:
  void start(std::string const & options = "-lang2057") {
    support::writeFile(folder / "model.txt",
                       "process \"M\"\r\nstart a \"Order received\"\r\nactivity b \"Check it\"\r\n"
                       "end c \"Order done\"\r\nflow a b\r\nflow b c\r\n");
    run = std::make_unique<ProductRun>("modeler", options + " -journalout.log \"-model" + folder / "model.txt" + "\"");
    window = modeler::mainWindow(*run);
    ASSERT_TRUE(modeler::waitForDocument(window, "M"));
  }

  void command(WPARAM id) const { PostMessageA(window, WM_COMMAND, id, 0); }

  HWND dialog(std::string const & title = "Find") const {
    return support::waitForWindow({.processId = run->child().processId(), .title = title});
  }

  /// Fills the dialog in and presses its default button.
  void find(std::string const & what, Kind kind, bool isCaseSensitive, std::string const & title = "Find") const {
    command(kFind);
    HWND const asked = dialog(title);
    ASSERT_TRUE(asked);
    for (HWND const child : support::children(asked)) {
      std::string const kindOf = support::windowClass(child);
      if (kindOf == "Edit")
        SendMessageA(child, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(what.c_str()));
      else if (kindOf == "ComboBox")
        SendMessageA(child, CB_SETCURSEL, kind, 0);
      else if (kindOf == "Button" && (GetWindowLongA(child, GWL_STYLE) & BS_TYPEMASK) == BS_AUTOCHECKBOX)
        SendMessageA(child, BM_SETCHECK, isCaseSensitive ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    ASSERT_TRUE(support::pressButton(asked, IDOK));
  }

  /// The lines about searches, once there are so many.
  std::vector<std::string> found(std::size_t count) const {
    std::vector<std::string> lines;
    support::eventually([&] {
      lines.clear();
      for (std::string const & line : linesOf(run->file("out.log").value_or("")))
        if (std::size_t const place = line.find("found: "); place != std::string::npos)
          lines.push_back(line.substr(line.find(": ") + 2));
      return lines.size() >= count;
    });
    return lines;
  }

  support::TempFolder folder;
  std::unique_ptr<ProductRun> run;
  HWND window = nullptr;
};

TEST_F(ModelerFind, GoesFromHitToHitAndRound) {
  ASSERT_NO_FATAL_FAILURE(start());
  ASSERT_NO_FATAL_FAILURE(find("order", kPlain, false));
  ASSERT_EQ(found(1), (std::vector<std::string>{"found: Order received"}));
  command(kFindNext);
  command(kFindNext);
  EXPECT_EQ(found(3),
            (std::vector<std::string>{"found: Order received", "found: Order done", "found: Order received"}));
}

TEST_F(ModelerFind, TakesWildcardsAndExpressionsAndLetterCase) {
  ASSERT_NO_FATAL_FAILURE(start());
  ASSERT_NO_FATAL_FAILURE(find("D?n", kWildcards, false));
  ASSERT_EQ(found(1).size(), 1u);
  ASSERT_NO_FATAL_FAILURE(find("^C.*t$", kExpression, true));
  EXPECT_EQ(found(2), (std::vector<std::string>{"found: Order done", "found: Check it"}));
}

TEST_F(ModelerFind, SaysThatNothingIsFound) {
  ASSERT_NO_FATAL_FAILURE(start());
  ASSERT_NO_FATAL_FAILURE(find("CHECK", kPlain, true));
  EXPECT_EQ(modeler::answerOwnBox(*run, IDOK).texts.back(), "The model has no text in which 'CHECK' is found.");
}

TEST_F(ModelerFind, AnswersAWrongExpressionWithTheLibrarysMessage) {
  ASSERT_NO_FATAL_FAILURE(start("-lang1031"));
  ASSERT_NO_FATAL_FAILURE(find("(a", kExpression, false, "Suchen"));
  std::string const message = modeler::answerOwnBox(*run, IDOK).texts.back();
  EXPECT_TRUE(message.starts_with("[aregex-01]\n")) << message;
}

TEST_F(ModelerFind, FindsNothingWithoutATextAndAsksAgain) {
  ASSERT_NO_FATAL_FAILURE(start());
  command(kFindNext);
  HWND const asked = dialog();
  ASSERT_TRUE(asked);
  EXPECT_FALSE(IsWindowEnabled(support::childById(asked, IDOK)));
  EXPECT_TRUE(support::pressButton(asked, IDCANCEL));
  EXPECT_TRUE(support::closeWindow(window));
  EXPECT_EQ(run->exitCode(), 0u);
}

} // namespace
