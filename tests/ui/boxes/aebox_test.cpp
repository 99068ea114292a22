// Error boxes that run: answers, focus, memory, suppression, pointer, application window.
#include "acmdline.hpp"
#include "support/imports/import_spy.hpp"
#include "ui/boxes/boxtest.hpp"

#include <map>

namespace {

using boxtest::Box;
using boxtest::Parts;

class ErrorBoxTest : public boxtest::BoxTest {
protected:
  static bool isEnabled(HWND window) { return IsWindowEnabled(window) != 0; }
};

// Answers

struct Row {
  unsigned long style;
  std::vector<long> results; ///< of the buttons before Help
  std::string mnemonics;     ///< of those that have one
};

Row const kRows[] = {
    {0x10, {1}, ""}, {0x20, {1, 0}, ""}, {0x40, {2, 3}, "yn"}, {0x80, {2, 3, 0}, "yn"}, {0x100, {4, 0}, "r"}};

TEST_F(ErrorBoxTest, GivesTheNumberOfTheButtonThatIsClicked) {
  for (Row const & row : kRows)
    for (std::size_t i = 0; i < row.results.size(); ++i) {
      Box box(nullptr, row.style, "Text");
      EXPECT_EQ(answer(box, ShowAlways, static_cast<int>(i)), row.results[i]) << row.style;
    }
}

TEST_F(ErrorBoxTest, GivesTheNumberOfTheButtonThatIsChosenByItsLetter) {
  for (Row const & row : kRows)
    for (std::size_t i = 0; i < row.mnemonics.size(); ++i) {
      Box box(nullptr, row.style, "Text");
      script->mnemonic(row.mnemonics[i]);
      EXPECT_EQ(box.Execute(ShowAlways), row.results[i]) << row.style;
    }
}

TEST_F(ErrorBoxTest, GivesTheNumberOfTheButtonThatHasTheKeyboardWithReturnAndSpace) {
  for (Row const & row : kRows)
    for (std::size_t i = 0; i < row.results.size(); ++i)
      for (WPARAM const key : {VK_RETURN, VK_SPACE}) {
        Box box(nullptr, row.style, "Text");
        for (std::size_t steps = 0; steps < i; ++steps)
          script->key(VK_TAB);
        script->key(key);
        EXPECT_EQ(box.Execute(ShowAlways), row.results[i]) << row.style << ", " << key;
      }
}

TEST_F(ErrorBoxTest, GivesTheNumberOfItsDefaultButtonWithReturn) {
  struct {
    unsigned long style;
    long result;
  } const rows[] = {{0x10 | 0x200, 1},  {0x20 | 0x200, 1},  {0x20 | 0x400, 0},  {0x40 | 0x1000, 2},
                    {0x40 | 0x2000, 3}, {0x80 | 0x2000, 3}, {0x80 | 0x400, 0},  {0x100 | 0x800, 4},
                    {0x100 | 0x400, 0}, {0x40 | 0x200, 2},  {0x10 | 0x2000, 1}, {0x80 | 0x1000, 2}};
  for (auto const & row : rows) {
    Box box(nullptr, row.style, "Text");
    script->key(VK_RETURN);
    EXPECT_EQ(box.Execute(ShowAlways), row.result) << std::hex << row.style;
  }
}

TEST_F(ErrorBoxTest, BeginsWithTheFirstEnabledButtonWhenItsDefaultButtonIsDisabled) {
  Box box(nullptr, KivErrorBox::WB_YES_NO_CANCEL | KivErrorBox::WB_DEF_NO, "Text");
  box.DisableButton(3);
  box.DisableButton(2);
  script->then([&] { EXPECT_EQ(GetFocus(), Parts(box).buttons[2]); }).key(VK_RETURN);
  EXPECT_EQ(box.Execute(ShowAlways), 0);
}

TEST_F(ErrorBoxTest, Gives0ForEscapeAndTheCloseBoxInEveryStyle) {
  for (unsigned long const style : {0x0ul, 0x10ul, 0x20ul, 0x40ul, 0x80ul, 0x100ul}) {
    Box box(nullptr, style, "Text");
    script->key(VK_ESCAPE);
    EXPECT_EQ(box.Execute(ShowAlways), 0) << style;
    script->then([&] { PostMessageA(box.GethWnd(), WM_SYSCOMMAND, SC_CLOSE, 0); });
    EXPECT_EQ(box.Execute(ShowAlways), 0) << style;
  }
}

TEST_F(ErrorBoxTest, WithoutButtonsIsEndedByItsCloseBoxAlone) {
  Box box(nullptr, 0, "Text");
  script->key(VK_RETURN).key(VK_SPACE).key(VK_LEFT).key(VK_RIGHT).key(VK_TAB).then([&] {
    EXPECT_TRUE(box.IsInExecute());
    SendMessageA(box.GethWnd(), WM_CLOSE, 0, 0);
  });
  EXPECT_EQ(box.Execute(ShowAlways), 0);
  EXPECT_EQ(box.GetNextFocusCtrl(), nullptr);
  EXPECT_EQ(box.GetPrevFocusCtrl(), nullptr);
}

TEST_F(ErrorBoxTest, CannotBeAnsweredByADisabledButton) {
  Box box(nullptr, KivErrorBox::WB_OK_CANCEL, "Text");
  box.DisableButton(1);
  script->then([&] { svtest::postClick(Parts(box).buttons[0]); }).then([&] {
    EXPECT_TRUE(box.IsInExecute());
    box.EndDialog(7);
  });
  EXPECT_EQ(box.Execute(ShowAlways), 7);
}

TEST_F(ErrorBoxTest, StartsTheHelpOfItsKeyAndStaysOpen) {
  boxtest::CountingHelp help;
  SV::Application::ChangeHelp(&help);
  Box box(nullptr, KivErrorBox::WB_OK, "[aebox-01]\nText");
  script->then([&] { svtest::postClick(Parts(box).buttons[1]); }).then([&] {
    EXPECT_EQ(help.topics, (std::vector<unsigned long>{12201}));
    EXPECT_TRUE(box.IsInExecute());
    box.EndDialog(0);
  });
  box.Execute(ShowAlways);
}

TEST_F(ErrorBoxTest, ReportsThatTheButtonOfAnotherBoxWasPressed) {
  char program[] = "test";
  char option[] = "-assert";
  char * arguments[] = {program, option, nullptr};
  KivCmdline::init(2, arguments, true, "");
  Box box(nullptr, KivErrorBox::WB_OK, "Text");
  Box other(nullptr, KivErrorBox::WB_OK, "Text");
  SV::PushButton stranger(&other);
  std::string shown;
  support::spyOnImport("SV0105.dll", "MessageBoxA", [&](support::SpiedCall const & call) { shown = call.text(1); });
  for (SV::PushButton * const button : {&stranger, static_cast<SV::PushButton *>(nullptr)}) {
    script->then([] { PostMessageA(FindWindowA("#32770", "Assertion failed"), WM_COMMAND, IDOK, 0); });
    box.ClickHdl(button);
    EXPECT_NE(shown.find("File aebox.cpp line 1:"), std::string::npos) << shown;
    shown.clear();
  }
  SV::Application::SetModalDialogSuppression(true);
  box.ClickHdl(&stranger);
  EXPECT_TRUE(shown.empty());
}

TEST_F(ErrorBoxTest, SoundsLikeAnError) {
  std::vector<UINT> sounds;
  ASSERT_TRUE(support::spyOnImport("SV0105.dll", "MessageBeep", [&](support::SpiedCall const & call) {
    sounds.push_back(static_cast<UINT>(call.arguments[0]));
  }));
  Box box(nullptr, KivErrorBox::WB_OK, "Text");
  answer(box, ShowAlways, 0);
  EXPECT_EQ(sounds, (std::vector<UINT>{MB_ICONHAND}));
}

// Focus

class BoxFocus : public ErrorBoxTest {
protected:
  /// The place of the button that has the keyboard.
  static int focused(Box const & box) {
    std::vector<HWND> const buttons = Parts(box).buttons;
    auto const place = std::find(buttons.begin(), buttons.end(), GetFocus());
    return place == buttons.end() ? -1 : static_cast<int>(place - buttons.begin());
  }

