// A day and a month in a dialog that runs.
#include "adaymon.hpp"

#include "acmdline.hpp"
#include "adattime.hpp"
#include "support/child_process.hpp"
#include "support/files.hpp"
#include "support/import_spy.hpp"
#include "sv0105/controls/dialogtest.hpp"

#include <algorithm>
#include <climits>
#include <memory>
#include <string>
#include <vector>

namespace {

/// A control whose protected operations can be called, and that counts its own Resize.
class DayMonth : public KivDayMonthControl {
public:
  using KivDayMonthControl::KivDayMonthControl;
  using KivDayMonthControl::MonthSelectHdl;

  void Resize() override {
    ++resizes;
    KivDayMonthControl::Resize();
  }
  using KivDayMonthControl::Resize;

  int resizes = 0;
};

constexpr int kFieldWidth = 30;
constexpr int kListWidth = 60;

/// A dialog as a program writes it: a label, the control, OK.
class StartDialog : public SV::ModalDialog {
public:
  explicit StartDialog(SV::ResId const & record)
      : ModalDialog(nullptr), label(this), start(this, record, kFieldWidth, kListWidth), ok(this) {
    // Away from the mouse, which an open list follows.
    POINT mouse = {};
    GetCursorPos(&mouse);
    SetPosSizePixel({mouse.x < 500 ? 600 : 10, 10}, {400, 300});
    label.SetText("~Start:");
    label.SetPosSizePixel({5, 5}, {100, 15});
    ok.SetPosSizePixel({5, 250}, {80, 24});
    label.Show();
    ok.Show();
  }

  SV::FixedText label;
  DayMonth start;
  SV::OKButton ok;
};

class DayMonthTest : public svtest::DialogTest {
protected:
  explicit DayMonthTest(char const * language = "2057")
      : pack((support::binFolder() + "language\\" + language + "\\kivara72.dll").c_str()) {
    SV::Resource::SetResManager(&pack);
    dialog = std::make_unique<StartDialog>(SV::ResId(17, &records));
  }
  ~DayMonthTest() override {
    dialog.reset();
    SV::Resource::SetResManager(nullptr);
  }

  DayMonth & start() const { return dialog->start; }

  HWND child(char const * className) const { return FindWindowExA(dialog->GethWnd(), nullptr, className, nullptr); }
  HWND field() const { return child("Edit"); }
  HWND list() const { return child("ComboBox"); }
  HWND spin() const { return FindWindowExA(field(), nullptr, "msctls_updown32", nullptr); }

  std::string fieldText() const {
    char text[64] = {};
    GetWindowTextA(field(), text, sizeof text);
    return text;
  }

  std::vector<std::string> listTexts() const {
    std::vector<std::string> texts;
    for (WPARAM i = 0; i < static_cast<WPARAM>(SendMessageA(list(), CB_GETCOUNT, 0, 0)); ++i) {
      char text[64] = {};
      SendMessageA(list(), CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
      texts.emplace_back(text);
    }
    return texts;
  }

  RECT placeOf(HWND window) const {
    RECT place = {};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, dialog->GethWnd(), reinterpret_cast<POINT *>(&place), 2);
    return place;
  }

  SV::Size pixels(long width, long height) const {
    return dialog->LogicToPixel(SV::Size{width, height}, SV::MAP_APPFONT);
  }

  /// Steps up far beyond every limit; where that ends.
  int lastStep() {
    start().SetDay(27);
    for (int i = 0; i < 10; ++i)
      SendMessageA(field(), WM_KEYDOWN, VK_UP, 1);
    return start().GetDay();
  }

  /// Does what has been given in the dialog, which then ends.
  void run() {
    script->then([this] { dialog->EndDialog(1); });
    EXPECT_EQ(dialog->Execute(), 1);
  }

  void typeDay(char const * text) {
    script->then([this, text] {
      SetFocus(field());
      SendMessageA(field(), EM_SETSEL, 0, -1);
      for (char const * c = text; *c != '\0'; ++c)
        PostMessageA(field(), WM_CHAR, static_cast<WPARAM>(static_cast<unsigned char>(*c)), 1);
    });
  }

