// A day and a month as the program sets them.
#include "daymonthtest.hpp"

#include "acmdline.hpp"
#include "adattime.hpp"
#include "support/imports/import_spy.hpp"
#include "support/processes/child_process.hpp"
#include "sv/application.hpp"

#include <algorithm>
#include <climits>

namespace {

using namespace kivtest;

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
  SV::Application::SetModalDialogSuppression(true); // a debug build asserts that there is a month
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
