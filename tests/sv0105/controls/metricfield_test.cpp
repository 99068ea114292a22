#include "support/processes/child_process.hpp"
#include "sv0105/controls/dialogtest.hpp"

#include <commctrl.h>

#include <climits>

namespace {

/// A dialog with a field for a day of a month, made as a program makes it.
class DayDialog : public SV::ModalDialog {
public:
  explicit DayDialog(SV::WinBits style = 0x4C11) : ModalDialog(nullptr), day(this, style), ok(this) {
    day.ChangeFirst(1);
    day.ChangeMin(1);
    day.ChangeLast(31);
    day.ChangeMax(31);
    day.ChangeUnit(SV::FieldUnit(0xB));
    day.ChangeCustomUnitText(".");
    day.SetValue(1);
    day.ChangeModifyHdl([this](SV::MetricField *) { ++changes; });
    day.SetPosSizePixel({10, 10}, {80, 24});
    ok.SetPosSizePixel({10, 50}, {80, 24});
    day.Show();
    ok.Show();
  }

  SV::MetricField day;
  SV::OKButton ok;
  int changes = 0;
};

class MetricField : public svtest::DialogTest {
protected:
  static HWND spinOf(SV::MetricField const & field) {
    return FindWindowExA(field.GethWnd(), nullptr, "msctls_updown32", nullptr);
  }

  static void type(SV::MetricField & field, char const * text) {
    SendMessageA(field.GethWnd(), EM_SETSEL, 0, -1);
    for (; *text; ++text)
      SendMessageA(field.GethWnd(), WM_CHAR, static_cast<WPARAM>(static_cast<unsigned char>(*text)), 1);
  }

  static LPARAM placeInSpin(HWND spin, bool up) {
    RECT area;
    GetClientRect(spin, &area);
    return MAKELPARAM(area.right / 2, up ? area.bottom / 4 : area.bottom * 3 / 4);
  }

  static void pressSpin(SV::MetricField const & field, bool up) {
    HWND const spin = spinOf(field);
    SendMessageA(spin, WM_LBUTTONDOWN, MK_LBUTTON, placeInSpin(spin, up));
    SendMessageA(spin, WM_LBUTTONUP, 0, placeInSpin(spin, up));
  }

