// Lets a program that crashes end by ExitProcess, as a program that counts its lines has to: an exception that no filter wants would
// end it before the counts are written. It is initialised before the library, which asks the filter that was set before its own.

#include "tools/winapi.hpp"

namespace {

LONG WINAPI endWithCounts(EXCEPTION_POINTERS * exception) {
  if (exception->ExceptionRecord->ExceptionCode == static_cast<DWORD>(EXCEPTION_BREAKPOINT))
    return EXCEPTION_CONTINUE_SEARCH;
  ExitProcess(exception->ExceptionRecord->ExceptionCode);
}

} // namespace

/// Imported by the program, so that it is loaded with it.
extern "C" __declspec(dllexport) void countCrashes() {}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void *) {
  if (reason == DLL_PROCESS_ATTACH)
    SetUnhandledExceptionFilter(endWithCounts);
  return TRUE;
}
