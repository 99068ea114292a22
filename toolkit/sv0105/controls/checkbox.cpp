#include "sv/checkbox.hpp"

#include "controls/controlspec.hpp"

#include <utility>

namespace SV {

CheckBox::CheckBox(Window * parent, WinBits style)
    : LabelControl(detail::controlSpec("BUTTON", parent, style, WS_TABSTOP | BS_AUTOCHECKBOX)) {}

bool CheckBox::IsChecked() const { return GethWnd() && SendMessageA(GethWnd(), BM_GETCHECK, 0, 0) == BST_CHECKED; }

void CheckBox::Check(bool isChecked) {
  if (GethWnd())
    SendMessageA(GethWnd(), BM_SETCHECK, isChecked ? BST_CHECKED : BST_UNCHECKED, 0);
}

void CheckBox::Click() {
  if (ClickHandler const handler = clickHandler_) // a copy: it may be changed while it runs, or die with the box
    handler(this);
}

CheckBox::ClickHandler CheckBox::ChangeClickHdl(ClickHandler handler) {
  return std::exchange(clickHandler_, std::move(handler));
}

bool CheckBox::Notify(unsigned message, unsigned long long wParam, long long lParam, long long & result) {
  if (message != WM_COMMAND)
    return LabelControl::Notify(message, wParam, lParam, result);
  result = 0;
  if (HIWORD(wParam) == BN_CLICKED)
    Click();
  return true;
}

} // namespace SV