  /// Holds the upper button until the field has that value, or for so long.
  static bool holdUp(SV::MetricField const & field, long value, double seconds) {
    HWND const spin = spinOf(field);
    SendMessageA(spin, WM_LBUTTONDOWN, MK_LBUTTON, placeInSpin(spin, true));
    bool const reached = support::eventually(
        [&] {
          Application::Reschedule();
          return field.GetValue() >= value;
        },
        seconds);
    SendMessageA(spin, WM_LBUTTONUP, 0, placeInSpin(spin, true));
    return reached;
  }
};

/// With which the system is asked to paint a field.
COLORREF colourOf(SV::MetricField const & field) {
  HDC const device = GetDC(field.GethWnd());
  auto const brush = reinterpret_cast<HBRUSH>(SendMessageA(GetParent(field.GethWnd()), WM_CTLCOLOREDIT,
                                                           reinterpret_cast<WPARAM>(device),
                                                           reinterpret_cast<LPARAM>(field.GethWnd())));
  COLORREF const ofDevice = GetDCBrushColor(device);
  ReleaseDC(field.GethWnd(), device);
  LOGBRUSH facts = {};
  GetObjectA(brush, sizeof facts, &facts);
  return brush == GetStockObject(DC_BRUSH) ? ofDevice : facts.lbColor;
}

TEST_F(MetricField, HasTheColourOfItsBrushAndThatOfTheSystemWithoutOne) {
  DayDialog dialog;
  ASSERT_NE(GetSysColor(COLOR_WINDOW), 0u) << "as of no brush";
  EXPECT_EQ(colourOf(dialog.day), GetSysColor(COLOR_WINDOW));
  dialog.day.ChangeBackgroundBrush(SV::Brush(SV::COL_RED));
  EXPECT_EQ(colourOf(dialog.day), SV::Color(SV::COL_RED).GetRGB());
}

TEST_F(MetricField, ShowsItsValueFollowedByTheUnit) {
  DayDialog dialog;
  EXPECT_STREQ(dialog.day.GetText().c_str(), "1.");
  dialog.day.SetValue(17);
  EXPECT_STREQ(dialog.day.GetText().c_str(), "17.");
  EXPECT_EQ(dialog.day.GetValue(), 17);
  EXPECT_STREQ(dialog.day.ChangeCustomUnitText(" d\xE4g").c_str(), ".");
  EXPECT_STREQ(dialog.day.GetText().c_str(), "17 d\xE4g");
  EXPECT_EQ(dialog.day.ChangeUnit(SV::FIELD_UNIT_NONE), SV::FIELD_UNIT_CUSTOM);
  EXPECT_STREQ(dialog.day.GetText().c_str(), "17");
  EXPECT_EQ(dialog.changes, 0) << "the program's own changes are not the user's";
}

TEST_F(MetricField, KeepsValuesWithinMinimumAndMaximum) {
  DayDialog dialog;
  dialog.day.SetValue(32);
  EXPECT_EQ(dialog.day.GetValue(), 31);
  EXPECT_STREQ(dialog.day.GetText().c_str(), "31.");
  dialog.day.SetValue(LONG_MIN);
  EXPECT_EQ(dialog.day.GetValue(), 1);
}

TEST_F(MetricField, LeavesItsTextWhenTheMaximumDropsUntilItLosesTheKeyboard) {
  DayDialog dialog;
  dialog.day.SetValue(31);
  script->then([&] {
    EXPECT_EQ(dialog.day.ChangeMax(28), 31);
    EXPECT_STREQ(dialog.day.GetText().c_str(), "31.");
    EXPECT_EQ(dialog.day.GetValue(), 28);
    dialog.ok.GrabFocus();
    EXPECT_STREQ(dialog.day.GetText().c_str(), "28.");
    dialog.EndDialog();
  });
  dialog.Execute();
}

TEST_F(MetricField, IsSteppedByItsButtonsAndStopsAtTheLimits) {
  DayDialog dialog;
  script->then([&] {
    pressSpin(dialog.day, true);
    EXPECT_EQ(dialog.day.GetValue(), 2);
    pressSpin(dialog.day, false);
    pressSpin(dialog.day, false);
    EXPECT_EQ(dialog.day.GetValue(), 1);
    dialog.day.SetValue(31);
    pressSpin(dialog.day, true);
    EXPECT_EQ(dialog.day.GetValue(), 31);
    EXPECT_EQ(dialog.changes, 2);
    dialog.EndDialog();
  });
  dialog.Execute();
}

TEST_F(MetricField, IsSteppedByTheArrowKeysAndTheWheel) {
  DayDialog dialog;
  script->key(VK_UP).key(VK_UP).key(VK_DOWN).then([&] {
    EXPECT_EQ(dialog.day.GetValue(), 2);
    SendMessageA(dialog.day.GethWnd(), WM_MOUSEWHEEL, MAKEWPARAM(0, 3 * WHEEL_DELTA), 0);
    EXPECT_EQ(dialog.day.GetValue(), 3);
    SendMessageA(dialog.day.GethWnd(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    EXPECT_EQ(dialog.day.GetValue(), 2);
    dialog.EndDialog();
  });
  dialog.Execute();
  EXPECT_EQ(dialog.changes, 5);
}

TEST_F(MetricField, IsSteppedByOneHoweverLongAButtonIsHeld) {
  DayDialog const dialog;
  UDACCEL steps[4] = {};
  ASSERT_EQ(SendMessageA(spinOf(dialog.day), UDM_GETACCEL, 4, reinterpret_cast<LPARAM>(steps)), 1);
  EXPECT_EQ(steps[0].nSec, 0u);
  EXPECT_EQ(steps[0].nInc, 1u);
}

TEST_F(MetricField, IsSteppedOnWhileAButtonIsHeld) {
  DayDialog dialog;
  dialog.Show();
  EXPECT_TRUE(holdUp(dialog.day, 4, support::kTimeLimit));
}

TEST_F(MetricField, WithoutTheBitForThatIsSteppedOnceForEachPress) {
  DayDialog dialog(SV::WB_BORDER | SV::WB_SPIN);
  dialog.Show();
  EXPECT_FALSE(holdUp(dialog.day, 3, 1));
  EXPECT_EQ(dialog.day.GetValue(), 2);
  pressSpin(dialog.day, true);
  EXPECT_EQ(dialog.day.GetValue(), 3);
}

TEST_F(MetricField, StepsOnlyBetweenFirstAndLast) {
  DayDialog dialog;
  dialog.day.ChangeLast(5);
  dialog.day.SetValue(5);
  script->key(VK_UP).then([&] {
    EXPECT_EQ(dialog.day.GetValue(), 5);
    dialog.day.SetValue(20);
    EXPECT_EQ(dialog.day.GetValue(), 20) << "the limits of values are others";
    dialog.EndDialog();
  });
  dialog.Execute();
}

TEST_F(MetricField, StepsOnlyBackFromAValueBeyondFirstAndLast) {
  DayDialog dialog;
  dialog.day.ChangeFirst(3);
  dialog.day.ChangeLast(5);
  struct {
    long value;
    WPARAM key;
    long result;
  } const rows[] = {{20, VK_UP, 20}, {20, VK_DOWN, 19}, {2, VK_DOWN, 2}, {2, VK_UP, 3}, {3, VK_DOWN, 3}};
  for (auto const & row : rows) {
    dialog.day.SetValue(row.value);
    SendMessageA(dialog.day.GethWnd(), WM_KEYDOWN, row.key, 1);
    EXPECT_EQ(dialog.day.GetValue(), row.result) << row.value << " " << row.key;
  }
}

TEST_F(MetricField, TakesAMinusOnlyWhereTheMinimumIsNegative) {
  DayDialog dialog;
  type(dialog.day, "-7");
  EXPECT_STREQ(dialog.day.GetText().c_str(), "7");
  dialog.day.ChangeMin(-10);
  type(dialog.day, "-7");
  EXPECT_STREQ(dialog.day.GetText().c_str(), "-7");
  EXPECT_EQ(dialog.day.GetValue(), -7);
}

TEST_F(MetricField, CountsATextThatIsDeletedAsTheNumberThatWasTypedBefore) {
  DayDialog dialog;
  type(dialog.day, "24");
  SetWindowTextA(dialog.day.GethWnd(), "");
  EXPECT_EQ(dialog.day.GetValue(), 24);
}

TEST_F(MetricField, ReportsThatItHasLostTheKeyboardWithItsTextCorrected) {
  DayDialog dialog;
  std::string text;
  dialog.day.ChangeLoseFocusHdl([&](SV::Control * field) { text = textOf(field->GetText()); });
  script->then([&] {
    dialog.day.GrabFocus();
    type(dialog.day, "99");
    dialog.ok.GrabFocus();
    dialog.EndDialog();
  });
  dialog.Execute();
  EXPECT_EQ(text, "31.");
}

TEST_F(MetricField, LeavesRoomForItsButtonsInEachFont) {
  DayDialog dialog;
  RECT spin = {};
  GetClientRect(spinOf(dialog.day), &spin);
  ASSERT_GT(spin.right, 0);
  for (int const font : {DEFAULT_GUI_FONT, SYSTEM_FONT}) {
    SendMessageA(dialog.day.GethWnd(), WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(font)), TRUE);
    EXPECT_GE(HIWORD(SendMessageA(dialog.day.GethWnd(), EM_GETMARGINS, 0, 0)), spin.right);
  }
}

TEST_F(MetricField, TakesWhatIsTyped) {
  DayDialog dialog;
  script->then([&] {
    type(dialog.day, "24");
    EXPECT_EQ(dialog.day.GetValue(), 24);
    EXPECT_GT(dialog.changes, 0);
    type(dialog.day, "99");
    EXPECT_EQ(dialog.day.GetValue(), 31);
    type(dialog.day, "12x.");
    EXPECT_STREQ(dialog.day.GetText().c_str(), "12.") << "letters are no part of the number";
    dialog.EndDialog();
  });
  dialog.Execute();
}

TEST_F(MetricField, WithoutTheBitForDigitsTakesAnyTextAndCountsItAsTheValueBefore) {
  DayDialog dialog(SV::WB_BORDER);
  EXPECT_EQ(spinOf(dialog.day), nullptr);
  dialog.day.SetValue(9);
  script->then([&] {
    type(dialog.day, "abc");
    EXPECT_STREQ(dialog.day.GetText().c_str(), "abc");
    EXPECT_EQ(dialog.day.GetValue(), 9);
    dialog.ok.GrabFocus();
    EXPECT_STREQ(dialog.day.GetText().c_str(), "9.");
    dialog.EndDialog();
  });
  dialog.Execute();
}

TEST_F(MetricField, TakesALongTextAndNoneAtAll) {
  DayDialog dialog;
  SetWindowTextA(dialog.day.GethWnd(), std::string(2000, '7').c_str());
  EXPECT_EQ(dialog.day.GetValue(), 31);
  dialog.day.SetValue(8);
  dialog.day.ChangeCustomUnitText(std::string(1'000'000, 'x').c_str());
  EXPECT_EQ(textOf(dialog.day.GetText()), "8" + std::string(64, 'x'));
  EXPECT_EQ(SendMessageA(dialog.day.GethWnd(), EM_GETLIMITTEXT, 0, 0), 256);
  SetWindowTextA(dialog.day.GethWnd(), "");
  EXPECT_EQ(dialog.day.GetValue(), 8);
}

TEST_F(MetricField, DisablesItsButtonsWithItself) {
  DayDialog dialog;
  ASSERT_NE(spinOf(dialog.day), nullptr);
  dialog.day.Disable();
  EXPECT_FALSE(IsWindowEnabled(spinOf(dialog.day)));
  dialog.day.Enable();
  EXPECT_TRUE(IsWindowEnabled(spinOf(dialog.day)));
}

TEST_F(MetricField, HasItsButtonsInsideOfItWhateverItsSize) {
  DayDialog dialog;
  for (SV::Size size : {SV::Size{80, 24}, SV::Size{0, 0}, SV::Size{1, 1}, SV::Size{-5, -5}, SV::Size{32767, 24}}) {
    dialog.day.SetPosSizePixel({3, 4}, size);
    RECT field;
    RECT spin;
    GetWindowRect(dialog.day.GethWnd(), &field);
    GetWindowRect(spinOf(dialog.day), &spin);
    EXPECT_LE(spin.right, field.right) << size.width;
    EXPECT_EQ(dialog.day.GetPosPixel(), (SV::Point{3, 4}));
  }
}

} // namespace
