#include "sv/button.hpp"

#include "application/helpkeys.hpp"
#include "controls/controlspec.hpp"
#include "sv/application.hpp"
#include "sv/dialog.hpp"
#include "window/dialogaround.hpp"

#include <utility>

namespace SV {
namespace {

void endDialogAround(Window const & button, long result) {
  Dialog * const dialog = detail::dialogAround(button.GethWnd());
  if (auto * const modal = dynamic_cast<ModalDialog *>(dialog); modal && modal->IsInExecute())
    modal->EndDialog(result);
  else if (dialog)
    dialog->Close();
}

} // namespace

PushButton::PushButton(Window * parent, WinBits style) : PushButton(parent, style, 0) {}

PushButton::PushButton(Window * parent, WinBits style, unsigned short id)
    : LabelControl(detail::controlSpec(
          "BUTTON", parent, style, WS_TABSTOP | (style & WB_DEFAULT_BUTTON ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON), id)) {
  Dialog const * const dialog = style & WB_DEFAULT_BUTTON ? detail::dialogAround(GethWnd()) : nullptr;
  if (dialog)
    SendMessageA(dialog->GethWnd(), DM_SETDEFID, static_cast<WPARAM>(GetDlgCtrlID(GethWnd())), 0);
}

void PushButton::Click() { CallClickHdl(); }

PushButton::ClickHandler PushButton::ChangeClickHdl(ClickHandler handler) {
  return std::exchange(clickHandler_, std::move(handler));
}

bool PushButton::CallClickHdl() {
  ClickHandler const handler = clickHandler_; // a copy: it may be changed while it runs, or die with the button
  if (handler)
    handler(this);
  return static_cast<bool>(handler);
}

bool PushButton::Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) {
  if (message != WM_COMMAND)
    return LabelControl::Notify(message, wParam, lParam, result);
  result = 0;
  // Return and Escape send it for a disabled button too.
  if (HIWORD(wParam) == BN_CLICKED && IsEnabled())
    Click();
  return true;
}

OKButton::OKButton(Window * parent, WinBits style) : PushButton(parent, style, IDOK) {
  LabelControl::SetText(Application::GetAppInternational().GetOKButtonText());
}

void OKButton::Click() {
  if (!CallClickHdl())
    endDialogAround(*this, RET_OK);
}

CancelButton::CancelButton(Window * parent, WinBits style) : PushButton(parent, style, IDCANCEL) {
  LabelControl::SetText(Application::GetAppInternational().GetCancelButtonText());
}

void CancelButton::Click() {
  if (!CallClickHdl())
    endDialogAround(*this, RET_CANCEL);
}

HelpButton::HelpButton(Window * parent, WinBits style) : PushButton(parent, style, IDHELP) {
  LabelControl::SetText(Application::GetAppInternational().GetHelpButtonText());
}

void HelpButton::Click() {
  if (!CallClickHdl())
    detail::startHelp(this);
}

} // namespace SV