  /// Presses an arrow again and again; the places where the keyboard has been, with the first one.
  std::vector<int> walk(Box & box, WPARAM key, int steps) {
    std::vector<int> places;
    script->then([&] { places.push_back(focused(box)); });
    for (int i = 0; i < steps; ++i)
      script->key(key).then([&] { places.push_back(focused(box)); });
    script->then([&] { box.EndDialog(0); });
    box.Execute(ShowAlways);
    return places;
  }

  boxtest::CountingHelp help;
};

TEST_F(BoxFocus, GoesRoundThroughHelpByTheArrowKeys) {
  SV::Application::ChangeHelp(&help);
  Box box(nullptr, KivErrorBox::WB_YES_NO_CANCEL, "Text");
  EXPECT_EQ(walk(box, VK_RIGHT, 5), (std::vector<int>{0, 1, 2, 3, 0, 1}));
  Box again(nullptr, KivErrorBox::WB_YES_NO_CANCEL, "Text");
  EXPECT_EQ(walk(again, VK_LEFT, 5), (std::vector<int>{0, 3, 2, 1, 0, 3}));
}

TEST_F(BoxFocus, PassesOverDisabledButtonsBothWays) {
  SV::Application::ChangeHelp(&help);
  Box box(nullptr, KivErrorBox::WB_YES_NO_CANCEL, "Text");
  box.DisableButton(3);
  EXPECT_EQ(walk(box, VK_RIGHT, 3), (std::vector<int>{0, 2, 3, 0}));
  Box again(nullptr, KivErrorBox::WB_YES_NO_CANCEL, "Text");
  again.DisableButton(3);
  EXPECT_EQ(walk(again, VK_LEFT, 3), (std::vector<int>{0, 3, 2, 0}));
}

TEST_F(BoxFocus, PassesOverHelpWhereThereIsNone) {
  Box box(nullptr, KivErrorBox::WB_OK_CANCEL, "Text");
  EXPECT_EQ(walk(box, VK_RIGHT, 3), (std::vector<int>{0, 1, 0, 1}));
}

TEST_F(BoxFocus, StaysOnTheOnlyEnabledButton) {
  Box box(nullptr, KivErrorBox::WB_OK, "Text");
  EXPECT_EQ(walk(box, VK_RIGHT, 2), (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(box.GetNextFocusCtrl(), box.GetPrevFocusCtrl());
}

TEST_F(BoxFocus, IsFollowedWhenTabMovesIt) {
  Box box(nullptr, KivErrorBox::WB_YES_NO_CANCEL, "Text");
  std::vector<int> places;
  script->key(VK_TAB).key(VK_RIGHT).then([&] {
    places.push_back(focused(box));
    box.EndDialog(0);
  });
  box.Execute(ShowAlways);
  EXPECT_EQ(places, (std::vector<int>{2}));
}

TEST_F(BoxFocus, KeyIsDealtWithWhateverItDoes) {
  Box box(nullptr, KivErrorBox::WB_OK, "Text");
  SV::Accelerator accelerator;
  EXPECT_EQ(box.AccelHandler(&accelerator), -1) << "no item";
}

TEST_F(BoxFocus, WalkBeginsAtTheEndsWhenNoButtonHasHadTheKeyboard) {
  Box box(nullptr, KivErrorBox::WB_YES_NO_CANCEL, "Text");
  EXPECT_EQ(box.GetNextFocusCtrl()->GethWnd(), Parts(box).buttons[0]);
  EXPECT_EQ(box.GetPrevFocusCtrl()->GethWnd(), Parts(box).buttons[2]) << "Help is disabled";
}

TEST_F(BoxFocus, IsThatOfTheDisplaysOwnKeysToo) {
  Box box(nullptr, KivErrorBox::WB_YES_NO, "Text");
  auto const isInFront = [&] { return GetForegroundWindow() == box.GethWnd(); };
  script->then([&] { SetForegroundWindow(box.GethWnd()); });
  for (int i = 0; i < 10; ++i)
    script->then([] {}); // the display needs its time
  script->then([&] {
    EXPECT_TRUE(isInFront());
    svtest::pressKeys({VK_RIGHT});
  });
  for (int i = 0; i < 10; ++i)
    script->then([] {});
  script->then([] { svtest::pressKeys({VK_RETURN}); });
  EXPECT_EQ(box.Execute(ShowAlways), 3);
}

// The memory of messages

class BoxMemory : public ErrorBoxTest {
protected:
  /// Whether the box was shown.
  bool shows(char const * text, KivErrorBoxType type) {
    Box box(nullptr, KivErrorBox::WB_OK, text);
    std::size_t const before = shownCount;
    script->then([&] {
      if (box.IsInExecute()) {
        ++shownCount;
        box.EndDialog(1);
      }
    });
    long const result = box.Execute(type);
    if (shownCount == before)
      play();
    EXPECT_EQ(result, shownCount > before ? 1 : 0x10);
    return shownCount > before;
  }

  std::size_t shownCount = 0;
};

TEST_F(BoxMemory, OfKeysShowsEachKeyOnce) {
  EXPECT_TRUE(shows("[a-01]\nfirst", ShowOncePerKey));
  EXPECT_FALSE(shows("[a-01]\nfirst", ShowOncePerKey));
  EXPECT_FALSE(shows("[a-01]\nsecond", ShowOncePerKey));
  EXPECT_TRUE(shows("[a-02]\nfirst", ShowOncePerKey));
}

TEST_F(BoxMemory, OfKeysShowsOnlyTheFirstTextWithoutABracket) {
  EXPECT_TRUE(shows("first", ShowOncePerKey));
  EXPECT_FALSE(shows("second", ShowOncePerKey));
}

TEST_F(BoxMemory, OfTextsShowsEachTextOnce) {
  EXPECT_TRUE(shows("[a-01]\nfirst", ShowOncePerText));
  EXPECT_FALSE(shows("[a-01]\nfirst", ShowOncePerText));
  EXPECT_TRUE(shows("[a-02]\nfirst", ShowOncePerText));
}

TEST_F(BoxMemory, OfTextsShowsASecondTextOfAKeyEveryTime) {
  EXPECT_TRUE(shows("[a-01]\nfirst", ShowOncePerText));
  EXPECT_TRUE(shows("[a-01]\nsecond", ShowOncePerText));
  EXPECT_TRUE(shows("[a-01]\nsecond", ShowOncePerText));
}

TEST_F(BoxMemory, OfNothingShowsAndRemembersNothing) {
  EXPECT_TRUE(shows("[a-01]\nfirst", ShowAlways));
  EXPECT_TRUE(shows("[a-01]\nfirst", ShowAlways));
  EXPECT_TRUE(shows("[a-01]\nfirst", ShowOncePerKey));
  EXPECT_TRUE(shows("[a-01]\nfirst", ShowAlways));
}

TEST_F(BoxMemory, KnowsWhatACallerRemembers) {
  KivErrorBox::RememberMessage("[a-01]\nfirst");
  EXPECT_FALSE(shows("[a-01]\nsecond", ShowOncePerKey));
  EXPECT_FALSE(shows("[a-01]\nfirst", ShowOncePerText));
}

TEST_F(BoxMemory, DoesNotKnowATextByThatOfACallerWhenItIsShownInAnotherWay) {
  KivErrorBox::RememberMessage("[a-01]\nwith ~");
  EXPECT_TRUE(shows("[a-01]\nwith ~", ShowOncePerText)) << "it is shown with two";
  EXPECT_FALSE(shows("[a-01]\nwith ~", ShowOncePerKey)) << "the key is the same";
}

TEST_F(BoxMemory, DoesNotKnowAKeyThatWasWrappedByThatOfACaller) {
  std::string key = "[";
  for (int i = 0; i < 200; ++i)
    key += "word ";
  key += "-01]";
  KivErrorBox::RememberMessage((key + "\ntext").c_str());
  EXPECT_TRUE(shows((key + "\ntext").c_str(), ShowOncePerKey)) << "a newline has taken the place of its space";
  EXPECT_FALSE(shows((key + "\nother").c_str(), ShowOncePerKey)) << "this one was wrapped in the same way";
}

TEST_F(BoxMemory, IsAskedBeforeAnythingIsShownAndLeavesThePointer) {
  KivErrorBox::RememberMessage("[a-01]\nfirst");
  SV::Application::Wait(3);
  Box box(nullptr, KivErrorBox::WB_OK, "[a-01]\nfirst");
  EXPECT_EQ(box.Execute(ShowOncePerKey), 0x10);
  EXPECT_EQ(SV::Application::IsWait(), 3);
}

TEST_F(BoxMemory, MakesNoSoundForWhatIsNotShown) {
  bool sounded = false;
  ASSERT_TRUE(support::spyOnImport("SV0105.dll", "MessageBeep", [&](support::SpiedCall const &) { sounded = true; }));
  KivErrorBox::RememberMessage("[a-01]\nfirst");
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "[a-01]\nfirst").Execute(ShowOncePerKey), 0x10);
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "[a-01]\nfirst").Execute(ShowOncePerText), 0x10);
  SV::Application::SetModalDialogSuppression(true);
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "Text").Execute(ShowAlways), 0);
  EXPECT_FALSE(sounded);
}

