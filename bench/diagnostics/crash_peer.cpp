// The least that a program can do about its own fault: "crash_peer" calls MiniDumpWriteDump in its filter. What a dump takes goes by the
// modules of the process, so it loads those of our library, and shows the same pointers.

#include "tools/winapi.hpp"

#include <dbghelp.h>

#include <initializer_list>

namespace {

LONG WINAPI filter(EXCEPTION_POINTERS * exception) {
  SetCursor(LoadCursorA(nullptr, IDC_WAIT));
  HANDLE const file = CreateFileA("crash_peer.dmp", GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  MINIDUMP_EXCEPTION_INFORMATION information{GetCurrentThreadId(), exception, FALSE};
  bool const isWritten = MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file, MiniDumpNormal,
                                           &information, nullptr, nullptr) != FALSE;
  CloseHandle(file);
  return isWritten ? EXCEPTION_CONTINUE_SEARCH : EXCEPTION_EXECUTE_HANDLER;
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  for (char const * name : {"SV0105.dll", "TL0105.dll", "re00005.dll", "rpcrt4.dll"})
    LoadLibraryA(name);
  SetUnhandledExceptionFilter(filter);
  int const volatile * const volatile nowhere = reinterpret_cast<int *>(16);
  return *nowhere;
}
