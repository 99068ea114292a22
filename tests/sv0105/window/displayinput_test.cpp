// Dialogs under the keys and the mouse of the display, which reach whatever window is in front.
#include "sv0105/controls/dialogtest.hpp"

#include <chrono>

namespace {

using Condition = std::function<bool()>;

/// Does one step after the other, each as soon as what the one before leads to has come about.
class User {
public:
  explicit User(std::function<void()> giveUp) : giveUp_(std::move(giveUp)) {
    timer_.ChangeTimeoutHdl([this](SV::Timer *) { next(); });
    timer_.Start(kInterval);
  }

  User & does(std::function<void()> action) {
    steps_.push_back({std::move(action), {}, {}});
    return *this;
  }
  User & presses(std::initializer_list<WORD> keys) {
    return does([all = std::vector<WORD>(keys)] { svtest::pressKeys(all); });
  }
  User & sees(std::string what, Condition condition) {
    steps_.push_back({{}, std::move(condition), std::move(what)});
    return *this;
  }

  bool isDone() const { return steps_.empty(); }

private:
  struct Step {
    std::function<void()> action; ///< none: waits for the condition
    Condition condition;
    std::string what;
  };
  using Clock = std::chrono::steady_clock;

  static constexpr unsigned long kInterval = 20;
  static constexpr std::chrono::seconds kPatience{20};

  void next() {
    if (steps_.empty())
      return;
    if (Step & step = steps_.front(); step.condition && !step.condition()) {
      if (Clock::now() - since_ > kPatience)
        fail(step.what);
      return;
    }
    since_ = Clock::now();
    Step const step = std::move(steps_.front());
    steps_.pop_front();
    if (step.action)
      step.action();
  }

  void fail(std::string const & what) {
    ADD_FAILURE() << "still waiting for: " << what;
    steps_.clear();
    giveUp_();
  }

  std::function<void()> giveUp_;
  std::deque<Step> steps_;
  Clock::time_point since_ = Clock::now();
  SV::Timer timer_;
};

/// A list and a field with their labels, and two groups of buttons.
class Order : public SV::ModalDialog {
public:
  Order() : ModalDialog(nullptr) {
    SetText("Order");
    ChangeOutputSizePixel({400, 200});
    phaseLabel.SetText("~Phase");
    lengthLabel.SetText("~Length");
    apply.SetText("~Apply");
    reset.SetText("~Reset");
    for (char const * const entry : {"Draft", "Review", "Released"})
      phase.InsertEntry(entry);
    phase.SelectEntryPos(0);
    length.ChangeUnit(SV::FIELD_UNIT_CUSTOM);
    length.ChangeCustomUnitText(" days");
    length.SetValue(14);
    apply.ChangeClickHdl([this](SV::PushButton *) { ++applied; });
    reset.ChangeClickHdl([this](SV::PushButton *) { ++resets; });
    SV::Control * const controls[] = {&phaseLabel, &phase, &lengthLabel, &length, &apply, &reset, &ok, &cancel};
    for (long i = 0; i < 8; ++i) {
      controls[i]->SetPosSizePixel({10 + 95 * (i % 4), 10 + 90 * (i / 4)}, {85, i == 1 ? 80 : 25});
      controls[i]->Show();
    }
  }

  SV::FixedText phaseLabel{this};
  SV::ListBox phase{this};
  SV::FixedText lengthLabel{this};
  SV::MetricField length{this, SV::WB_BORDER | SV::WB_DIGITS_ONLY};
  SV::PushButton apply{this, SV::WB_GROUP};
  SV::PushButton reset{this};
  SV::OKButton ok{this, SV::WB_GROUP | SV::WB_DEFAULT_BUTTON};
  SV::CancelButton cancel{this};
  int applied = 0;
  int resets = 0;
};

class DisplayInput : public ToolkitTest {
protected:
  DisplayInput() { isReadyIn(order); }
  ~DisplayInput() override { EXPECT_TRUE(user.isDone()) << "the dialog has ended before"; }

