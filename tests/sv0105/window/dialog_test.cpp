#include "sv0105/controls/dialogtest.hpp"
#include "sv0105/gdicount.hpp"

#include "support/data/files.hpp"

#include <stdexcept>

namespace {

using SV::Window;
using svtest::Question;

class ModalDialog : public svtest::DialogTest {};

// Its end

TEST_F(ModalDialog, RunsUntilEndDialogAndGivesItsResult) {
  Question question(nullptr);
  script->then([&] {
    EXPECT_TRUE(question.IsVisible());
    EXPECT_TRUE(question.IsInExecute());
    question.EndDialog(4711);
    EXPECT_FALSE(question.IsInExecute());
  });
  EXPECT_EQ(question.Execute(), 4711);
  EXPECT_FALSE(question.IsVisible());
  EXPECT_TRUE(IsWindow(question.GethWnd()));
}

TEST_F(ModalDialog, CanBeExecutedAgain) {
  Question question(nullptr);
  for (long result : {1L, -1L, 0x7FFFFFFFL}) {
    script->then([&, result] { question.EndDialog(result); });
    EXPECT_EQ(question.Execute(), result);
  }
}

TEST_F(ModalDialog, DoesNotRunTwiceAtATime) {
  Question question(nullptr);
  long inner = -1;
  script->then([&] {
    inner = question.Execute();
    question.EndDialog(5);
  });
  EXPECT_EQ(question.Execute(), 5);
  EXPECT_EQ(inner, 0);
}

TEST_F(ModalDialog, EndedBeforeItRunsStillRuns) {
  Question question(nullptr);
  question.EndDialog(9);
  script->then([&] { question.EndDialog(1); });
  EXPECT_EQ(question.Execute(), 1);
}

TEST_F(ModalDialog, EndsWithTheResultsOfItsStandardButtons) {
  Question question(nullptr);
  script->then([&] { svtest::postClick(question.ok.GethWnd()); });
  EXPECT_EQ(question.Execute(), SV::RET_OK);
  script->then([&] { svtest::postClick(question.cancel.GethWnd()); });
  EXPECT_EQ(question.Execute(), SV::RET_CANCEL);
}

TEST_F(ModalDialog, IsClosedByItsTitleBarWith0) {
  Question question(nullptr);
  script->then([&] { PostMessageA(question.GethWnd(), WM_SYSCOMMAND, SC_CLOSE, 0); });
  EXPECT_EQ(question.Execute(), 0);
  EXPECT_TRUE(IsWindow(question.GethWnd())) << "it only ends";
}

TEST_F(ModalDialog, ThatDoesNotRunIsClosedForGood) {
  Question question(nullptr);
  question.Show();
  SendMessageA(question.GethWnd(), WM_CLOSE, 0, 0);
  EXPECT_EQ(question.GethWnd(), nullptr);
  EXPECT_EQ(question.Execute(), 0);
}

TEST_F(ModalDialog, EndsAtOnceThoughTheOrderDoesNotComeOutOfTheQueue) {
  Question question(nullptr);
  HANDLE const thread = CreateThread(
      nullptr, 0,
      [](void * window) -> DWORD {
        Sleep(200);
        SendMessageA(static_cast<HWND>(window), WM_CLOSE, 0, 0);
        return 0;
      },
      question.GethWnd(), 0, nullptr);
  EXPECT_EQ(question.Execute(), 0);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

TEST_F(ModalDialog, LeavesAQuitToTheLoopOutside) {
  Question question(nullptr);
  script->then([] { SV::Application::Quit(33); });
  EXPECT_EQ(question.Execute(), 0);
  EXPECT_FALSE(question.IsInExecute());
  EXPECT_FALSE(question.IsVisible());
  EXPECT_EQ(SV::Application::Execute(), 33);
}

TEST_F(ModalDialog, EndsWithItsParent) {
  auto parent = std::make_unique<Window>(nullptr, SV::WB_TITLE);
  parent->Show();
  Question question(parent.get());
  script->then([&] { parent.reset(); });
  EXPECT_EQ(question.Execute(), 0);
  EXPECT_EQ(question.GethWnd(), nullptr);
}

TEST_F(ModalDialog, MayDieInItsOwnHandler) {
  auto question = std::make_unique<Question>(nullptr);
  question->first.ChangeClickHdl([&](SV::PushButton *) { question.reset(); });
  script->then([&] { svtest::postClick(question->first.GethWnd()); });
  EXPECT_EQ(question->Execute(), 0);
  EXPECT_EQ(question, nullptr);
}

TEST_F(ModalDialog, GoesOnAfterAnExceptionInAHandler) {
  Question question(nullptr);
  question.first.ChangeClickHdl([](SV::PushButton *) { throw std::runtime_error("click"); });
  script->then([&] { svtest::postClick(question.first.GethWnd()); });
  script->then([&] { svtest::postClick(question.second.GethWnd()); });
  EXPECT_EQ(question.Execute(), 22);
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, SV::EXC_HANDLER_FAILED);
}

TEST_F(ModalDialog, KeepsNothingOfTheSystemsAfterIt) {
  svtest::countGdiObjects();
  for (int i = 0; i < 3; ++i) {
    Question question(nullptr);
    script->then([&] { question.EndDialog(1); });
    question.Execute();
  }
  EXPECT_EQ(svtest::gdiObjects(), 0);
}

// Suppression

class SuppressedDialog : public ModalDialog {
protected:
  SuppressedDialog() { SV::Application::SetModalDialogSuppressionLogfileName("dialogs.txt"); }
};

TEST_F(SuppressedDialog, IsNotShownAndNamedInTheLog) {
  SV::Application::SetModalDialogSuppression(true);
  Question question(nullptr);
  EXPECT_EQ(question.Execute(), 0);
  EXPECT_TRUE(visibleTopLevelWindows().empty());
  EXPECT_EQ(support::readFile("dialogs.txt").value_or(""), "Question\r\n");
}

TEST_F(SuppressedDialog, IsNotWaitedForWhereNoWindowIsShown) {
  SV::Application::SetShowWindowSuppression(true);
  Question question(nullptr);
  EXPECT_EQ(question.Execute(), 0);
  EXPECT_EQ(support::readFile("dialogs.txt").value_or(""), "Question\r\n");
}

// Other windows

TEST_F(ModalDialog, LeavesNoOtherWindowEnabledWhileItRuns) {
  Window main(nullptr, SV::WB_TITLE);
  Window tool(&main, SV::WB_TITLE);
  Window other(nullptr, SV::WB_TITLE);
  Window disabled(nullptr, SV::WB_TITLE);
  for (Window * window : {&main, &tool, &other, &disabled})
    window->Show();
  disabled.Disable();
  Question question(&main);
  Window ownTool(&question, SV::WB_TITLE);
  script->then([&] {
    EXPECT_FALSE(main.IsEnabled());
    EXPECT_FALSE(tool.IsEnabled());
    EXPECT_FALSE(other.IsEnabled());
    EXPECT_TRUE(question.IsEnabled());
    ownTool.Show();
    EXPECT_TRUE(ownTool.IsEnabled());
    question.EndDialog();
  });
  question.Execute();
  EXPECT_TRUE(main.IsEnabled());
  EXPECT_TRUE(tool.IsEnabled());
  EXPECT_TRUE(other.IsEnabled());
  EXPECT_FALSE(disabled.IsEnabled()) << "as it was before";
}

TEST_F(ModalDialog, MayOpenAnotherOne) {
  Window main(nullptr, SV::WB_TITLE);
  main.Show();
  Question outer(&main);
  Question inner(&outer);
  script->then([&] {
    script->then([&] {
      EXPECT_FALSE(main.IsEnabled());
      EXPECT_FALSE(outer.IsEnabled());
      EXPECT_TRUE(inner.IsEnabled()) << "though it was there, hidden, when the other one began";
      inner.EndDialog(2);
    });
    EXPECT_EQ(inner.Execute(), 2);
    EXPECT_TRUE(outer.IsEnabled());
    EXPECT_FALSE(main.IsEnabled());
    outer.EndDialog(1);
  });
  EXPECT_EQ(outer.Execute(), 1);
  EXPECT_TRUE(main.IsEnabled());
}

TEST_F(ModalDialog, GivesTheKeyboardBackToTheControlThatHadIt) {
  Window main(nullptr, SV::WB_TITLE);
  SV::PushButton first(&main);
  SV::PushButton second(&main);
  main.Show();
  first.Show();
  second.Show();
  second.GrabFocus();
  ASSERT_EQ(GetFocus(), second.GethWnd());
  Question question(&main);
  script->then([&] {
    EXPECT_EQ(GetFocus(), question.first.GethWnd());
    question.EndDialog();
  });
  question.Execute();
  EXPECT_EQ(GetFocus(), second.GethWnd());
  EXPECT_EQ(GetActiveWindow(), main.GethWnd());
}

TEST_F(ModalDialog, TakesTheMouseFromWhoHasCapturedIt) {
  class Dragging : public Window {
  public:
    using Window::Window;
    void CaptureLost() override { ++losses; }
    int losses = 0;
  };
  Dragging main(nullptr, SV::WB_TITLE);
  main.Show();
  main.CaptureMouse();
  ASSERT_EQ(GetCapture(), main.GethWnd());
  Question question(&main);
  script->then([&] {
    EXPECT_EQ(GetCapture(), nullptr);
    question.EndDialog();
  });
  question.Execute();
  EXPECT_EQ(main.losses, 1);
}

TEST_F(ModalDialog, KeepsTheKeysOfTheMdiFrameFromClosingADocument) {
  SV::MDIFrame frame("Frame");
  SV::MDIChild child(frame, "Child");
  frame.Show();
  child.Show();
  Question question(&frame);
  script->then([&] {
    svtest::HeldKeys const held{VK_CONTROL};
    PostMessageA(GetFocus(), WM_KEYDOWN, VK_F4, 1);
    SV::Application::Reschedule();
  });
  script->then([&] { question.EndDialog(3); });
  EXPECT_EQ(question.Execute(), 3);
  EXPECT_NE(child.GethWnd(), nullptr);
}

// Keyboard

TEST_F(ModalDialog, GivesTheKeyboardToItsFirstControl) {
  Question question(nullptr);
  question.first.Disable();
  script->then([&] {
    EXPECT_EQ(GetFocus(), question.second.GethWnd());
    question.EndDialog();
  });
  question.Execute();
}

TEST_F(ModalDialog, GivesTheKeyboardToTheControlThatAskedForItBefore) {
  Question question(nullptr);
  question.cancel.GrabFocus();
  script->then([&] {
    EXPECT_EQ(GetFocus(), question.cancel.GethWnd());
    question.first.GrabFocus();
    EXPECT_EQ(GetFocus(), question.first.GethWnd());
    question.EndDialog();
  });
  question.Execute();
}

TEST_F(ModalDialog, TabGoesRoundThroughTheControls) {
  Question question(nullptr);
  question.second.Hide();
  question.ok.Disable();
  std::vector<HWND> order;
  for (int i = 0; i < 3; ++i)
    script->then([&] { order.push_back(GetFocus()); }).key(VK_TAB);
  script->then([&] {
    EXPECT_EQ(order, (std::vector{question.first.GethWnd(), question.cancel.GethWnd(), question.first.GethWnd()}));
    svtest::HeldKeys const held{VK_SHIFT};
    question.first.GrabFocus();
    svtest::postKey(VK_TAB);
    SV::Application::Reschedule();
    EXPECT_EQ(GetFocus(), question.cancel.GethWnd());
    question.EndDialog();
  });
  question.Execute();
}

TEST_F(ModalDialog, ArrowKeysMoveWithinAGroup) {
  class Groups : public SV::ModalDialog {
  public:
    Groups() : ModalDialog(nullptr) {
      for (SV::Control * control : {&a, &b, &c}) {
        control->SetPosSizePixel({0, 0}, {20, 20});
        control->Show();
      }
    }
    SV::PushButton a{this, SV::WB_GROUP};
    SV::PushButton b{this};
    SV::PushButton c{this, SV::WB_GROUP};
  } groups;
  script->key(VK_RIGHT).then([&] { EXPECT_EQ(GetFocus(), groups.b.GethWnd()); });
  script->key(VK_DOWN).then([&] { EXPECT_EQ(GetFocus(), groups.a.GethWnd()) << "not into the next group"; });
  script->key(VK_LEFT).then([&] {
    EXPECT_EQ(GetFocus(), groups.b.GethWnd());
    groups.EndDialog();
  });
  groups.Execute();
}

TEST_F(ModalDialog, ReturnPressesTheDefaultButtonAndTheOneThatHasTheKeyboard) {
  class Pair : public SV::ModalDialog {
  public:
    Pair() : ModalDialog(nullptr) {
      for (SV::Control * control : std::initializer_list<SV::Control *>{&list, &yes, &no}) {
        control->SetPosSizePixel({0, 0}, {20, 20});
        control->Show();
      }
      yes.ChangeClickHdl([this](SV::PushButton *) { EndDialog(SV::RET_YES); });
      no.ChangeClickHdl([this](SV::PushButton *) { EndDialog(SV::RET_NO); });
    }
    SV::ListBox list{this};
    SV::PushButton yes{this};
    SV::PushButton no{this, SV::WB_DEFAULT_BUTTON};
  } pair;
  script->key(VK_RETURN);
  EXPECT_EQ(pair.Execute(), SV::RET_NO);
  pair.yes.GrabFocus();
  script->key(VK_RETURN);
  EXPECT_EQ(pair.Execute(), SV::RET_YES);
}

TEST_F(ModalDialog, DefaultButtonHasItsFormInAPlainWindowToo) {
  SV::Window window(nullptr, SV::WB_TITLE);
  SV::PushButton const plain(&window);
  SV::PushButton const chosen(&window, SV::WB_DEFAULT_BUTTON);
  EXPECT_EQ(GetWindowLongA(plain.GethWnd(), GWL_STYLE) & BS_TYPEMASK, BS_PUSHBUTTON);
  EXPECT_EQ(GetWindowLongA(chosen.GethWnd(), GWL_STYLE) & BS_TYPEMASK, BS_DEFPUSHBUTTON);
}

TEST_F(ModalDialog, ReturnDoesNotPressADisabledButton) {
  Question question(nullptr);
  SV::ListBox list(&question);
  list.Show();
  list.GrabFocus();
  question.ok.Disable();
  script->key(VK_RETURN).then([&] { question.EndDialog(9); });
  EXPECT_EQ(question.Execute(), 9);
}

TEST_F(ModalDialog, EscapePressesCancel) {
  Question question(nullptr);
  int cancels = 0;
  question.cancel.ChangeClickHdl([&](SV::PushButton *) {
    ++cancels;
    question.EndDialog(8);
  });
  script->key(VK_ESCAPE);
  EXPECT_EQ(question.Execute(), 8);
  EXPECT_EQ(cancels, 1);
}

TEST_F(ModalDialog, EscapeDoesNothingWhileCancelIsDisabled) {
  Question question(nullptr);
  question.cancel.Disable();
  script->key(VK_ESCAPE).then([&] {
    EXPECT_TRUE(question.IsVisible());
    question.EndDialog(7);
  });
  EXPECT_EQ(question.Execute(), 7);
}

TEST_F(ModalDialog, EscapeClosesOneWithoutControls) {
  SV::ModalDialog empty(nullptr);
  script->key(VK_ESCAPE);
  EXPECT_EQ(empty.Execute(), 0);
  EXPECT_TRUE(script->isDone());
}

TEST_F(ModalDialog, EscapeDoesNothingWhereNothingCloses) {
  SV::ModalDialog endless(nullptr, SV::WB_DIALOG_TITLE);
  script->key(VK_ESCAPE).then([&] { endless.EndDialog(6); });
  EXPECT_EQ(endless.Execute(), 6);
}

TEST_F(ModalDialog, AltWithTheMnemonicPressesAButton) {
  Question question(nullptr);
  script->mnemonic('f').mnemonic('S');
  EXPECT_EQ(question.Execute(), 22);
  EXPECT_EQ(question.firstClicks, 1);
}

TEST_F(ModalDialog, ControlThatIsDisabledOrHiddenHandsTheKeyboardOn) {
  Question question(nullptr);
  script->then([&] {
    question.first.Disable();
    EXPECT_EQ(GetFocus(), question.second.GethWnd());
    question.second.Hide();
    EXPECT_EQ(GetFocus(), question.ok.GethWnd());
    question.EndDialog();
  });
  question.Execute();
}

// Its place and its frame

class DialogPlace : public svtest::DialogTest {
protected:
  static RECT rectangleOf(Window const & window) {
    RECT rect = {};
    GetWindowRect(window.GethWnd(), &rect);
    return rect;
  }

