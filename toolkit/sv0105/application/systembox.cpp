#include "sv/systembox.hpp"

#include "sv/waitpause.hpp"
#include "sv/window.hpp"
#include "window/focusreturn.hpp"

namespace SV {

int ShowBoxOrLog(char const * text, char const * caption, unsigned style, Window const * owner) {
  if (!Application::IsModalDialogSuppression())
    return ShowBoxOrNothing(text, caption, style, owner);
  Application::ModalDialogSuppressionLog(text);
  return 0;
}

int ShowBoxOrNothing(char const * text, char const * caption, unsigned style, Window const * owner) {
  if (Application::IsModalDialogSuppression())
    return 0;
  WaitPause const pause;
  detail::FocusReturn const focus;
  return MessageBoxA(owner ? owner->GethWnd() : nullptr, text, caption, style);
}

} // namespace SV
