#include "sv/listbox.hpp"

#include "controls/controlspec.hpp"
#include "controls/dialogunits.hpp"

#include <cstring>
#include <utility>
#include <vector>

namespace SV {
namespace {

detail::WindowSpec listSpec(Window * parent, WinBits style) {
  bool const isDropDown = (style & WB_DROPDOWN) != 0;
  DWORD const system = WS_TABSTOP | WS_VSCROLL | (isDropDown ? CBS_DROPDOWNLIST : LBS_NOTIFY | LBS_NOINTEGRALHEIGHT);
  // Both classes have a frame of their own that fits the look of the desktop.
  detail::WindowSpec spec =
      detail::controlSpec(isDropDown ? "COMBOBOX" : "LISTBOX", parent, style & ~WB_BORDER, system);
  if (!isDropDown && (style & WB_BORDER))
    spec.exStyle |= WS_EX_CLIENTEDGE;
  return spec;
}

String inCodePage(wchar_t const * wide) {
  int const size = WideCharToMultiByte(CP_ACP, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  std::vector<char> text(static_cast<std::size_t>(size) + 1);
  WideCharToMultiByte(CP_ACP, 0, wide, -1, text.data(), size, nullptr, nullptr);
  return String(text.data());
}

} // namespace

ListBox::ListBox(Window * parent, WinBits style)
    : Control(listSpec(parent, style)), isDropDown_((style & WB_DROPDOWN) != 0) {
  fitClosedHeight();
}

/// The system adds the same few pixels to a line of any font, so that at a large scale the list would be lower than the
/// fields in its row.
void ListBox::fitClosedHeight() {
  constexpr long kFieldHeight = 13; // in units of dialogs
  if (!isDropDown_ || !GethWnd())
    return;
  auto const font = reinterpret_cast<HFONT>(SendMessageA(GethWnd(), WM_GETFONT, 0, 0));
  long const wanted = detail::pixelsOfUnits(font, {0, kFieldHeight}).height;
  constexpr auto closedLine = static_cast<WPARAM>(-1);
  SendMessageA(GethWnd(), CB_SETITEMHEIGHT, closedLine, wanted);
  long const frame = GetSizePixel().height - wanted;
  SendMessageA(GethWnd(), CB_SETITEMHEIGHT, closedLine, wanted - frame);
}

/// The two classes of the system understand the same under different numbers.
long long ListBox::send(unsigned listMessage, unsigned boxMessage, unsigned long long wParam, long long lParam) const {
  return GethWnd() ? SendMessageA(GethWnd(), isDropDown_ ? boxMessage : listMessage, wParam, lParam) : LB_ERR;
}

long ListBox::InsertEntry(String const & text, long position) {
  long const place = position >= 0 && position < GetEntryCount() ? position : LISTBOX_APPEND;
  long long const result = send(LB_INSERTSTRING, CB_INSERTSTRING, static_cast<WPARAM>(static_cast<LONG_PTR>(place)),
                                reinterpret_cast<LPARAM>(text.c_str()));
  return result >= 0 ? static_cast<long>(result) : LISTBOX_ENTRY_NOTFOUND;
}

bool ListBox::RemoveEntry(long position) {
  return position >= 0 && send(LB_DELETESTRING, CB_DELETESTRING, static_cast<WPARAM>(position)) >= 0;
}

void ListBox::Clear() { send(LB_RESETCONTENT, CB_RESETCONTENT); }

long ListBox::GetEntryCount() const {
  long long const count = send(LB_GETCOUNT, CB_GETCOUNT);
  return count > 0 ? static_cast<long>(count) : 0;
}

String ListBox::GetEntry(long position) const {
  if (position < 0 || position >= GetEntryCount())
    return String();
  // In its wide form: Wine takes the other one through a buffer of 512 characters, whatever the length.
  auto const ask = [&](unsigned listMessage, unsigned boxMessage, LPARAM lParam) {
    return detail::WindowAccess::askWide(*this, isDropDown_ ? boxMessage : listMessage, static_cast<WPARAM>(position),
                                         lParam);
  };
  LRESULT const length = ask(LB_GETTEXTLEN, CB_GETLBTEXTLEN, 0);
  if (length < 1)
    return String();
  std::vector<wchar_t> text(static_cast<std::size_t>(length) + 1);
  ask(LB_GETTEXT, CB_GETLBTEXT, reinterpret_cast<LPARAM>(text.data()));
  return inCodePage(text.data());
}

// The system's own search takes no notice of case.
long ListBox::GetEntryPos(String const & text) const {
  for (long i = 0, count = GetEntryCount(); i < count; ++i)
    if (std::strcmp(GetEntry(i).c_str(), text.c_str()) == 0)
      return i;
  return LISTBOX_ENTRY_NOTFOUND;
}

bool ListBox::SelectEntryPos(long position) {
  if (position < 0 || position >= GetEntryCount())
    return false;
  send(LB_SETCURSEL, CB_SETCURSEL, static_cast<WPARAM>(position));
  return true;
}

void ListBox::SetNoSelection() { send(LB_SETCURSEL, CB_SETCURSEL, static_cast<WPARAM>(-1)); }

long ListBox::GetSelectEntryPos() const {
  long long const position = send(LB_GETCURSEL, CB_GETCURSEL);
  return position >= 0 ? static_cast<long>(position) : LISTBOX_ENTRY_NOTFOUND;
}

void ListBox::Select() {
  if (SelectHandler const handler = selectHandler_) // a copy: it may be changed while it runs, or die with the list
    handler(this);
}

ListBox::SelectHandler ListBox::ChangeSelectHdl(SelectHandler handler) {
  return std::exchange(selectHandler_, std::move(handler));
}

bool ListBox::Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) {
  if (message != WM_COMMAND)
    return Control::Notify(message, wParam, lParam, result);
  result = 0;
  static_assert(CBN_SELCHANGE == LBN_SELCHANGE, "both kinds of lists report a choice by one number");
  if (HIWORD(wParam) == LBN_SELCHANGE)
    Select();
  return true;
}

long long ListBox::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  long long const result = Control::HandleMessage(message, wParam, lParam);
  if (message == WM_SETFONT)
    fitClosedHeight();
  return result;
}

} // namespace SV