TEST_F(BoxMemory, HasTheTextAsItWasShown) {
  EXPECT_TRUE(shows("[a-01]\nwith ~", ShowOncePerText));
  EXPECT_EQ(KivErrorBox::IsShownMessage("[a-01]\nwith ~", ShowOncePerText), 0);
  EXPECT_EQ(KivErrorBox::IsShownMessage("[a-01]\nwith ~~", ShowOncePerText), 1);
  EXPECT_EQ(KivErrorBox::IsShownMessage("[a-01]", ShowOncePerKey), 1);
}

// Suppression

class SuppressedBox : public ErrorBoxTest {
protected:
  SuppressedBox() {
    SV::Application::SetModalDialogSuppression(true);
    SV::Application::SetModalDialogSuppressionLogfileName("dialogs.txt");
  }
  static std::string log() { return support::readFile("dialogs.txt").value_or("no file"); }
};

TEST_F(SuppressedBox, IsALineOfItsTitleAndOneOfItsText) {
  SV::Window parent(nullptr, SV::WB_TITLE);
  parent.SetText("Models");
  Box box(&parent, KivErrorBox::WB_YES_NO, "[a-01]\nThe file ~1\tis damaged.\n\n");
  EXPECT_EQ(box.Execute(ShowAlways), 0);
  EXPECT_EQ(log(), "KivErrorBox::Execute()\r\nModels\r\n[a-01]\r\nThe file ~~1 is damaged.\r\n");
  EXPECT_TRUE(visibleTopLevelWindows().empty());
}

