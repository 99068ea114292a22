// Sets a filter of its own, loads the library after that and raises two exceptions. "crash_late continue" lets its filter
// continue after each; otherwise the first one ends the process. "crash_late break" stops at a breakpoint before.

#include "tools/winapi.hpp"

#include <cstdio>
#include <cstring>

namespace {

LONG answer = EXCEPTION_CONTINUE_SEARCH;

LONG WINAPI filterOfProgram(EXCEPTION_POINTERS * exception) {
  std::printf("filter %lX\n", exception->ExceptionRecord->ExceptionCode);
  return answer;
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  if (std::strcmp(arguments, "continue") == 0)
    answer = EXCEPTION_CONTINUE_EXECUTION;
  SetUnhandledExceptionFilter(filterOfProgram);
  if (LoadLibraryA("kivara.dll") == nullptr)
    return 3;
  if (std::strcmp(arguments, "break") == 0) {
    answer = EXCEPTION_CONTINUE_EXECUTION;
    RaiseException(static_cast<DWORD>(EXCEPTION_BREAKPOINT), 0, 0, nullptr);
    std::puts("after the breakpoint");
    answer = EXCEPTION_CONTINUE_SEARCH;
  }
  RaiseException(0xE1234567, 0, 0, nullptr);
  std::puts("first");
  RaiseException(0xE1234568, 0, 0, nullptr);
  std::puts("second");
  return 0;
}
