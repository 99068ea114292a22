#include "diagnostics/crash/stacksection.hpp"

#include "diagnostics/crash/report.hpp"

// It needs the types of the platform's header.
#include <dbghelp.h>

#include <cstdio>
#include <cstring>

namespace kivara::crash {
namespace {

constexpr DWORD kFurtherOptions = 0x216;
static_assert(kFurtherOptions ==
              (SYMOPT_UNDNAME | SYMOPT_DEFERRED_LOADS | SYMOPT_LOAD_LINES | SYMOPT_FAIL_CRITICAL_ERRORS));

int depth = 0;
bool initialised = false;
bool failed = false;

/// The folders of the program, the system and Windows.
void setSearchPath(char * path, std::size_t size) {
  char system[kPathSize] = "";
  char windows[kPathSize] = "";
  GetSystemDirectoryA(system, kPathSize);
  GetWindowsDirectoryA(windows, kPathSize);
  std::snprintf(path, size, "%s;%s;%s", dumpState().paths.moduleDirectory, system, windows);
}

void initialiseSymbols() {
  if (initialised || failed)
    return;
  char path[3 * kPathSize];
  setSearchPath(path, sizeof path);
  SymSetOptions(SYMOPT_DEFERRED_LOADS);
  if (!SymInitialize(GetCurrentProcess(), path, TRUE)) {
    writeFailure("SymInitialize (GetCurrentProcess (), sSearchPath, true)", GetLastError());
    failed = true;
    return;
  }
  if (SymSetOptions(SymGetOptions() | kFurtherOptions) == 0)
    writeFailure("SymSetOptions (nOptions)", GetLastError());
  initialised = true;
}

void writeSearchPath() {
  char path[2048] = "";
  SymGetSearchPath(GetCurrentProcess(), path, sizeof path);
  write("  Symbols are searched in: '%s'\r\n", path);
}

void writeTrace() {
  if (initialised) {
    write("  [Start dbghelp.dll stack tracing]\r\n");
    writeSearchPath();
    write("\r\n");
  } else {
    write("  [Start generic stack tracing]\r\n");
  }
  write("  End of stack trace\r\n");
}

} // namespace

void writeStackSection(bool silent) {
  if (depth != 0)
    return;
  depth = 1;
  initialiseSymbols();
  if (!silent)
    writeTrace();
  endSection();
  depth = 0;
}

bool cleanUpSymbols() {
  if (!initialised)
    return false;
  SymCleanup(GetCurrentProcess());
  initialised = false;
  return true;
}

} // namespace kivara::crash