  static RECT screen() {
    RECT area = {};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    return area;
  }

  static void expectWithin(RECT const & inner, RECT const & outer) {
    EXPECT_GE(inner.left, outer.left);
    EXPECT_GE(inner.top, outer.top);
    EXPECT_LE(inner.right, outer.right);
    EXPECT_LE(inner.bottom, outer.bottom);
  }
};

TEST_F(DialogPlace, IsTheMiddleOfTheParent) {
  Window parent(nullptr, SV::WB_TITLE);
  parent.SetPosSizePixel({200, 100}, {600, 500});
  parent.Show();
  SV::Dialog dialog(&parent);
  dialog.ChangeOutputSizePixel({200, 100});
  dialog.Show();
  SV::Size const size = dialog.GetSizePixel();
  EXPECT_EQ(dialog.GetPosPixel(), (SV::Point{200 + (600 - size.width) / 2, 100 + (500 - size.height) / 2}));
}

TEST_F(DialogPlace, IsTheMiddleOfTheWholeWindowThatAParentLiesIn) {
  Window frame(nullptr, SV::WB_TITLE);
  frame.SetPosSizePixel({200, 100}, {600, 500});
  Window inner(&frame);
  inner.SetPosSizePixel({0, 0}, {50, 50});
  frame.Show();
  inner.Show();
  SV::Dialog dialog(&inner);
  dialog.ChangeOutputSizePixel({200, 100});
  dialog.Show();
  EXPECT_EQ(dialog.GetPosPixel().x, 200 + (600 - dialog.GetSizePixel().width) / 2);
  EXPECT_EQ(GetWindow(dialog.GethWnd(), GW_OWNER), frame.GethWnd());
}

TEST_F(DialogPlace, IsTheMiddleOfTheScreenWithoutAParentThatIsSeen) {
  Window hidden(nullptr, SV::WB_TITLE);
  hidden.SetPosSizePixel({0, 0}, {100, 100});
  for (Window * parent : {static_cast<Window *>(nullptr), &hidden}) {
    SV::Dialog dialog(parent);
    dialog.ChangeOutputSizePixel({200, 100});
    dialog.Show();
    RECT const area = screen();
    EXPECT_NEAR(dialog.GetPosPixel().x, (area.left + area.right - dialog.GetSizePixel().width) / 2, 1);
    EXPECT_NEAR(dialog.GetPosPixel().y, (area.top + area.bottom - dialog.GetSizePixel().height) / 2, 1);
  }
}

TEST_F(DialogPlace, LiesInsideOfTheScreenWhereverTheParentIs) {
  for (SV::Point corner : {SV::Point{-300, -200}, SV::Point{5000, 5000}}) {
    Window parent(nullptr, SV::WB_TITLE);
    parent.SetPosSizePixel(corner, {320, 240});
    parent.Show();
    SV::Dialog dialog(&parent);
    dialog.ChangeOutputSizePixel({200, 100});
    dialog.Show();
    expectWithin(rectangleOf(dialog), screen());
  }
}

TEST_F(DialogPlace, OfOneThatIsTooLargeShowsItsTitle) {
  SV::Dialog dialog(nullptr);
  dialog.ChangeOutputSizePixel({5000, 4000});
  dialog.Show();
  EXPECT_EQ(dialog.GetPosPixel(), (SV::Point{screen().left, screen().top}));
}

TEST_F(DialogPlace, IsTheOneThatTheProgramHasChosen) {
  SV::Dialog dialog(nullptr);
  dialog.SetPosSizePixel({33, 44}, {300, 200});
  dialog.Show();
  EXPECT_EQ(dialog.GetPosPixel(), (SV::Point{33, 44}));
  SV::Dialog outside(nullptr);
  outside.SetPosSizePixel({-500, 44}, {300, 200});
  outside.Show();
  EXPECT_EQ(outside.GetPosPixel(), (SV::Point{screen().left, 44}));
}

TEST_F(DialogPlace, FollowsTheParentAtEachExecution) {
  Window parent(nullptr, SV::WB_TITLE);
  parent.SetPosSizePixel({0, 0}, {600, 500});
  parent.Show();
  Question question(&parent);
  script->then([&] { question.EndDialog(); });
  question.Execute();
  long const before = question.GetPosPixel().x;
  parent.SetPosSizePixel({100, 0}, {600, 500});
  script->then([&] { question.EndDialog(); });
  question.Execute();
  EXPECT_EQ(question.GetPosPixel().x, before + 100);
}

TEST_F(DialogPlace, IsInsideAFrameOfItsStyle) {
  auto const styleOf = [](SV::WinBits bits) {
    SV::Dialog const dialog(nullptr, bits);
    return GetWindowLongPtrA(dialog.GethWnd(), GWL_STYLE) &
           (WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | WS_THICKFRAME | WS_MAXIMIZEBOX);
  };
  EXPECT_EQ(SV::WB_DIALOG, 0x124u);
  EXPECT_EQ(styleOf(0x124), WS_CAPTION | WS_SYSMENU | DS_MODALFRAME);
  EXPECT_EQ(styleOf(0x4), WS_CAPTION);
  EXPECT_EQ(styleOf(0x100), DS_MODALFRAME);
  EXPECT_EQ(styleOf(0), 0);
}

// Not modal

class ModelessDialog : public svtest::DialogTest {};

TEST_F(ModelessDialog, HasItsKeysInTheOrdinaryLoop) {
  class Tool : public SV::Dialog {
  public:
    Tool() : Dialog(nullptr) {
      for (SV::Control * control : {&a, &b}) {
        control->SetPosSizePixel({0, 0}, {20, 20});
        control->Show();
      }
      b.ChangeClickHdl([this](SV::PushButton *) { ++clicks; });
    }
    SV::PushButton a{this};
    SV::PushButton b{this};
    int clicks = 0;
  } tool;
  tool.Show();
  script->key(VK_TAB).then([&] { EXPECT_EQ(GetFocus(), tool.b.GethWnd()); }).key(VK_RETURN);
  script->then([&] { EXPECT_EQ(tool.clicks, 1); }).key(VK_ESCAPE);
  play();
  EXPECT_EQ(tool.GethWnd(), nullptr) << "Escape closes it";
}

TEST_F(ModelessDialog, IsClosedByItsStandardButtons) {
  SV::Dialog dialog(nullptr);
  SV::OKButton ok(&dialog);
  ok.SetPosSizePixel({0, 0}, {60, 25});
  ok.Show();
  dialog.Show();
  SendMessageA(ok.GethWnd(), BM_CLICK, 0, 0);
  EXPECT_EQ(dialog.GethWnd(), nullptr);
  EXPECT_EQ(ok.GethWnd(), nullptr);
}

TEST_F(ModelessDialog, HasNothingToDoWithKeysOfOtherWindows) {
  SV::Dialog dialog(nullptr);
  SV::PushButton first(&dialog);
  SV::PushButton second(&dialog);
  first.Show();
  second.Show();
  dialog.Show();
  Window other(nullptr, SV::WB_TITLE);
  other.Show();
  other.GrabFocus();
  script->key(VK_TAB).then([&] { EXPECT_EQ(GetFocus(), other.GethWnd()); });
  play();
}

} // namespace
