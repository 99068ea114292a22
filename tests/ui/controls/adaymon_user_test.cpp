// A day and a month as the user sets them, by keys and mouse.
#include "daymonthtest.hpp"

#include "support/processes/child_process.hpp"

namespace {

using kivtest::DayMonthTest;

// The user

TEST_F(DayMonthTest, DayIsTyped) {
  typeDay("24");
  script->then([this] { EXPECT_EQ(start().GetDay(), 24); });
  typeDay("99");
  script->then([this] { EXPECT_EQ(start().GetDay(), 31); });
  typeDay("0");
  script->then([this] { EXPECT_EQ(start().GetDay(), 1); });
  typeDay("1a7-x.");
  script->then([this] {
    EXPECT_EQ(fieldText(), "17.") << "letters and signs are no part of a day";
    EXPECT_EQ(start().GetDay(), 17);
  });
  run();
}

TEST_F(DayMonthTest, DayBeyondTheMonthThatIsTypedBecomesTheLastOne) {
  script->then([this] { start().SetMonth(3); });
  typeDay("31");
  script
      ->then([this] {
        EXPECT_EQ(fieldText(), "31");
        EXPECT_EQ(start().GetDay(), 30);
      })
      .key(VK_TAB)
      .then([this] { EXPECT_EQ(fieldText(), "30."); });
  run();
}

TEST_F(DayMonthTest, DayIsSteppedByTheButtonsWithinTheMonth) {
  script->then([this] {
    start().SetMonth(1);
    start().SetDay(27);
  });
  pressSpin(true);
  script->then([this] { EXPECT_EQ(start().GetDay(), 28); });
  pressSpin(true);
  script->then([this] { EXPECT_EQ(start().GetDay(), 28); });
  pressSpin(false);
  script->then([this] {
    EXPECT_EQ(start().GetDay(), 27);
    EXPECT_EQ(fieldText(), "27.");
    start().SetDay(1);
  });
  pressSpin(false);
  script->then([this] { EXPECT_EQ(start().GetDay(), 1); });
  run();
}

TEST_F(DayMonthTest, DayIsSteppedOnWhileAButtonIsHeld) {
  dialog->Show();
  RECT area = {};
  GetClientRect(spin(), &area);
  LPARAM const up = MAKELPARAM(area.right / 2, area.bottom / 4);
  SendMessageA(spin(), WM_LBUTTONDOWN, MK_LBUTTON, up);
  EXPECT_TRUE(support::eventually([this] {
    SV::Application::Reschedule();
    return start().GetDay() >= 4;
  }));
  SendMessageA(spin(), WM_LBUTTONUP, 0, up);
}

TEST_F(DayMonthTest, DayIsSteppedByTheArrowKeysAndTheWheel) {
  script->then([this] { SetFocus(field()); }).key(VK_UP).key(VK_UP).key(VK_DOWN).then([this] {
    EXPECT_EQ(start().GetDay(), 2);
    SendMessageA(field(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(start().GetDay(), 3);
    EXPECT_EQ(start().GetMonth(), 0);
  });
  run();
}

TEST_F(DayMonthTest, MonthIsChosenByTheArrowKeys) {
  script->then([this] { SetFocus(list()); }).key(VK_DOWN).then([this] {
    EXPECT_EQ(start().GetMonth(), 1);
    EXPECT_EQ(lastStep(), 28) << "the limit follows at once";
  });
  script->key(VK_DOWN).then([this] {
    EXPECT_EQ(start().GetMonth(), 2);
    EXPECT_EQ(lastStep(), 31);
  });
  script->key(VK_UP).key(VK_UP).key(VK_UP).then([this] { EXPECT_EQ(start().GetMonth(), 0); });
  script->key(VK_END).then([this] { EXPECT_EQ(start().GetMonth(), 11); });
  script->key(VK_HOME).then([this] { EXPECT_EQ(start().GetMonth(), 0); });
  run();
}

TEST_F(DayMonthTest, MonthIsChosenByItsFirstLetter) {
  script
      ->then([this] {
        SetFocus(list());
        PostMessageA(list(), WM_CHAR, 'N', 1);
      })
      .then([this] {
        EXPECT_EQ(start().GetMonth(), 10);
        EXPECT_EQ(lastStep(), 30);
      });
  run();
}

TEST_F(DayMonthTest, MonthIsChosenInTheOpenedListAndEscapeClosesThatAlone) {
  script->then([this] { SetFocus(list()); }).key(VK_F4).then([this] {
    EXPECT_TRUE(SendMessageA(list(), CB_GETDROPPEDSTATE, 0, 0));
  });
  script->key(VK_DOWN).key(VK_RETURN).then([this] {
    EXPECT_FALSE(SendMessageA(list(), CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_EQ(start().GetMonth(), 1);
    EXPECT_EQ(lastStep(), 28);
  });
  script->key(VK_F4).key(VK_ESCAPE).then([this] {
    EXPECT_FALSE(SendMessageA(list(), CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_TRUE(dialog->IsInExecute());
  });
  run();
}

TEST_F(DayMonthTest, MonthIsChosenByTheMouse) {
  script->then([this] { svtest::postClick(list()); })
      .then([this] {
        EXPECT_TRUE(SendMessageA(list(), CB_GETDROPPEDSTATE, 0, 0));
        COMBOBOXINFO info = {};
        info.cbSize = sizeof info;
        ASSERT_TRUE(GetComboBoxInfo(list(), &info));
        auto const height = static_cast<WORD>(SendMessageA(list(), CB_GETITEMHEIGHT, 0, 0));
        LPARAM const third = MAKELPARAM(5, height * 3 + height / 2);
        PostMessageA(info.hwndList, WM_MOUSEMOVE, 0, third);
        PostMessageA(info.hwndList, WM_LBUTTONDOWN, MK_LBUTTON, third);
        PostMessageA(info.hwndList, WM_LBUTTONUP, 0, third);
      })
      .then([this] {
        EXPECT_EQ(start().GetMonth(), 3);
        EXPECT_EQ(lastStep(), 30);
      });
  run();
}

TEST_F(DayMonthTest, OpenedListShowsMonthsBelowItself) {
  script->then([this] { SendMessageA(list(), CB_SHOWDROPDOWN, TRUE, 0); }).then([this] {
    RECT open = {};
    SendMessageA(list(), CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&open));
    LRESULT const line = SendMessageA(list(), CB_GETITEMHEIGHT, 0, 0);
    EXPECT_GE(open.bottom - open.top, 8 * line);
    SendMessageA(list(), CB_SHOWDROPDOWN, FALSE, 0);
  });
  run();
}

TEST_F(DayMonthTest, TabGoesFromTheLabelOverFieldAndListToTheButton) {
  script->then([this] { dialog->ok.GrabFocus(); }).mnemonic('s').then([this] { EXPECT_EQ(GetFocus(), field()); });
  script->key(VK_TAB).then([this] { EXPECT_EQ(GetFocus(), list()); });
  script->key(VK_TAB).then([this] { EXPECT_EQ(GetFocus(), dialog->ok.GethWnd()); });
  script->key(VK_TAB).then([this] { EXPECT_EQ(GetFocus(), field()) << "round again"; });
  run();
}

// Enabled and not

TEST_F(DayMonthTest, DisablesAndEnablesBothWithItself) {
  start().Disable();
  EXPECT_FALSE(IsWindowEnabled(field()));
  EXPECT_FALSE(IsWindowEnabled(spin()));
  EXPECT_FALSE(IsWindowEnabled(list()));
  EXPECT_FALSE(start().IsEnabled());
  start().SetDay(5);
  start().SetMonth(4);
  EXPECT_EQ(start().GetDay(), 5) << "the program still may";
  EXPECT_EQ(start().GetMonth(), 4);
  start().Enable();
  EXPECT_TRUE(IsWindowEnabled(field()));
  EXPECT_TRUE(IsWindowEnabled(spin()));
  EXPECT_TRUE(IsWindowEnabled(list()));
  EXPECT_TRUE(start().IsEnabled());
}

TEST_F(DayMonthTest, DisabledOneHandsTheKeyboardOnAndIsPassedOver) {
  script->then([this] {
    SetFocus(field());
    start().SetEnabled(false);
    EXPECT_EQ(GetFocus(), dialog->ok.GethWnd());
  });
  script->key(VK_TAB).then([this] { EXPECT_EQ(GetFocus(), dialog->ok.GethWnd()); });
  run();
}

} // namespace
