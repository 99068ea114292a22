#include "sv/edit.hpp"

#include "controls/controlspec.hpp"
#include "sv/fixed.hpp"

#include <string>
#include <utility>

namespace SV {
namespace {

// The system takes minutes to lay out a line of a million characters.
constexpr unsigned long kLongestLine = 256;
constexpr unsigned long kLongestPage = 1 << 20;

detail::WindowSpec editSpec(Window * parent, WinBits style) {
  DWORD system = WS_TABSTOP;
  system |= (style & WB_MULTILINE) != 0 ? ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL : ES_AUTOHSCROLL;
  if (style & WB_READONLY)
    system |= ES_READONLY;
  else if (style & WB_MULTILINE)
    system |= ES_WANTRETURN;
  detail::WindowSpec spec = detail::controlSpec("EDIT", parent, style & ~WB_BORDER, system);
  if (style & WB_BORDER)
    spec.exStyle |= WS_EX_CLIENTEDGE;
  return spec;
}

/// The lines of a text as the system wants them.
String systemLines(String const & text, char const * lineEnd) {
  std::string result;
  for (char const * at = text.c_str(); *at != '\0'; ++at) {
    if (*at == '\n')
      result += lineEnd;
    else if (*at != '\r' || at[1] != '\n')
      result += *at;
  }
  return String(result.c_str());
}

/// The lines of the system as a text.
String ownLines(String const & text) {
  std::string result;
  for (char const * at = text.c_str(); *at != '\0'; ++at)
    if (*at != '\r' || at[1] != '\n')
      result += *at;
  return String(result.c_str());
}

} // namespace

Edit::Edit(Window * parent, WinBits style) : Control(editSpec(parent, style)), style_(style), maxTextLen_(0) {
  ChangeMaxTextLen((style & WB_MULTILINE) != 0 ? kLongestPage : kLongestLine);
}

Edit::~Edit() { Window::Destroy(); }

String Edit::GetText() const { return ownLines(Control::GetText()); }

void Edit::SetText(String const & text) {
  isSetting_ = true;
  Control::SetText(systemLines(text, (style_ & WB_MULTILINE) != 0 ? "\r\n" : " "));
  isSetting_ = false;
}

unsigned long Edit::ChangeMaxTextLen(unsigned long length) {
  if (GethWnd())
    SendMessageA(GethWnd(), EM_SETLIMITTEXT, length, 0);
  return std::exchange(maxTextLen_, length);
}

void Edit::SelectAll() {
  if (GethWnd())
    SendMessageA(GethWnd(), EM_SETSEL, 0, -1);
}

void Edit::Modify() {
  if (ModifyHandler const handler = modifyHandler_) // a copy: it may be changed while it runs, or die with the field
    handler(this);
}

Edit::ModifyHandler Edit::ChangeModifyHdl(ModifyHandler handler) {
  return std::exchange(modifyHandler_, std::move(handler));
}

bool Edit::Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) {
  if (message != WM_COMMAND)
    return Control::Notify(message, wParam, lParam, result);
  result = 0;
  if (HIWORD(wParam) == EN_CHANGE && !isSetting_)
    Modify();
  return true;
}

/// The system's field for many lines would keep Tab and Escape for itself, and close a dialog past its CancelButton.
long long Edit::HandleMessage(unsigned message, unsigned long long wParam, long long lParam) {
  long long const result = Control::HandleMessage(message, wParam, lParam);
  if (message != WM_GETDLGCODE || (style_ & WB_MULTILINE) == 0)
    return result;
  auto const * const key = reinterpret_cast<MSG const *>(lParam);
  bool const isReturn = key && key->message == WM_KEYDOWN && key->wParam == VK_RETURN;
  bool const isOwn = isReturn && (style_ & WB_READONLY) == 0;
  return (result & ~static_cast<long long>(DLGC_WANTALLKEYS | DLGC_WANTTAB)) | (isOwn ? DLGC_WANTMESSAGE : 0);
}

} // namespace SV
