#include "frame/console.hpp"

#include "aappinfo.hpp"
#include "aevents.hpp"
#include "tools/winapi.hpp"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>

namespace kivara {
namespace {

constexpr UINT kNoConsoleAction = 4711;

KivDynamicConsoleListener * consoleListener = nullptr;

/// Runs on a thread of the system.
BOOL WINAPI answerControlEvent(DWORD event) {
  ControlAnswer const answer = controlAnswer(event);
  if (answer.text != nullptr)
    std::fputs(answer.text, stdout);
  if (!answer.ends)
    return TRUE;
  KivExitAppEvent("console").trigger();
  std::exit(1);
}

void closeDynamicConsole() {
  delete consoleListener;
  consoleListener = nullptr;
  SetConsoleCtrlHandler(answerControlEvent, FALSE);
  FreeConsole();
}

/// The whole process shares the runtime's array of streams, so overwriting an entry redirects all its users.
void rebind(FILE * standard, DWORD handleId, char const * mode) {
  int const descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(GetStdHandle(handleId)), _O_TEXT);
  FILE * const stream = descriptor != -1 ? _fdopen(descriptor, mode) : nullptr;
  if (stream == nullptr)
    return;
  *standard = *stream;
  std::setvbuf(standard, nullptr, _IONBF, 0);
}

void setTitle() {
  char title[256];
  std::snprintf(title, sizeof title, "[KIVARA %s] - dynamic console", Kiv_GetBuildVersionString().c_str());
  SetConsoleTitleA(title);
}

} // namespace

ControlAnswer controlAnswer(unsigned long event) {
  switch (event) {
  case CTRL_C_EVENT: return {"[exception] Ctrl+C was pressed\n", false};
  case CTRL_BREAK_EVENT: return {"[exception] Crtl+Break was pressed\n", false};
  case CTRL_CLOSE_EVENT: return {"[exception] Close Event received\n", false};
  case CTRL_LOGOFF_EVENT: return {"[exception] LogOff Event received\n", true};
  case CTRL_SHUTDOWN_EVENT: return {"[exception] ShutDown Event received\n", true};
  default: return {nullptr, true};
  }
}

void openDynamicConsole() {
  if (!AllocConsole())
    FatalAppExitA(kNoConsoleAction, "AllocConsole failed");
  std::atexit(closeDynamicConsole);
  rebind(stdin, STD_INPUT_HANDLE, "r");
  rebind(stdout, STD_OUTPUT_HANDLE, "w");
  rebind(stderr, STD_ERROR_HANDLE, "w");
  setTitle();
  SetConsoleCtrlHandler(answerControlEvent, TRUE);
  consoleListener = new KivDynamicConsoleListener;
}

} // namespace kivara
