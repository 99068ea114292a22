// Ends badly: "crasher read" reads address 16, "crasher break" stops at a breakpoint, "crasher hang" never ends,
// "crasher spawn" starts itself with "hang", prints that process's id and hangs too. It prints "ready" first.

#include "tools/winapi.hpp"

#include <cstdio>
#include <cstring>

namespace {

void spawn() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, sizeof(path));
  char line[] = "crasher hang";
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION made{};
  CreateProcessA(path, line, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &made);
  std::printf("child=%lu\n", made.dwProcessId);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  std::puts("ready");
  if (std::strcmp(arguments, "read") == 0) {
    int const volatile * const volatile nowhere = reinterpret_cast<int *>(16);
    return *nowhere;
  }
  if (std::strcmp(arguments, "break") == 0) {
    DebugBreak();
    return 7;
  }
  if (std::strcmp(arguments, "spawn") == 0)
    spawn();
  Sleep(INFINITE);
  return 0;
}
