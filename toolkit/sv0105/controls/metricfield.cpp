#include "sv/metricfield.hpp"

#include "application/toolkit.hpp"
#include "controls/controlspec.hpp"

#include <commctrl.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace SV {
namespace {

// The system takes minutes to lay out a line of a million characters.
constexpr int kLongestText = 256;
constexpr int kLongestUnit = 64;

detail::WindowSpec fieldSpec(Window * parent, WinBits style) {
  // The buttons lie in the field, which must not be drawn over them.
  DWORD const system = WS_TABSTOP | WS_CLIPCHILDREN | ES_AUTOHSCROLL;
  detail::WindowSpec spec = detail::controlSpec("EDIT", parent, style & ~WB_BORDER, system);
  if (style & WB_BORDER)
    spec.exStyle |= WS_EX_CLIENTEDGE;
  return spec;
}

HWND makeSpin(HWND field) {
  // The class is in a DLL that nothing else needs at the start.
  static HMODULE const controls = LoadLibraryExA("comctl32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (!controls || !field)
    return nullptr;
  HWND const spin = CreateWindowExA(0, UPDOWN_CLASSA, "", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, field, nullptr,
                                    detail::toolkit().instance, nullptr);
  // It only says in which direction it was pressed: it cannot read a number with a unit.
  SendMessageA(spin, UDM_SETRANGE32, static_cast<WPARAM>(-1), 1);
  UDACCEL constant = {0, 1};
  SendMessageA(spin, UDM_SETACCEL, 1, reinterpret_cast<LPARAM>(&constant));
  return spin;
}

/// The number at the start of a text; false when there is none. One that is too large counts as the nearest long.
bool readNumber(String const & text, long & number) {
  char * end = nullptr;
  long const read = std::strtol(text.c_str(), &end, 10);
  if (end == text.c_str())
    return false;
  number = read;
  return true;
}

} // namespace

MetricField::MetricField(Window * parent, WinBits style)
    : Control(fieldSpec(parent, style)), style_(style), last_(LONG_MAX), maximum_(LONG_MAX) {
  if (GethWnd())
    SendMessageA(GethWnd(), EM_SETLIMITTEXT, kLongestText, 0);
  if (style & WB_SPIN)
    spin_ = makeSpin(GethWnd());
  show(0);
}

MetricField::~MetricField() { Window::Destroy(); }

long MetricField::clamped(long value) const { return std::max(std::min(value, maximum_), minimum_); }

long MetricField::GetValue() const {
  long number = value_;
  readNumber(GetText(), number);
  return clamped(number);
}

void MetricField::SetValue(long value) { show(clamped(value)); }

void MetricField::show(long value) {
  value_ = value;
  isShowing_ = true;
  SetText(String(value) + unitText());
  isShowing_ = false;
}

String MetricField::unitText() const {
  return unit_ == FIELD_UNIT_CUSTOM ? customText_.substr(0, kLongestUnit) : String();
}

long MetricField::ChangeFirst(long first) { return std::exchange(first_, first); }

long MetricField::ChangeLast(long last) { return std::exchange(last_, last); }

long MetricField::ChangeMin(long minimum) { return std::exchange(minimum_, minimum); }

long MetricField::ChangeMax(long maximum) { return std::exchange(maximum_, maximum); }

FieldUnit MetricField::ChangeUnit(FieldUnit unit) {
  long const value = GetValue();
  FieldUnit const former = std::exchange(unit_, unit);
  show(value);
  return former;
}

String MetricField::ChangeCustomUnitText(String const & text) {
  long const value = GetValue();
  String const former = std::exchange(customText_, String(text));
  show(value);
  return former;
}

/// A value beyond the steps, which may have been typed, only steps back.
void MetricField::step(long count) {
  long const value = GetValue();
  long const lowest = std::max(first_, minimum_);
  long const highest = std::min(last_, maximum_);
  if (count > 0 ? value >= highest : value <= lowest)
    return;
  show(count > 0 ? value + 1 : value - 1);
  Modify();
}

void MetricField::Modify() {
  if (ModifyHandler const handler = modifyHandler_) // a copy: it may be changed while it runs, or die with the field
    handler(this);
}

MetricField::ModifyHandler MetricField::ChangeModifyHdl(ModifyHandler handler) {
  return std::exchange(modifyHandler_, std::move(handler));
}

void MetricField::LostFocus() {
  show(GetValue());
  Control::LostFocus();
}

bool MetricField::KeyInput(KeyEvent const & event) {
  if (event.code != KEY_UP && event.code != KEY_DOWN)
    return Control::KeyInput(event);
  step(event.code == KEY_UP ? 1 : -1);
  return true;
}

bool MetricField::CharInput(char character) {
  constexpr char kFirstPrintable = ' ';
  bool const isPrintable = static_cast<unsigned char>(character) >= kFirstPrintable;
  if ((style_ & WB_DIGITS_ONLY) == 0 || !isPrintable)
    return Control::CharInput(character);
  String const unit = unitText();
  bool const belongs = (character >= '0' && character <= '9') || (character == '-' && minimum_ < 0) ||
                       std::strchr(unit.c_str(), character) != nullptr;
  if (!belongs)
    Application::Beep();
  return !belongs;
}

bool MetricField::MouseWheel(MouseEvent const & event) {
  if (event.notches == 0)
    return false;
  step(event.notches > 0 ? 1 : -1);
  return true;
}

bool MetricField::Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) {
  if (message != WM_COMMAND)
    return Control::Notify(message, wParam, lParam, result);
  result = 0;
  if (HIWORD(wParam) == EN_CHANGE && !isShowing_) {
    readNumber(GetText(), value_);
    Modify();
  }
  return true;
}

/// The buttons take the right end, the text what is left.
void MetricField::placeSpin() {
  if (!spin_)
    return;
  Size const size = GetOutputSizePixel();
  int const width = std::min<int>(GetSystemMetrics(SM_CXVSCROLL), size.width);
  MoveWindow(spin_, size.width - width, 0, width, size.height, TRUE);
  SendMessageA(GethWnd(), EM_SETMARGINS, EC_RIGHTMARGIN, MAKELPARAM(0, width + 1));
}

long long MetricField::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == WM_NOTIFY && spin_ && reinterpret_cast<NMHDR const *>(lParam)->hwndFrom == spin_) {
    auto const & change = *reinterpret_cast<NMUPDOWN const *>(lParam);
    if (change.hdr.code == UDN_DELTAPOS && ((style_ & WB_SPIN_REPEAT) || !std::exchange(hasStepped_, true)))
      step(change.iDelta);
    return TRUE; // the position of the buttons stays
  }
  if (message == WM_VSCROLL) {
    if (LOWORD(wParam) == SB_ENDSCROLL)
      hasStepped_ = false;
    return 0;
  }
  long long const result = Control::HandleMessage(message, wParam, lParam);
  if (message == WM_SIZE || message == WM_SETFONT) // a font brings margins of its own
    placeSpin();
  else if (message == WM_ENABLE && spin_)
    EnableWindow(spin_, static_cast<BOOL>(wParam));
  else if (message == WM_PAINT && spin_)
    InvalidateRect(spin_, nullptr, FALSE); // a field in a visual style is drawn over the windows in it
  return result;
}

} // namespace SV