TEST_F(SuppressedBox, IsNothingWhenTheLogHasNoName) {
  SV::Application::SetModalDialogSuppressionLogfileName("");
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "Text").Execute(ShowAlways), 0);
  EXPECT_EQ(log(), "no file");
}

TEST_F(SuppressedBox, IsNotRememberedAndIsLoggedEachTime) {
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "x]").Execute(ShowOncePerKey), 0);
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "x]").Execute(ShowOncePerKey), 0);
  EXPECT_EQ(log(), "KivErrorBox::Execute()\r\nKIVARA\r\nx]\r\nKivErrorBox::Execute()\r\nKIVARA\r\nx]\r\n");
  EXPECT_EQ(KivErrorBox::IsShownMessage("x]", ShowOncePerKey), 0);
  KivErrorBox::RememberMessage("x]");
  EXPECT_EQ(Box(nullptr, KivErrorBox::WB_OK, "x]").Execute(ShowOncePerKey), 0) << "suppression comes first";
}

TEST_F(SuppressedBox, OfTheToolkitIsALineOfItsTitleAndOneOfItsText) {
  SV::Window parent(nullptr, SV::WB_TITLE);
  parent.SetText("Models");
  EXPECT_EQ(KivInfoBox(&parent, "Saved.").Execute(), 0);
  EXPECT_EQ(log(), "Models\r\nSaved.\r\n");
  EXPECT_EQ(KivQueryBox(&parent, SV::WB_YES_NO, "Save?").Execute(), 0);
  EXPECT_EQ(log(), "Models\r\nSaved.\r\nModels\r\nSave?\r\n");
  EXPECT_EQ(KivWarningBox(&parent, SV::WB_OK, "Old.").Execute(), 0);
  EXPECT_EQ(log(), "Models\r\nSaved.\r\nModels\r\nSave?\r\nModels\r\nOld.\r\n");
}

