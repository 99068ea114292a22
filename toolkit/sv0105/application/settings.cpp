#include "sv/application.hpp"

#include "application/pointer.hpp"
#include "application/toolkit.hpp"
#include "handles/handle.hpp"
#include "window/allwindows.hpp"

#include <cstdio>
#include <iterator>
#include <utility>

namespace SV {

using detail::toolkit;

void Application::Wait(unsigned short count) {
  bool const changes = (count != 0) != (toolkit().wait != 0);
  toolkit().wait = count;
  if (changes)
    detail::updatePointer();
}

unsigned short Application::IsWait() { return toolkit().wait; }

void Application::Beep(unsigned short kind) {
  constexpr UINT kSounds[] = {MB_OK, MB_ICONINFORMATION, MB_ICONQUESTION, MB_ICONERROR, MB_ICONWARNING};
  MessageBeep(kSounds[kind < std::size(kSounds) ? kind : BEEP_DEFAULT]);
}

Help * Application::ChangeHelp(Help * help) { return std::exchange(toolkit().help, help); }

Help * Application::GetHelp() { return toolkit().help; }

unsigned short Application::EnableHelp(unsigned short modes) { return std::exchange(toolkit().helpModes, modes); }

Font Application::ChangeAppFont(Font const & font) {
  Font former = std::exchange(toolkit().font, Font(font));
  toolkit().dialogCharacter = Size();
  detail::applyApplicationFont();
  return former;
}

Font const & Application::GetAppFont() { return toolkit().font; }

void Application::SetModalDialogSuppression(bool on) { toolkit().dialogSuppression = on; }

bool Application::IsModalDialogSuppression() { return toolkit().dialogSuppression; }

void Application::SetModalDialogSuppressionLogfileName(String const & name) { toolkit().dialogLog = name; }

String const & Application::GetModalDialogSuppressionLogfileName() { return toolkit().dialogLog; }

void Application::ModalDialogSuppressionLog(char const * text) {
  if (toolkit().dialogLog.Len() == 0)
    return;
  // Opened for each text, so that the log is complete however the process ends.
  handles::Stream const log(std::fopen(toolkit().dialogLog.c_str(), "at"));
  if (!log)
    return;
  std::fputs(text ? text : "", log.get());
  std::fputc('\n', log.get());
}

void Application::SetShowWindowSuppression(bool on) { toolkit().windowSuppression = on; }

bool Application::IsShowWindowSuppression() { return toolkit().windowSuppression; }

Window * Application::GetAppWindow() { return toolkit().appWindow; }

void Application::SetAppWindow(Window * window) { toolkit().appWindow = window; }

} // namespace SV
