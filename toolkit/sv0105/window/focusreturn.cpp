#include "sv/focusreturn.hpp"

#include "tools/winapi.hpp"

namespace SV {
namespace {

bool isGivingBack = false;

bool mayHaveFocus(HWND window) {
  HWND const top = window ? GetAncestor(window, GA_ROOT) : nullptr;
  return top && IsWindowVisible(window) && IsWindowEnabled(window) && IsWindowEnabled(top);
}

} // namespace

FocusReturn::FocusReturn() : focus_(GetFocus()) {}

FocusReturn::~FocusReturn() {
  // A program that shows a box whenever it gets the keyboard would never come back from here.
  if (isGivingBack || GetFocus() == focus_ || !mayHaveFocus(focus_))
    return;
  isGivingBack = true;
  SetFocus(focus_);
  isGivingBack = false;
}

} // namespace SV
