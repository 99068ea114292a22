// Records the steps of start-up and end in their order, and at each one what is already there.

#include "frame_program.hpp"

#include "acmdline.hpp"
#include "aevent_dispatcher.hpp"
#include "aevents.hpp"
#include "aplatfrm.hpp"
#include "support/imports/import_spy.hpp"
#include "sv/font.hpp"
#include "tools/international.hpp"
#include "tools/winapi.hpp"

using support::SpiedCall;

namespace {

/// One letter for each thing that is valid: c the command line, f the font, s the suppression, d the start directory,
/// l the labels of the buttons, e the end has begun.
std::string valid() {
  std::string letters;
  auto const add = [&letters](bool is, char letter) { letters += is ? letter : '-'; };
  add(KivCmdline::doTracing(), 'c');
  add(SV::Application::GetAppFont().GetName().Len() != 0, 'f');
  add(SV::Application::IsShowWindowSuppression(), 's');
  add(Kiv_GetStartCWD(true).Len() != 0, 'd');
  add(SV::Application::GetAppInternational().GetOKButtonText() == SV::String("Accept"), 'l');
  add(KivApplicationInterface::IsAfterMain(), 'e');
  return letters;
}

void step(std::string const & what) { record("%s %s", valid().c_str(), what.c_str()); }

void watch(char const * function) {
  support::spyOnImport("kivara.dll", function, [function](SpiedCall const &) { step(function); });
}

// After the application, what is instrumented to count its lines writes the counts.
bool destroyed = false;

void watchFiles() {
  support::spyOnImport("kivara.dll", "fopen",
                       [](SpiedCall const & call) { step(std::string("fopen ") + call.text(0) + ' ' + call.text(1)); });
  support::spyOnImport("kivara.dll", "fclose", [](SpiedCall const &) {
    if (!destroyed)
      step("fclose");
  });
}

void const * consoleListener = nullptr;

/// The listener that a dynamic console has, among those of the end.
void findConsoleListener() {
  auto const entry = KivEventDispatcher::Instance().find(KIV_EVENT_AppExit);
  if (entry == KivEventDispatcher::Instance().end())
    return;
  for (KivEventAction const * action : entry->second->actions())
    if (auto const * const listener = dynamic_cast<KivDynamicConsoleListener *>(action->listener))
      consoleListener = listener;
}

void watchConsoleListener() {
  support::spyOnImport("kivara.dll", "_ZdlPvy", [](SpiedCall const & call) {
    if (consoleListener != nullptr && call.arguments[0] == reinterpret_cast<std::uintptr_t>(consoleListener))
      record("console listener deleted");
  });
}

/// The result comes first among the arguments, then the identifier.
void watchTexts() {
  support::spyOnImport("kivara.dll", "LoadString", [](SpiedCall const & call) {
    char text[32];
    auto const & id = *reinterpret_cast<SV::ResId const *>(call.arguments[1]);
    std::snprintf(text, sizeof(text), "LoadString %lx", id.GetId());
    step(text);
  });
}

void watchAll() {
  for (char const * const function :
       {"GetCommandLineA", "InitSV", "SetPrinterSwitches", "AllocConsole", "_open_osfhandle", "SetConsoleTitleA",
        "SetConsoleCtrlHandler", "ChangeAppFont", "SetModalDialogSuppression", "SetModalDialogSuppressionLogfileName",
        "SetShowWindowSuppression", "SetPoolFile", "_getpid", "GetCurrentDirectoryA", "ChangeAppInternational",
        "SetResManager", "DeInitSV", "FreeConsole", "exit"})
    watch(function);
  watchFiles();
  watchConsoleListener();
  watchTexts();
}

class OrderProgram : public FrameProgram {
public:
  OrderProgram() {
    watchAll();
    step("constructed");
  }
  ~OrderProgram() override {
    WNDCLASSEXA description{};
    description.cbSize = sizeof(description);
    bool const up = GetClassInfoExA(GetModuleHandleA(nullptr), "SV0105.Listener", &description) != 0;
    record(up ? "destroyed, toolkit up" : "destroyed, toolkit down");
    destroyed = true;
  }

  int prepareApplication() override {
    step("prepareApplication");
    findConsoleListener();
    return FrameProgram::prepareApplication();
  }

  int runApplication() override {
    step("runApplication");
    return FrameProgram::runApplication();
  }
};

OrderProgram program;

} // namespace