  /// The window is in front and stays there for some time: the display gives the keyboard later than the window comes.
  void isReadyIn(SV::Window & window) {
    int calm = 0;
    user.sees("the window in front", [&window, calm]() mutable {
      constexpr int kCalm = 10;
      if (GetForegroundWindow() == window.GethWnd() && GetFocus())
        return ++calm >= kCalm;
      calm = 0;
      if (window.IsVisible())
        SetForegroundWindow(window.GethWnd());
      return false;
    });
  }
  void seesFocus(SV::Window & window) {
    user.sees("the keyboard in " + textOf(window.GetText()), [&] { return GetFocus() == window.GethWnd(); });
  }
  void seesSelected(long position) {
    user.sees("entry " + std::to_string(position),
              [this, position] { return order.phase.GetSelectEntryPos() == position; });
  }
  void seesLength(std::string const & text) {
    user.sees(text, [this, text] { return textOf(order.length.GetText()) == text; });
  }
  void seesCount(std::string const & what, int const & count) {
    user.sees(what, [&count] { return count == 1; });
  }
  long execute() { return order.Execute(); }
  /// For what does not end the dialog.
  void play() {
    user.does([this] { order.EndDialog(kEnd); });
    EXPECT_EQ(execute(), kEnd);
  }

  static constexpr long kEnd = 99;

