#include "windows/eventswindow.hpp"

#include "texts/texts.hpp"
#include "tools/winapi.hpp"

#include <iterator>

namespace modeler {
namespace {

HWND makeList(HWND parent, HFONT font) {
  constexpr DWORD style = WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT | LBS_USETABSTOPS;
  HWND const list =
      CreateWindowExA(0, "LISTBOX", "", style, 0, 0, 0, 0, parent, nullptr, GetModuleHandleA(nullptr), nullptr);
  int tabStops[] = {28, 150}; // in the units of dialogs: behind the number, behind the name
  SendMessageA(list, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  SendMessageA(list, LB_SETTABSTOPS, std::size(tabStops), reinterpret_cast<LPARAM>(tabStops));
  return list;
}

} // namespace

EventsWindow::EventsWindow(SV::MDIFrame & frame, EventLog & log)
    : MDIChild(frame, text(Text::TitleEvents)), log_(log), font_(GetFont().CreateSystemFont()),
      list_(makeList(GethWnd(), font_)) {
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
}

} // namespace modeler
