#include "aebox.hpp"
#include "awinstack.hpp"
#include "sv/application.hpp"
#include "sv/focusreturn.hpp"
#include "sv/waitpause.hpp"
#include "tools/containers.hpp"
#include "ui/cleanedup.hpp"

using SV::Application;
using SV::String;

namespace {

constexpr unsigned short kPreviousItem = 1;
constexpr unsigned short kNextItem = 2;

/// The text that was shown for each key.
using ShownMessages = IKeySortedSet<String, String>;

kivara::CleanedUp<ShownMessages> shownMessages;

String keyOf(String const & text) {
  char const * const bracket = SV::h_strchr(text.c_str(), ']');
  return bracket != nullptr ? text.substr(0, static_cast<int>(bracket - text.c_str()) + 1) : String();
}

void remember(String const & text) { shownMessages.get().emplace(keyOf(text), text); }

bool hasText(ShownMessages const & messages, String const & text) {
  for (auto const & [key, shown] : messages)
    if (shown == text)
      return true;
  return false;
}

bool isRemembered(String const & text, KivErrorBoxType type) {
  ShownMessages const * const messages = shownMessages.existing();
  if (messages == nullptr || messages->empty())
    return false;
  switch (type) {
  case ShowOncePerKey: return messages->count(keyOf(text)) != 0;
  case ShowOncePerText: return hasText(*messages, text);
  default: return false;
  }
}

void logSuppressed(String const & title, String const & message) {
  if (Application::GetModalDialogSuppressionLogfileName().Len() != 0)
    Application::ModalDialogSuppressionLog(("KivErrorBox::Execute()\n" + title + "\n" + message).c_str());
}

} // namespace

void KivErrorBox::RememberMessage(String const & text) { remember(text); }

int KivErrorBox::IsShownMessage(String const & text, KivErrorBoxType type) { return isRemembered(text, type) ? 1 : 0; }

void KivErrorBox::ClearShownErrorBoxesTable() {
  if (shownMessages.existing() != nullptr)
    shownMessages.get().clear();
}

long KivErrorBox::Execute(KivErrorBoxType type) {
  String const message = text.GetText();
  if (Application::IsModalDialogSuppression()) {
    logSuppressed(GetText(), message);
    return SV::RET_CANCEL;
  }
  if (isRemembered(message, type))
    return kAlreadyShown;
  if (type == ShowOncePerKey || type == ShowOncePerText)
    remember(message);
  SV::WaitPause const pause;
  // Destroyed after the guard below, until which the window that had the keyboard is disabled.
  SV::FocusReturn const focus;
  KivAutoAppWindowDisable const appWindowDisabled;
  SV::Accelerator arrows;
  arrows.InsertItem(kPreviousItem, SV::KEY_LEFT);
  arrows.InsertItem(kNextItem, SV::KEY_RIGHT);
  arrows.PushSelectHdl([this](SV::Accelerator * accelerator) { return AccelHandler(accelerator); });
  Application::InsertAccel(&arrows, SV::ACCEL_WITH_DIALOG);
  Application::Beep(SV::BEEP_ERROR);
  focusFirst();
  long const result = ModalDialog::Execute();
  Application::RemoveAccel(&arrows);
  return result;
}

/// The keyboard begins with the default button, wherever it is in the row.
void KivErrorBox::focusFirst() {
  struct {
    unsigned long bit;
    SV::PushButton * button;
  } const rows[] = {{WB_DEF_OK, okButton.get()},
                    {WB_DEF_CANCEL, cancelButton.get()},
                    {WB_DEF_RETRY, retryButton.get()},
                    {WB_DEF_YES, yesButton.get()},
                    {WB_DEF_NO, noButton.get()}};
  for (auto const & row : rows)
    if ((style & row.bit) != 0 && row.button != nullptr && row.button->IsEnabled()) {
      row.button->GrabFocus();
      return;
    }
}

KivAutoAppWindowDisable::KivAutoAppWindowDisable() {
  SV::Window * const window = Application::GetAppWindow();
  if (window == nullptr)
    return;
  if (window->IsEnabled()) {
    window->Disable();
    wasEnabled = true;
  }
  bringToTop = window->IsVisible() && window == Kiv_GetTopWindow(0);
}

KivAutoAppWindowDisable::~KivAutoAppWindowDisable() {
  SV::Window * const window = Application::GetAppWindow(); // it may have gone meanwhile
  if (window == nullptr)
    return;
  if (wasEnabled)
    window->Enable();
  if (restoreTop && bringToTop)
    window->ToTop();
}