// The pointer and the application window

TEST_F(ErrorBoxTest, HasTheOrdinaryPointerAndBringsTheWaitPointerBack) {
  SV::Application::Wait(5);
  Box box(nullptr, KivErrorBox::WB_OK, "Text");
  EXPECT_EQ(SV::Application::IsWait(), 5);
  script->then([&] {
    EXPECT_EQ(SV::Application::IsWait(), 0);
    SV::Application::Wait(2); // what happens meanwhile does not count
    box.EndDialog(1);
  });
  box.Execute(ShowAlways);
  EXPECT_EQ(SV::Application::IsWait(), 5);
}

class BoxAndAppWindow : public ErrorBoxTest {
protected:
  BoxAndAppWindow() { SV::Application::SetAppWindow(main.get()); }

  std::unique_ptr<SV::Window> main = std::make_unique<SV::Window>(nullptr, SV::WB_TITLE);
};

TEST_F(BoxAndAppWindow, DisablesItAndGivesItTheKeyboardBack) {
  SV::PushButton button(main.get());
  button.Show();
  main->Show();
  button.GrabFocus();
  ASSERT_EQ(GetFocus(), button.GethWnd());
  Box box(main.get(), KivErrorBox::WB_OK, "Text");
  script->then([&] {
    EXPECT_FALSE(main->IsEnabled());
    svtest::postClick(Parts(box).buttons[0]);
  });
  EXPECT_EQ(box.Execute(ShowAlways), 1);
  EXPECT_TRUE(main->IsEnabled());
  EXPECT_EQ(GetActiveWindow(), main->GethWnd());
  EXPECT_EQ(GetFocus(), button.GethWnd());
}

