#include "windows/documents/eventswindow.hpp"

#include "texts/texts.hpp"
#include "tools/winapi.hpp"

#include <iterator>

namespace modeler {
namespace {

constexpr int kTextStart = 150; // in the units of dialogs: behind number and name

HWND makeList(HWND parent, HFONT font) {
  constexpr DWORD style = WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL | LBS_NOINTEGRALHEIGHT | LBS_USETABSTOPS;
  HWND const list =
      CreateWindowExA(0, "LISTBOX", "", style, 0, 0, 0, 0, parent, nullptr, GetModuleHandleA(nullptr), nullptr);
  int tabStops[] = {28, kTextStart};
  SendMessageA(list, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  SendMessageA(list, LB_SETTABSTOPS, std::size(tabStops), reinterpret_cast<LPARAM>(tabStops));
  return list;
}

} // namespace

EventsWindow::EventsWindow(SV::MDIFrame & frame, EventLog & log)
    : DocumentWindow(frame, text(Text::TitleEvents)), log_(log), font_(GetFont().CreateSystemFont()),
      list_(makeList(GethWnd(), font_)) {
  ruler_.ChangeFont(GetFont());
  EventsWindow::Resize(GetOutputSizePixel());
  for (EventLog::Row const & row : log_.GetRows())
    append(row);
  log_.ChangeRowHdl([this](EventLog::Row const & row) { append(row); });
}

EventsWindow::~EventsWindow() {
  log_.ChangeRowHdl(nullptr);
  MDIChild::Destroy();
  DeleteObject(font_);
}

void EventsWindow::Resize(SV::Size const & size) { MoveWindow(list_, 0, 0, size.width, size.height, TRUE); }

void EventsWindow::GrabFocus() { SetFocus(list_); }

void EventsWindow::append(EventLog::Row const & row) {
  if (GethWnd() == nullptr) // the user has closed it
    return;
  if (SendMessageA(list_, LB_GETCOUNT, 0, 0) == static_cast<LRESULT>(EventLog::kMostRows))
    SendMessageA(list_, LB_DELETESTRING, 0, 0);
  SV::String const line = SV::String(row.number) + "\t" + row.name + "\t" + row.text;
  LRESULT const index = SendMessageA(list_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
  SendMessageA(list_, LB_SETTOPINDEX, static_cast<WPARAM>(index), 0); // the newest stays in view
  fitBar(row.text);
}

/// The list cannot tell by itself how far its rows reach.
void EventsWindow::fitBar(SV::String const & text) {
  long const start = LogicToPixel(SV::Size{kTextStart + 4, 0}, SV::MAP_APPFONT).width;
  long const width = start + ruler_.GetTextSize(text).width;
  if (width <= widest_)
    return;
  widest_ = width;
  SendMessageA(list_, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(width), 0);
}

} // namespace modeler
