#include "windows/finddialog.hpp"

#include "texts/findtexts.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace modeler {
namespace {

constexpr WPARAM kLongestText = 255;

// In units of dialogs, as are the places: they grow with the font and the scale of the screen.
constexpr SV::Size kArea = {230, 84};

/// A control that the window library has no class for.
HWND makeControl(SV::Window const & parent, char const * className, DWORD style, HFONT font) {
  HWND const control = CreateWindowExA(style & ES_AUTOHSCROLL ? WS_EX_CLIENTEDGE : 0, className, "",
                                       style | WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 0, 0, parent.GethWnd(),
                                       nullptr, GetModuleHandleA(nullptr), nullptr);
  SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  return control;
}

/// The system marks mnemonics by "&".
String systemLabel(String const & label) {
  String result = label;
  return result.replaceAll('~', '&');
}

} // namespace

FindDialog::Place const FindDialog::kWhatLabel{{7, 9}, {66, 8}};
FindDialog::Place const FindDialog::kWhat{{75, 7}, {148, 13}};
FindDialog::Place const FindDialog::kKindLabel{{7, 27}, {66, 8}};
FindDialog::Place const FindDialog::kKind{{75, 25}, {148, 60}};
FindDialog::Place const FindDialog::kCaseSensitive{{75, 44}, {148, 10}};
FindDialog::Place const FindDialog::kOk{{99, 63}, {60, 14}};
FindDialog::Place const FindDialog::kCancel{{163, 63}, {60, 14}};

FindDialog::FindDialog(SV::Window & owner, Search const & former)
    : ModalDialog(&owner), font_(GetFont().CreateSystemFont()),
      what_(makeControl(*this, "EDIT", ES_AUTOHSCROLL, font_)),
      caseSensitive_(makeControl(*this, "BUTTON", BS_AUTOCHECKBOX, font_)) {
  SetText(plain(text(kFind)));
  ChangeOutputSizePixel(LogicToPixel(kArea, SV::MAP_APPFONT));
  whatLabel_.SetText(text(kFindWhat));
  kindLabel_.SetText(text(kFindKind));
  for (Text const kind : {kFindPlain, kFindWildcards, kFindExpression})
    kind_.InsertEntry(text(kind));
  kind_.SelectEntryPos(static_cast<long>(former.kind));
  ok_.SetText(text(kFindButton));
  SendMessageA(what_, EM_LIMITTEXT, kLongestText, 0);
  SetWindowTextA(what_, former.what.c_str());
  SetWindowTextA(caseSensitive_, systemLabel(text(kFindCase)).c_str());
  SendMessageA(caseSensitive_, BM_SETCHECK, former.isCaseSensitive ? BST_CHECKED : BST_UNCHECKED, 0);
  place(whatLabel_, kWhatLabel);
  place(what_, kWhat);
  place(kindLabel_, kKindLabel);
  place(kind_, kKind);
  place(caseSensitive_, kCaseSensitive);
  place(ok_, kOk);
  place(cancel_, kCancel);
  showOk();
}

FindDialog::~FindDialog() {
  Window::Destroy();
  DeleteObject(font_);
}

void FindDialog::place(SV::Control & control, Place const & units) {
  place(control.GethWnd(), units);
  control.Show();
}

void FindDialog::place(HWND control, Place const & units) {
  SV::Size const corner = LogicToPixel(SV::Size{units.corner.x, units.corner.y}, SV::MAP_APPFONT);
  SV::Size const size = LogicToPixel(units.size, SV::MAP_APPFONT);
  MoveWindow(control, corner.width, corner.height, size.width, size.height, FALSE);
}

void FindDialog::showOk() { ok_.SetEnabled(GetWindowTextLengthA(what_) > 0); }

Search FindDialog::GetSearch() const {
  char what[kLongestText + 1] = "";
  GetWindowTextA(what_, what, sizeof what);
  return {what, static_cast<SearchKind>(kind_.GetSelectEntryPos()),
          SendMessageA(caseSensitive_, BM_GETCHECK, 0, 0) == BST_CHECKED};
}

long long FindDialog::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  if (message == WM_COMMAND && HIWORD(wParam) == EN_CHANGE && reinterpret_cast<HWND>(lParam) == what_)
    showOk();
  return ModalDialog::HandleMessage(message, wParam, lParam);
}

} // namespace modeler