TEST_F(BoxAndAppWindow, BringsItToTheTopWhenItWasThere) {
  main->Show();
  SV::Window other(nullptr, SV::WB_TITLE);
  other.Show();
  {
    KivAutoAppWindowDisable const guard;
    EXPECT_FALSE(main->IsEnabled());
    other.ToTop();
    EXPECT_EQ(GetActiveWindow(), other.GethWnd());
  }
  EXPECT_TRUE(main->IsEnabled());
  EXPECT_EQ(GetActiveWindow(), main->GethWnd());
}

TEST_F(BoxAndAppWindow, LeavesADialogOverItOnTop) {
  main->Show();
  SV::Dialog dialog(main.get());
  dialog.Show();
  Kiv_PushParentWindow(&dialog);
  {
    KivAutoAppWindowDisable const guard;
    EXPECT_FALSE(main->IsEnabled());
  }
  EXPECT_TRUE(main->IsEnabled());
  EXPECT_EQ(GetActiveWindow(), dialog.GethWnd());
  Kiv_PopParentWindow(&dialog);
}

TEST_F(BoxAndAppWindow, LeavesADisabledOneDisabled) {
  main->Show();
  main->Disable();
  Box box(nullptr, KivErrorBox::WB_OK, "Text");
  EXPECT_EQ(answer(box, ShowAlways, 0), 1);
  EXPECT_FALSE(main->IsEnabled());
}

