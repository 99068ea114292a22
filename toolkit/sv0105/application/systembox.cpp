#include "sv/systembox.hpp"

#include "sv/waitpause.hpp"
#include "sv/window.hpp"
#include "window/focusreturn.hpp"

namespace SV {

int ShowBoxOrLog(char const * text, char const * caption, unsigned style, BoxOwner owner) {
  if (!Application::IsModalDialogSuppression())
    return ShowBoxOrNothing(text, caption, style, owner);
  Application::ModalDialogSuppressionLog(text);
  return 0;
}

int ShowBoxOrNothing(char const * text, char const * caption, unsigned style, BoxOwner owner) {
  if (Application::IsModalDialogSuppression())
    return 0;
  WaitPause const pause;
  detail::FocusReturn const focus;
  Window const * const window = owner ? owner() : nullptr;
  return MessageBoxA(window ? window->GethWnd() : nullptr, text, caption, style);
}

} // namespace SV
