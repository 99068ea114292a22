#include "window/focusreturn.hpp"

namespace SV::detail {
namespace {

bool mayHaveFocus(HWND window) {
  HWND const top = window ? GetAncestor(window, GA_ROOT) : nullptr;
  return top && IsWindowVisible(window) && IsWindowEnabled(window) && IsWindowEnabled(top);
}

} // namespace

FocusReturn::FocusReturn() : focus_(GetFocus()) {}

FocusReturn::~FocusReturn() {
  if (GetFocus() != focus_ && mayHaveFocus(focus_))
    SetFocus(focus_);
}

} // namespace SV::detail
