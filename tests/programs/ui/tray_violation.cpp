// tray_violation: violates a limit of the tray icon, with the runtime's own reaction; then says that it goes on.
// With the word "quiet" it does so under suppression of dialogs.
#include "asystray.hpp"
#include "sv/application.hpp"

#include <cstdio>

int main(int argc, char **) {
  SV::Application::SetModalDialogSuppression(argc > 1);
  KivSystemTray tray;
  tray.ShowBalloon("Text", "", 0, 9);
  std::printf("goes on\n");
}
