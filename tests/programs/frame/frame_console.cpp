// A product and its dynamic console. It records whether it has one, waits for a file "go" in its working folder, and
// then takes the control events of KIVARA_CONTROL one after the other: numbers reach the system's own routine for them
// on a thread of its own, "c" is raised as Ctrl+C, "read" reads a line of the standard input.
// In the end it prints a line on each output stream. KIVARA_TAKEN=1: the process has a console before the frame wants
// one. KIVARA_HANDLELESS=1: the runtime refuses the console's handles. KIVARA_END=1: records what takes the console down.

#include "frame_program.hpp"

#include "aevent_dispatcher.hpp"
#include "support/imports/import_spy.hpp"
#include "support/memory/allocation.hpp"
#include "tools/winapi.hpp"

#include <cstring>
#include <sstream>

namespace {

bool hasConsole() {
  DWORD processes[4];
  return GetConsoleProcessList(processes, 4) != 0;
}

/// The routine that the system starts its thread with.
void control(unsigned long event) {
  auto const routine = reinterpret_cast<LPTHREAD_START_ROUTINE>(
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "CtrlRoutine")));
  void * const argument = reinterpret_cast<void *>(static_cast<std::uintptr_t>(event));
  HANDLE const thread = CreateThread(nullptr, 0, routine, argument, 0, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

void readLine() {
  char line[100] = "";
  std::fgets(line, sizeof(line), stdin);
  line[std::strcspn(line, "\n")] = '\0';
  record("read %s", line);
}

void take(std::string const & event) {
  if (event == "read")
    readLine();
  else if (event == "c")
    GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
  else
    control(std::strtoul(event.c_str(), nullptr, 10));
}

void waitForGo() {
  while (GetFileAttributesA("go") == INVALID_FILE_ATTRIBUTES)
    Sleep(10);
}

/// The console's listener, which is the only one of that event here; null while there is none.
KivEventListener const * listenerOnTheBus() {
  auto const & dispatcher = KivEventDispatcher::Instance();
  auto const entry = dispatcher.find(KIV_EVENT_AppInitialized);
  bool const isThere = entry != dispatcher.end() && !entry->second->actions().empty();
  return isThere ? entry->second->actions().front()->listener : nullptr;
}

KivEventListener const * listener = nullptr;

void findListener() {
  listener = listenerOnTheBus();
  record("listener is there: %d", support::GuardPages::guards(listener));
}

void watchEnd() {
  new support::GuardPages; // up to the end of the process
  support::spyOnImport("kivara.dll", "SetConsoleCtrlHandler", [](support::SpiedCall const & call) {
    bool const isHeard = !KivEventDispatcher::isShutDown() && listenerOnTheBus() != nullptr;
    record("handler added: %d, listener is heard: %d", static_cast<BOOL>(call.arguments[1]), isHeard);
  });
  support::spyOnImport("kivara.dll", "FreeConsole", [](support::SpiedCall const &) {
    record("console freed, listener is there: %d", support::GuardPages::guards(listener));
  });
}

class ConsoleProgram : public FrameProgram {
public:
  ConsoleProgram() {
    if (number("TAKEN") != 0)
      AllocConsole();
    if (number("HANDLELESS") != 0)
      support::spyOnImport("kivara.dll", "_open_osfhandle", [](support::SpiedCall & call) {
        call.arguments[0] = reinterpret_cast<std::uintptr_t>(INVALID_HANDLE_VALUE);
      });
    if (number("END") != 0)
      watchEnd();
    support::spyOnImport("kivara.dll", "FatalAppExitA", [](support::SpiedCall const & call) {
      record("fatal %d %s", static_cast<int>(call.arguments[0]), call.text(1));
    });
  }
  ~ConsoleProgram() override { record("destroyed"); }

private:
  void run() override {
    record("console %d, window %d", hasConsole(), GetConsoleWindow() != nullptr);
    waitForGo();
    if (number("END") != 0)
      findListener();
    std::istringstream events(setting("CONTROL"));
    for (std::string event; events >> event;) {
      take(event);
      record("after %s", event.c_str());
    }
    std::printf("a line of output\n");
    std::fprintf(stderr, "a line of errors\n");
  }
};

ConsoleProgram program;

} // namespace
