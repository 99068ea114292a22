#include "commands/program/crashcommand.hpp"

#include "dialogs/question.hpp"
#include "texts/diagnosticstexts.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace modeler {
namespace {

/// Where there is no memory. It is not in the function, where the compiler would see the fault coming.
int volatile * volatile nowhere = nullptr;

/// Where reports are written to.
String reportFolder() {
  char folder[MAX_PATH + 1] = "";
  GetTempPathA(sizeof folder, folder);
  return folder;
}

/// Writes where there is no memory. The journal has the line before, to compare it with what support finds.
[[gnu::noinline, gnu::no_sanitize_undefined]] void crashOnDemand(Journal & journal) {
  journal.Add("crash on demand in line " + String(__LINE__ + 1));
  *nowhere = 1;
}

} // namespace

Command crashCommand(SV::Window & frame, Journal & journal) {
  auto const crash = [&frame, &journal] {
    if (agrees(frame, filled(kReallyCrash, reportFolder()), SV::WB_DEF_NO))
      crashOnDemand(journal);
  };
  return {MENU_HELP, HELP_CRASH, named(kCrash), crash};
}

} // namespace modeler
