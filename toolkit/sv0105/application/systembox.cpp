#include "sv/systembox.hpp"

#include "sv/focusreturn.hpp"
#include "sv/waitpause.hpp"
#include "sv/window.hpp"
#include "tools/winapi.hpp"

namespace SV {
namespace {

struct Answer {
  int button;
  DWORD error;
};

Answer ask(char const * text, char const * caption, unsigned style, BoxOwner owner) {
  WaitPause const pause;
  FocusReturn const focus;
  Window const * const window = owner ? owner() : nullptr;
  int const button = MessageBoxA(window ? window->GethWnd() : nullptr, text, caption, style);
  return {button, GetLastError()};
}

} // namespace

int ShowBoxOrLog(BoxText const & text, char const * caption, unsigned style, BoxOwner owner) {
  if (Application::IsModalDialogSuppression())
    Application::ModalDialogSuppressionLog(text.logged);
  return ShowBoxOrNothing(text.shown, caption, style, owner);
}

int ShowBoxOrNothing(char const * text, char const * caption, unsigned style, BoxOwner owner) {
  bool const suppressed = Application::IsModalDialogSuppression();
  Answer const answer = suppressed ? Answer{0, 0} : ask(text, caption, style, owner);
  SetLastError(answer.error);
  return answer.button;
}

} // namespace SV