TEST_F(BoxAndAppWindow, LeavesAHiddenOneHidden) {
  Box box(main.get(), KivErrorBox::WB_OK, "Text");
  script->then([&] {
    EXPECT_FALSE(main->IsEnabled());
    box.EndDialog(1);
  });
  EXPECT_EQ(box.Execute(ShowAlways), 1);
  EXPECT_TRUE(main->IsEnabled());
  EXPECT_FALSE(main->IsVisible());
}

TEST_F(BoxAndAppWindow, NeedsNone) {
  main.reset();
  Box box(nullptr, KivErrorBox::WB_OK, "Text");
  EXPECT_EQ(answer(box, ShowAlways, 0), 1);
}

TEST_F(BoxAndAppWindow, MayLoseItWhileTheBoxIsOpen) {
  main->Show();
  Box box(nullptr, KivErrorBox::WB_OK, "Text");
  script->then([&] {
    main.reset();
    box.EndDialog(1);
  });
  EXPECT_EQ(box.Execute(ShowAlways), 1);
  EXPECT_EQ(SV::Application::GetAppWindow(), nullptr);
}

TEST_F(BoxAndAppWindow, EndsWithItWhenItLiesOverIt) {
  main->Show();
  Box box(main.get(), KivErrorBox::WB_OK, "Text");
  ASSERT_EQ(box.GetParent(), main.get());
  script->then([&] { main.reset(); });
  EXPECT_EQ(box.Execute(ShowAlways), 0);
}

TEST_F(BoxAndAppWindow, EnablesTheOneThatHasTakenItsPlace) {
  main->Show();
  SV::Window next(nullptr, SV::WB_TITLE);
  next.Show();
  {
    KivAutoAppWindowDisable const guard;
    next.Disable();
    SV::Application::SetAppWindow(&next);
  }
  EXPECT_TRUE(next.IsEnabled());
}

// The boxes of the toolkit

TEST_F(ErrorBoxTest, BoxesOfTheToolkitHaveTheOrdinaryPointerAndStandOnTheStack) {
  SV::Application::Wait(2);
  auto const run = [&](auto & box, long result) {
    script->then([&] {
      EXPECT_EQ(SV::Application::IsWait(), 0);
      EXPECT_EQ(Kiv_GetTopWindow(0), &box);
      box.EndDialog(result);
    });
    EXPECT_EQ(box.Execute(), result);
    EXPECT_EQ(SV::Application::IsWait(), 2);
  };
  SV::ResId const id(0x200330E);
  {
    KivInfoBox info(nullptr, "Text");
    run(info, 1);
    KivQueryBox query(nullptr, SV::WB_YES_NO, "Text");
    run(query, 3);
    KivWarningBox warning(nullptr, SV::WB_OK_CANCEL, "Text");
    run(warning, 0);
    KivInfoBox infoOfResource(nullptr, id);
    run(infoOfResource, 1);
    KivQueryBox queryOfResource(nullptr, id);
    run(queryOfResource, 2);
    KivWarningBox warningOfResource(nullptr, id);
    run(warningOfResource, 1);
    EXPECT_STREQ(warningOfResource.GetMessText().c_str(), "~Yes");
  }
  EXPECT_EQ(Kiv_GetTopWindow(0), nullptr);
}

TEST_F(ErrorBoxTest, BoxesOfTheToolkitDoNotUseTheMemory) {
  KivErrorBox::RememberMessage("Text");
  KivInfoBox box(nullptr, "Text");
  script->then([&] { box.EndDialog(1); });
  EXPECT_EQ(box.Execute(), 1);
}

} // namespace