  void pressSpin(bool up) {
    script->then([this, up] {
      RECT area = {};
      GetClientRect(spin(), &area);
      LPARAM const place = MAKELPARAM(area.right / 2, up ? area.bottom / 4 : area.bottom * 3 / 4);
      PostMessageA(spin(), WM_LBUTTONDOWN, MK_LBUTTON, place);
      PostMessageA(spin(), WM_LBUTTONUP, 0, place);
    });
  }

  SV::ResMgr records{(support::binFolder() + "testres\\records72.dll").c_str()};
  SV::ResMgr pack;
  std::unique_ptr<StartDialog> dialog;
};

// What it shows at first

TEST_F(DayMonthTest, BeginsWithTheFirstOfJanuary) {
  EXPECT_EQ(start().GetDay(), 1);
  EXPECT_EQ(start().GetMonth(), 0);
  EXPECT_STREQ(start().GetMonthString().c_str(), "January");
  EXPECT_EQ(fieldText(), "1.");
  EXPECT_TRUE(IsWindowVisible(field()) == 0 && (GetWindowLongA(field(), GWL_STYLE) & WS_VISIBLE))
      << "shown with the dialog";
  EXPECT_TRUE(GetWindowLongA(list(), GWL_STYLE) & WS_VISIBLE);
  EXPECT_TRUE(application.exceptions.empty());
}

TEST_F(DayMonthTest, HasAFieldWithButtonsAndADropDownList) {
  ASSERT_NE(spin(), nullptr);
  EXPECT_EQ(GetWindowLongA(list(), GWL_STYLE) & CBS_DROPDOWNLIST, CBS_DROPDOWNLIST);
  for (HWND const window : {field(), list()}) {
    EXPECT_TRUE(GetWindowLongA(window, GWL_STYLE) & WS_GROUP);
    EXPECT_TRUE(GetWindowLongA(window, GWL_STYLE) & WS_TABSTOP);
  }
  EXPECT_TRUE(GetWindowLongA(field(), GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
}

TEST_F(DayMonthTest, IsAHiddenPlaceholderInTheColourOfBoxes) {
  dialog->Show();
  EXPECT_FALSE(start().IsVisible());
  EXPECT_TRUE(IsWindowVisible(field()));
  EXPECT_TRUE(IsWindowVisible(list()));
  ASSERT_FALSE(start().GetBackgroundBrush().IsNone());
  EXPECT_EQ(start().GetBackgroundBrush().GetColor().GetColorName(), 25);
}

char const * const kEnglish[] = {"January", "February", "March",     "April",   "May",      "June",
                                 "July",    "August",   "September", "October", "November", "December"};
char const * const kGerman[] = {"Januar", "Februar", "M\xE4rz",   "April",   "Mai",      "Juni",
                                "Juli",   "August",  "September", "Oktober", "November", "Dezember"};

class GermanDayMonth : public DayMonthTest {
protected:
  GermanDayMonth() : DayMonthTest("1031") {}
};

TEST_F(DayMonthTest, ListHasTheTwelveMonthsInEnglish) {
  EXPECT_EQ(listTexts(), std::vector<std::string>(std::begin(kEnglish), std::end(kEnglish)));
}

TEST_F(GermanDayMonth, ListHasTheTwelveMonthsInGerman) {
  EXPECT_EQ(listTexts(), std::vector<std::string>(std::begin(kGerman), std::end(kGerman)));
}

// Months and days by the program

constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

TEST_F(DayMonthTest, EachMonthHasItsDays) {
  for (int month = 0; month < 12; ++month) {
    start().SetMonth(month);
    EXPECT_EQ(start().GetMonth(), month);
    for (int day = -1; day <= 33; ++day) {
      start().SetDay(day);
      EXPECT_EQ(start().GetDay(), std::clamp(day, 1, kDays[month])) << month;
    }
    EXPECT_EQ(lastStep(), kDays[month]) << month;
  }
}

TEST_F(DayMonthTest, DayOfAnyNumberIsTheNearestOne) {
  start().SetDay(INT_MAX);
  EXPECT_EQ(start().GetDay(), 31);
  start().SetDay(INT_MIN);
  EXPECT_EQ(start().GetDay(), 1);
}

TEST_F(DayMonthTest, FebruaryHas28DaysAnd29WhereThatIsAllowed) {
  start().SetMonth(1);
  EXPECT_EQ(lastStep(), 28);
  start().AllowFebruary29th(true);
  EXPECT_EQ(lastStep(), 29) << "at once";
  start().AllowFebruary29th(false);
  EXPECT_EQ(lastStep(), 28);
}

TEST_F(DayMonthTest, February29AddsNoDayToAnyOtherMonth) {
  start().AllowFebruary29th(true);
  for (int month = 0; month < 12; ++month) {
    start().SetMonth(month);
    EXPECT_EQ(lastStep(), kDays[month] + (month == 1 ? 1 : 0)) << month;
  }
}

TEST_F(DayMonthTest, MonthThatIsNotValidLeavesTheSelectedOne) {
  start().SetMonth(3);
  for (int const month : {-1, 12, INT_MAX, INT_MIN}) {
    start().SetMonth(month);
    EXPECT_EQ(start().GetMonth(), 3) << month;
    EXPECT_EQ(lastStep(), 30) << month;
  }
}

TEST_F(DayMonthTest, MonthIsSetByItsName) {
  for (int month = 0; month < 12; ++month) {
    start().SetMonthString(kEnglish[month]);
    EXPECT_EQ(start().GetMonth(), month);
    EXPECT_STREQ(start().GetMonthString().c_str(), kEnglish[month]);
    EXPECT_EQ(lastStep(), kDays[month]) << month;
  }
}

TEST_F(GermanDayMonth, MonthIsSetByItsGermanName) {
  for (int month = 0; month < 12; ++month) {
    start().SetMonthString(kGerman[month]);
    EXPECT_EQ(start().GetMonth(), month);
    EXPECT_STREQ(start().GetMonthString().c_str(), kGerman[month]);
    EXPECT_EQ(lastStep(), kDays[month]) << month;
  }
}

TEST_F(DayMonthTest, NameThatNoMonthHasLeavesTheSelectedOne) {
  start().SetMonth(3);
  for (char const * name : {"", "Februar", "february", "February ", "2"}) {
    start().SetMonthString(name);
    EXPECT_EQ(start().GetMonth(), 3) << name;
    EXPECT_EQ(lastStep(), 30) << name;
  }
}

TEST_F(DayMonthTest, NameIsThatOfTheLanguageThatIsActiveWhileTheListStaysAsItIs) {
  start().SetMonth(2);
  SV::ResMgr german((support::binFolder() + "language\\1031\\kivara72.dll").c_str());
  SV::Resource::SetResManager(&german);
  EXPECT_STREQ(start().GetMonthString().c_str(), "M\xE4rz");
  start().SetMonthString("Dezember");
  EXPECT_EQ(start().GetMonth(), 11);
  EXPECT_EQ(listTexts()[11], "December");
  SV::Resource::SetResManager(&pack);
}

// A day that the month does not have

TEST_F(DayMonthTest, February31IsLeftToTheField) {
  start().SetDay(31);
  start().SetMonth(1);
  EXPECT_EQ(fieldText(), "31.") << "the text stays";
  EXPECT_EQ(start().GetDay(), 28) << "the value keeps within the limits";
  start().SetMonth(2);
  EXPECT_EQ(start().GetDay(), 31) << "nothing has been changed";
}

TEST_F(DayMonthTest, February31BecomesTheLastDayWhenTheFieldLosesTheKeyboard) {
  script
      ->then([this] {
        SetFocus(field());
        start().SetDay(31);
        start().SetMonth(1);
        EXPECT_EQ(fieldText(), "31.");
      })
      .key(VK_TAB)
      .then([this] {
        EXPECT_EQ(fieldText(), "28.");
        start().SetMonth(2);
        EXPECT_EQ(start().GetDay(), 28);
      });
  run();
}

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

// Place and size

class DayMonthPlace : public DayMonthTest {
protected:
  void expectPlaces(int fieldWidth, int listWidth) const {
    RECT const place = placeOf(start().GethWnd());
    RECT const left = placeOf(field());
    RECT const right = placeOf(list());
    EXPECT_EQ(left.left, place.left);
    EXPECT_EQ(left.top, place.top);
    EXPECT_EQ(left.right - left.left, pixels(fieldWidth, 13).width);
    EXPECT_EQ(left.bottom - left.top, pixels(fieldWidth, 13).height);
    EXPECT_EQ(right.right, place.right);
    EXPECT_EQ(right.top, place.top);
    EXPECT_EQ(right.right - right.left, pixels(listWidth, 116).width);
    EXPECT_EQ(heightThatTheListGets(), pixels(listWidth, 116).height) << "of the open list";
  }

  /// The system makes of it what it shows when the list is open.
  long heightThatTheListGets() const {
    askedList = list();
    askedHeight = 0;
    SV::Sysdepen::ChangeHook([](HWND window, unsigned message, unsigned long long, long long lParam, long long &) {
      if (window == askedList && message == WM_WINDOWPOSCHANGING && askedHeight == 0)
        askedHeight = reinterpret_cast<WINDOWPOS const *>(lParam)->cy;
      return 0;
    });
    start().Resize();
    SV::Sysdepen::ChangeHook(nullptr);
    return askedHeight;
  }

  static inline HWND askedList = nullptr;
  static inline long askedHeight = 0;
};

TEST_F(DayMonthPlace, IsThatOfTheRecord) {
  EXPECT_EQ(start().GetPosPixel(), (SV::Point{pixels(12, 20).width, pixels(12, 20).height}));
  EXPECT_EQ(start().GetSizePixel(), pixels(110, 13));
  EXPECT_EQ(start().GetMFWidth(), kFieldWidth);
  EXPECT_EQ(start().GetLBWidth(), kListWidth);
  expectPlaces(kFieldWidth, kListWidth);
}

TEST_F(DayMonthPlace, FollowsAnotherSize) {
  start().SetPosSizePixel(start().GetPosPixel(), {300, 40});
  expectPlaces(kFieldWidth, kListWidth);
  EXPECT_EQ(placeOf(list()).right, start().GetPosPixel().x + 300);
}

TEST_F(DayMonthPlace, FollowsAMoveOfTheSameSize) {
  SV::Size const size = start().GetSizePixel();
  start().SetPosSizePixel({50, 90}, size);
  expectPlaces(kFieldWidth, kListWidth);
  EXPECT_EQ(placeOf(field()).left, 50);
  EXPECT_EQ(placeOf(field()).top, 90);
}

TEST_F(DayMonthPlace, CallsTheResizeOfADerivedClass) {
  start().resizes = 0;
  start().SetMFWidth(31);
  EXPECT_EQ(start().resizes, 1);
  start().SetLBWidth(61);
  EXPECT_EQ(start().resizes, 2);
  start().ChangeOutputSizePixel({310, 41});
  EXPECT_EQ(start().resizes, 3);
  SV::Window & window = start();
  window.Resize(SV::Size{1, 1});
  EXPECT_EQ(start().resizes, 4);
}

TEST_F(DayMonthPlace, FollowsTheWidths) {
  start().SetMFWidth(45);
  EXPECT_EQ(start().GetMFWidth(), 45);
  expectPlaces(45, kListWidth);
  start().SetLBWidth(40);
  EXPECT_EQ(start().GetLBWidth(), 40);
  expectPlaces(45, 40);
}

TEST_F(DayMonthPlace, OfAListThatIsWiderThanTheControlBeginsLeftOfIt) {
  start().SetLBWidth(120);
  EXPECT_LT(placeOf(list()).left, placeOf(field()).left);
  expectPlaces(kFieldWidth, 120);
}

TEST_F(DayMonthPlace, WithWidthsOfNothingIsEmpty) {
  start().SetMFWidth(0);
  start().SetLBWidth(-5);
  EXPECT_EQ(start().GetLBWidth(), -5);
  RECT const place = placeOf(field());
  EXPECT_EQ(place.right, place.left);
  start().SetMFWidth(kFieldWidth);
  start().SetLBWidth(kListWidth);
  expectPlaces(kFieldWidth, kListWidth);
}

TEST_F(DayMonthPlace, FollowsAnotherFontWhenResizeIsCalled) {
  SV::Size const before = pixels(kFieldWidth, 13);
  SV::Application::ChangeAppFont(SV::Font("Arial", {0, 40}));
  start().Resize();
  EXPECT_GT(pixels(kFieldWidth, 13).width, before.width);
  expectPlaces(kFieldWidth, kListWidth);
}

TEST_F(DayMonthPlace, WithoutARecordIsTheCornerAndTheRestWorks) {
  DayMonth lost(dialog.get(), SV::ResId(4242), kFieldWidth, kListWidth);
  ASSERT_EQ(application.exceptions.size(), 1u);
  EXPECT_EQ(application.exceptions[0].code, 0x100);
  EXPECT_EQ(lost.GetSizePixel(), (SV::Size{0, 0}));
  lost.SetMonth(1);
  lost.SetDay(31);
  EXPECT_EQ(lost.GetDay(), 28);
  lost.SetPosSizePixel({20, 200}, {200, 20});
  EXPECT_EQ(lost.GetMonth(), 1);
}

// No month

TEST_F(DayMonthTest, WithoutAMonthAssertsWithTheModuleOfDatesAndLeavesTheLimits) {
  char program[] = "test";
  char option[] = "-assert";
  char * arguments[] = {program, option, nullptr};
  KivCmdline::init(2, arguments, true, "");
  std::string shown;
  support::spyOnImport("SV0105.dll", "MessageBoxA", [&](support::SpiedCall const & call) { shown = call.text(1); });
  start().SetMonth(1);
  SendMessageA(list(), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
  ASSERT_EQ(start().GetMonth(), -1);
  script->then([] { PostMessageA(FindWindowA("#32770", "Assertion failed"), WM_COMMAND, IDOK, 0); });
  EXPECT_EQ(start().MonthSelectHdl(nullptr), 0);
  EXPECT_NE(shown.find("File adattime.cpp line 1:"), std::string::npos) << shown;
  EXPECT_EQ(lastStep(), 28);
  EXPECT_STREQ(start().GetMonthString().c_str(), "");
}

TEST_F(DayMonthTest, HandlerOfASelectedMonthGivesTrue) { EXPECT_EQ(start().MonthSelectHdl(nullptr), 1); }

// Its end

TEST_F(DayMonthTest, OutlivesTheWindowsOfItsParent) {
  start().SetMonth(1);
  start().SetDay(14);
  DestroyWindow(dialog->GethWnd());
  EXPECT_EQ(start().GetDay(), 14);
  EXPECT_EQ(start().GetMonth(), -1);
  start().SetDay(3);
  start().SetMonth(2);
  start().SetMonthString("May");
  start().AllowFebruary29th(true);
  start().SetMFWidth(1);
  start().Disable();
  EXPECT_STREQ(start().GetMonthString().c_str(), "");
}

TEST_F(DayMonthTest, ClosesItsWindowsBeforeItsParent) {
  auto second = std::make_unique<DayMonth>(dialog.get(), SV::ResId(17, &records), 10, 20);
  second.reset();
  EXPECT_EQ(FindWindowExA(dialog->GethWnd(), list(), "ComboBox", nullptr), nullptr);
  EXPECT_EQ(FindWindowExA(dialog->GethWnd(), field(), "Edit", nullptr), nullptr);
}

} // namespace
