#include "adaymon.hpp"

#include "adattime.hpp"
#include "atrace.hpp"
#include "base/modules.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace {

constexpr SV::WinBits kDayStyle = SV::WB_BORDER | SV::WB_GROUP | SV::WB_SPIN | SV::WB_SPIN_REPEAT | SV::WB_DIGITS_ONLY;
constexpr SV::WinBits kMonthStyle = SV::WB_BORDER | SV::WB_GROUP | SV::WB_DROPDOWN;
static_assert(kDayStyle == 0x4C11 && kMonthStyle == 0x811);

// In units of dialogs.
constexpr long kFieldHeight = 13;
constexpr long kListHeight = 116; // of the open list

constexpr int kFirstDay = 1;
constexpr int kLastDay = 31;
constexpr int kFebruary = 1;

// The line by which support looks up the failed assertion.
constexpr int kLineNoMonth = 1;

} // namespace

KivDayMonthControl::KivDayMonthControl(SV::Window * parent, SV::ResId const & id, int fieldWidth, int listWidth)
    : Control(parent, id), dayField(parent, kDayStyle), monthList(parent, kMonthStyle), mfWidth(fieldWidth),
      lbWidth(listWidth) {
  ChangeBackgroundBrush(SV::Brush(SV::COL_FACE));
  dayField.ChangeFirst(kFirstDay);
  dayField.ChangeMin(kFirstDay);
  dayField.ChangeLast(kLastDay);
  dayField.ChangeMax(kLastDay);
  dayField.ChangeUnit(SV::FIELD_UNIT_CUSTOM);
  dayField.ChangeCustomUnitText(".");
  dayField.SetValue(kFirstDay);
  dayField.Show();
  KivDate::FillListBoxWithMonthNames(&monthList);
  monthList.SelectEntryPos(0);
  monthList.Show();
  monthList.ChangeSelectHdl([this](SV::ListBox * list) { MonthSelectHdl(list); });
  KivDayMonthControl::Resize();
  Hide();
}

KivDayMonthControl::~KivDayMonthControl() = default;

int KivDayMonthControl::GetDay() const { return static_cast<int>(dayField.GetValue()); }

void KivDayMonthControl::SetDay(int day) { dayField.SetValue(day); }

int KivDayMonthControl::GetMonth() const { return static_cast<int>(monthList.GetSelectEntryPos()); }

void KivDayMonthControl::SetMonth(int month) {
  monthList.SelectEntryPos(month);
  MonthSelectHdl(&monthList);
}

String KivDayMonthControl::GetMonthString() const { return KivDate::MonthToStr(GetMonth()); }

void KivDayMonthControl::SetMonthString(String const & name) {
  int month = GetMonth();
  KivDate::StrToMonth(name, month);
  SetMonth(month);
}

void KivDayMonthControl::SetMFWidth(int width) {
  mfWidth = width;
  Resize();
}

void KivDayMonthControl::SetLBWidth(int width) {
  lbWidth = width;
  Resize();
}

void KivDayMonthControl::AllowFebruary29th(bool allowed) {
  february29Allowed = allowed;
  MonthSelectHdl(&monthList);
}

void KivDayMonthControl::Resize() {
  SV::Size const fieldSize = LogicToPixel(SV::Size{mfWidth, kFieldHeight}, SV::MAP_APPFONT);
  SV::Size const listSize = LogicToPixel(SV::Size{lbWidth, kListHeight}, SV::MAP_APPFONT);
  SV::Point const corner = GetPosPixel();
  dayField.SetPosSizePixel(corner, fieldSize);
  monthList.SetPosSizePixel({corner.x + GetSizePixel().width - listSize.width, corner.y}, listSize);
}

void KivDayMonthControl::Resize(SV::Size const &) { Resize(); }

void KivDayMonthControl::SetEnabled(bool enabled) {
  Control::SetEnabled(enabled);
  dayField.SetEnabled(enabled);
  monthList.SetEnabled(enabled);
}

long KivDayMonthControl::MonthSelectHdl(SV::ListBox *) {
  int const month = GetMonth();
  int lastDay = 0;
  bool const isMonth = KivDate::GetMaxDayOfMonth(month, lastDay, false);
  KIV_ASSERT_AT(isMonth, "GetMaxDayOfMonth", "No month is selected.", kivara::modules::kAdattime, kLineNoMonth);
  if (!isMonth)
    return 0;
  dayField.ChangeMax(lastDay + (month == kFebruary && february29Allowed ? 1 : 0));
  return 1;
}

long long KivDayMonthControl::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  long long const result = Control::HandleMessage(message, wParam, lParam);
  if (message == WM_MOVE) // Resize(Size) is not called for a move alone
    Resize();
  return result;
}
