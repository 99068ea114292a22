#include "activity.hpp"

namespace endurance {

std::vector<Plan> const & plans() {
  static std::vector<Plan> const all = {
      // First: its queue has to be there before anything uses printers.
      {"printing", printPages, 1, 2, false},       {"languages", changeLanguages, 0.2, 6, false},
      {"windows", openWindows, 0.25, 6, false},    {"themes", switchThemes, 0.2, 6, false},
      {"events", sendEvents, 0.05, 12, false},     {"plug-ins", loadPlugins, 0.3, 4, false},
      {"far calls", callFar, 0.05, 12, false},     {"temporary files", makeTemporaryFiles, 0.1, 12, false},
      {"texts", matchTexts, 0.05, 12, false},      {"boxes", showBoxes, 0.5, 3, false},
      {"pictures", paintPictures, 0.1, 12, false}, {"tray icon", showTrayIcon, 0.5, 3, false},
      {"drags", dragTexts, 0.05, 12, false},       {"logs", writeLogs, 0.2, 6, true},
      {"requests", requestPages, 0.2, 4, true},    {"processes", startProcesses, 0.5, 3, true},
      {"values", calculate, 0.05, 12, true},
  };
  return all;
}

} // namespace endurance