  Order order;
  User user{[this] { order.EndDialog(); }};
};

TEST_F(DisplayInput, TabGoesThroughTheControlsAndBackWithShift) {
  seesFocus(order.phase);
  SV::Control * const controls[] = {&order.length, &order.apply, &order.reset, &order.ok, &order.cancel, &order.phase};
  for (SV::Control * const control : controls) {
    user.presses({VK_TAB});
    seesFocus(*control);
  }
  for (SV::Control * const control :
       {static_cast<SV::Control *>(&order.cancel), static_cast<SV::Control *>(&order.ok)}) {
    user.presses({VK_SHIFT, VK_TAB});
    seesFocus(*control);
  }
  play();
}

TEST_F(DisplayInput, ReturnPressesTheDefaultButtonFromWhereverTheKeyboardIs) {
  user.presses({VK_TAB});
  seesFocus(order.length);
  user.presses({VK_RETURN});
  EXPECT_EQ(execute(), SV::RET_OK);
}

TEST_F(DisplayInput, ReturnPressesTheButtonThatHasTheKeyboard) {
  user.presses({VK_TAB}).presses({VK_TAB});
  seesFocus(order.apply);
  user.presses({VK_RETURN});
  seesCount("a click", order.applied);
  play();
}

TEST_F(DisplayInput, EscapeCancels) {
  user.presses({VK_TAB});
  seesFocus(order.length);
  user.presses({VK_ESCAPE});
  // As wide as RET_CANCEL is that of a dialog that was given up; its button says more.
  bool isPressed = false;
  order.cancel.ChangeClickHdl([&](SV::PushButton *) {
    isPressed = true;
    order.EndDialog(SV::RET_CANCEL);
  });
  EXPECT_EQ(execute(), SV::RET_CANCEL);
  EXPECT_TRUE(isPressed);
}

TEST_F(DisplayInput, MnemonicWithAltPressesAButton) {
  user.presses({VK_MENU, 'R'});
  seesCount("a click", order.resets);
  play();
  EXPECT_EQ(order.applied, 0);
}

TEST_F(DisplayInput, MnemonicWithAltOfALabelLeadsToItsControl) {
  user.presses({VK_MENU, 'L'});
  seesFocus(order.length);
  user.presses({VK_MENU, 'P'});
  seesFocus(order.phase);
  play();
}

TEST_F(DisplayInput, ArrowKeysSelectInAList) {
  std::vector<long> reported;
  order.phase.ChangeSelectHdl([&](SV::ListBox * list) { reported.push_back(list->GetSelectEntryPos()); });
  user.presses({VK_DOWN});
  seesSelected(1);
  user.presses({VK_DOWN});
  seesSelected(2);
  user.presses({VK_UP});
  seesSelected(1);
  play();
  EXPECT_EQ(reported, (std::vector<long>{1, 2, 1}));
}

TEST_F(DisplayInput, ArrowKeysMoveWithinAGroupOfButtons) {
  user.presses({VK_MENU, 'L'});
  seesFocus(order.length);
  user.presses({VK_TAB});
  seesFocus(order.apply);
  user.presses({VK_RIGHT});
  seesFocus(order.reset);
  user.presses({VK_RIGHT});
  seesFocus(order.apply);
  play();
  EXPECT_EQ(order.applied + order.resets, 0);
}

TEST_F(DisplayInput, DigitsTypedIntoANumberFieldReplaceItsValueAndLettersAreRefused) {
  user.presses({VK_TAB});
  seesFocus(order.length);
  user.presses({'3'}).presses({'X'}).presses({'0'});
  seesLength("30");
  user.presses({VK_TAB});
  seesLength("30 days");
  play();
  EXPECT_EQ(order.length.GetValue(), 30);
}

TEST_F(DisplayInput, ArrowKeysStepANumberField) {
  user.presses({VK_TAB});
  seesFocus(order.length);
  user.presses({VK_UP});
  seesLength("15 days");
  user.presses({VK_DOWN}).presses({VK_DOWN});
  seesLength("13 days");
  play();
}

TEST_F(DisplayInput, AcceleratorWithControlComesBeforeTheControl) {
  int pressed = 0;
  SV::Accelerator accelerator;
  accelerator.InsertItem(1, SV::KEY_CONTROL | (SV::KEY_A + ('S' - 'A')));
  accelerator.PushSelectHdl([&](SV::Accelerator *) { return ++pressed; });
  SV::Application::InsertAccel(&accelerator, SV::ACCEL_WITH_DIALOG);
  user.presses({VK_CONTROL, 'S'});
  seesCount("the key", pressed);
  play();
}

TEST_F(DisplayInput, EscapeClosesTheBoxInFrontAndTheKeyboardReturns) {
  SV::QueryBox box(&order, SV::WB_YES_NO | SV::WB_DEF_NO, "Delete the order?");
  long answer = -1;
  order.apply.ChangeClickHdl([&](SV::PushButton *) { answer = box.Execute(); });
  user.presses({VK_MENU, 'A'});
  isReadyIn(box);
  user.presses({VK_ESCAPE}).sees("the end of the box", [&] { return answer != -1; });
  seesFocus(order.apply);
  play();
  EXPECT_EQ(answer, SV::RET_CANCEL);
}

TEST_F(DisplayInput, KeysChooseInAnOpenMenu) {
  SV::PopupMenu menu;
  menu.InsertItem(11, "~First");
  menu.InsertItem(12, "~Second");
  unsigned short chosen = 0;
  order.apply.ChangeClickHdl([&](SV::PushButton *) { chosen = menu.Execute({300, 300}); });
  user.presses({VK_MENU, 'A'});
  user.sees("the menu", [] {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & GUI_INMENUMODE) != 0;
  });
  user.presses({VK_DOWN}).presses({VK_DOWN}).presses({VK_RETURN}).sees("a choice", [&] { return chosen != 0; });
  play();
  EXPECT_EQ(chosen, 12);
}

TEST_F(DisplayInput, ClickPressesAButtonAndGivesItTheKeyboard) {
  user.does([this] {
    SV::Point const middle = order.reset.OutputToScreenPixel({40, 12});
    SetCursorPos(middle.x, middle.y);
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
  });
  seesFocus(order.reset);
  seesCount("a click", order.resets);
  play();
}

} // namespace
