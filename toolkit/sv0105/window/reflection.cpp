#include "window/reflection.hpp"

#include "sv/control.hpp"
#include "window/handlemap.hpp"
#include "window/windowaccess.hpp"

namespace SV::detail {
namespace {

/// The system window that a message of a parent is about; null for all other messages.
HWND subjectOf(unsigned message, long long lParam) {
  switch (message) {
  case WM_COMMAND:
  case WM_CTLCOLOREDIT:
  case WM_CTLCOLORLISTBOX:
  case WM_CTLCOLORSTATIC:
  case WM_CTLCOLORBTN: return reinterpret_cast<HWND>(lParam);
  case WM_NOTIFY: return reinterpret_cast<NMHDR const *>(lParam)->hwndFrom;
  case WM_DRAWITEM: return reinterpret_cast<DRAWITEMSTRUCT const *>(lParam)->hwndItem;
  default: return nullptr;
  }
}

} // namespace

bool isForControl(unsigned message, unsigned long long wParam, long long lParam, long long & result) {
  HWND const subject = subjectOf(message, lParam);
  auto * const control = subject ? dynamic_cast<Control *>(windowOf(subject)) : nullptr;
  return control && WindowAccess::notify(*control, message, wParam, lParam, result);
}

} // namespace SV::detail
