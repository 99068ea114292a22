#include "controlsdialog.hpp"

#include "texts.hpp"

namespace controls {
namespace {

// All places are in units of dialogs, so that they grow with the font and the scale of the screen.
constexpr SV::Size kArea = {290, 213};
constexpr long kMargin = 7;
constexpr long kLabelTop = 38;
constexpr long kFieldTop = 48;
constexpr long kPadTop = 68;
constexpr long kYearStartLabelTop = 114;
constexpr long kTimeTop = 156;
constexpr long kBoxesTop = 171;
constexpr long kBottom = 192;
constexpr int kDayWidth = 32;
constexpr int kMonthWidth = 58;
constexpr SV::Size kButton = {60, 14};
constexpr long kButtonStep = kButton.width + 4;

enum MenuItem : unsigned short { kLonger = 1, kShorter, kReset };

} // namespace

ControlsDialog::ControlsDialog()
    : ModalDialog(nullptr), pad_(this, [this](SV::Point const & position) { menu_.Execute(position); }),
      yearStart_(this, resource(Record::YearStart), kDayWidth, kMonthWidth) {
  SetText(text(Text::Title));
  ChangeOutputSizePixel(LogicToPixel(kArea, SV::MAP_APPFONT));
  makeTop();
  makeFields();
  makeBoxButtons();
  makeBottom();
  makeMenu();
  reset();
  keys_.InsertItem(1, SV::KEY_CONTROL | (SV::KEY_A + ('R' - 'A')));
  keys_.PushSelectHdl([this](SV::Accelerator *) {
    reset();
    return 1L;
  });
  SV::Application::InsertAccel(&keys_, SV::ACCEL_WITH_DIALOG);
  timer_.ChangeTimeoutHdl([this](SV::Timer *) { showTime(); });
  timer_.Start(1000);
}

ControlsDialog::~ControlsDialog() = default;

void ControlsDialog::place(SV::Control & control, SV::Point const & position, SV::Size const & size) {
  SV::Size const corner = LogicToPixel(SV::Size{position.x, position.y}, SV::MAP_APPFONT);
  control.SetPosSizePixel({corner.width, corner.height}, LogicToPixel(size, SV::MAP_APPFONT));
  control.Show();
}

void ControlsDialog::makeTop() {
  place(icon_, {kMargin, kMargin}, {20, 20});
  icon_.ChangeIcon(SV::ICON_STYLE_INFO);
  introduction_.SetText(text(Text::Introduction));
  place(introduction_, {38, kMargin}, {kArea.width - 38 - kMargin, 26});
}

void ControlsDialog::makeFields() {
  constexpr long departmentLeft = 100;
  constexpr long lengthLeft = 200;
  constexpr long noteLeft = 107;
  phaseLabel_.SetText(text(Text::Phase));
  place(phaseLabel_, {kMargin, kLabelTop}, {80, 8});
  for (Text const id : {Text::Draft, Text::Review, Text::Released})
    phase_.InsertEntry(text(id));
  place(phase_, {kMargin, kFieldTop}, {80, 60});
  departmentLabel_.SetText(text(Text::Department));
  place(departmentLabel_, {departmentLeft, kLabelTop}, {85, 8});
  for (Text const id : {Text::Purchasing, Text::Production, Text::Sales})
    department_.InsertEntry(text(id));
  place(department_, {departmentLeft, kFieldTop}, {85, 60});
  lengthLabel_.SetText(text(Text::Length));
  place(lengthLabel_, {lengthLeft, kLabelTop}, {83, 8});
  length_.ChangeMax(366);
  length_.ChangeLast(366);
  length_.ChangeUnit(SV::FIELD_UNIT_CUSTOM);
  length_.ChangeCustomUnitText(text(Text::Days));
  place(length_, {lengthLeft, kFieldTop}, {83, 13});
  place(pad_, {departmentLeft, kPadTop}, {kArea.width - departmentLeft - kMargin, 40});
  yearStartLabel_.SetText(text(Text::YearStart));
  place(yearStartLabel_, {kMargin, kYearStartLabelTop}, {93, 8});
  noteLabel_.SetText(text(Text::Note));
  place(noteLabel_, {noteLeft, kYearStartLabelTop}, {100, 8});
  place(note_, {noteLeft, kYearStartLabelTop + 10}, {110, 24});
  urgent_.SetText(text(Text::Urgent));
  place(urgent_, {noteLeft + 117, kYearStartLabelTop + 12}, {kArea.width - noteLeft - 117 - kMargin, 10});
  place(time_, {kMargin, kTimeTop}, {kArea.width - 2 * kMargin, 8});
}

void ControlsDialog::makeBoxButtons() {
  information_.SetText(text(Text::Information));
  information_.ChangeClickHdl([this](SV::PushButton *) { KivInfoBox(this, text(Text::InformationText)).Execute(); });
  question_.SetText(text(Text::Question));
  question_.ChangeClickHdl([this](SV::PushButton *) {
    KivQueryBox box(this, SV::WB_YES_NO_CANCEL | SV::WB_DEF_YES, text(Text::QuestionText));
    box.SetButtonText(SV::RET_YES, text(Text::Yes)); // those of the box itself are in the language of the system
    box.SetButtonText(SV::RET_NO, text(Text::No));
    box.Execute();
  });
  warning_.SetText(text(Text::Warning));
  warning_.ChangeClickHdl([this](SV::PushButton *) {
    KivWarningBox(this, SV::WB_OK_CANCEL | SV::WB_DEF_CANCEL, text(Text::WarningText)).Execute();
  });
  error_.SetText(text(Text::Error));
  error_.ChangeClickHdl([this](SV::PushButton *) {
    KivErrorBox(this, KivErrorBox::WB_YES_NO | KivErrorBox::WB_DEF_YES, text(Text::ErrorText)).Execute(ShowAlways);
  });
  long left = kMargin;
  for (SV::PushButton * const button : {&information_, &question_, &warning_, &error_}) {
    place(*button, {left, kBoxesTop}, kButton);
    left += kButtonStep;
  }
}

void ControlsDialog::makeBottom() {
  // OK and Cancel end the dialog by themselves.
  help_.ChangeClickHdl([this](SV::PushButton *) { KivInfoBox(this, text(Text::HelpText)).Execute(); });
  long left = kArea.width - kMargin - 2 * kButtonStep - kButton.width;
  for (SV::Control * const button : std::vector<SV::Control *>{&ok_, &cancel_, &help_}) {
    place(*button, {left, kBottom}, kButton);
    left += kButtonStep;
  }
}

void ControlsDialog::makeMenu() {
  menu_.InsertItem(kLonger, text(Text::Longer));
  menu_.InsertItem(kShorter, text(Text::Shorter));
  menu_.InsertSeparator();
  menu_.InsertItem(kReset, text(Text::Reset));
  menu_.ChangeSelectHdl([this](unsigned short id) {
    if (id == kReset)
      reset();
    else
      length_.SetValue(length_.GetValue() + (id == kLonger ? 1 : -1));
  });
}

void ControlsDialog::reset() {
  phase_.SelectEntryPos(0);
  department_.SelectEntryPos(1);
  length_.SetValue(14);
  yearStart_.SetMonth(3);
  yearStart_.SetDay(1);
  note_.SetText("");
  urgent_.Check(false);
  time_.SetText(text(Text::OpenFor, SV::String(seconds_)));
}

void ControlsDialog::showTime() {
  ++seconds_;
  time_.SetText(text(Text::OpenFor, SV::String(seconds_)));
}

} // namespace controls
