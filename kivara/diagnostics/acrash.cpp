#include "acrash.hpp"

#include "base/boundedtext.hpp"
#include "diagnostics/crash/callstack.hpp"
#include "diagnostics/crash/dumpthread.hpp"
#include "diagnostics/crash/filter.hpp"
#include "diagnostics/crash/report.hpp"

using kivara::orEmpty;
using namespace kivara::crash;

namespace {

char fileNameOverride[kPathSize] = "";
char databaseLog[kPathSize] = "kivdb.log";

/// Ends the process as the runtime does when it finds an index out of range: no filter, no detach.
void failFast() {
  constexpr unsigned long kRangeCheckFailure = 8;
  __asm__ volatile("int $0x29" : : "c"(kRangeCheckFailure) : "memory");
}

bool openReportOrOverride() {
  bool const hasOverride = fileNameOverride[0] != '\0';
  bool const isOpen = openReport(hasOverride ? fileNameOverride : dumpState().paths.report, OPEN_ALWAYS);
  fileNameOverride[0] = '\0';
  return isOpen;
}

} // namespace

DumpEC Fct_CreateMiniDump(char const * file, unsigned long line) {
  if (IsDebuggerPresent())
    return KIV_DUMP_DONE;
  DumpState & state = dumpState();
  bool const opens = state.report == INVALID_HANDLE_VALUE;
  if (opens && !openReportOrOverride())
    return KIV_DUMP_NO_FILE;
  write("# === [Mini Dump for %s line %d]\r\n", orEmpty(file), static_cast<int>(line));
  writeDumpOfThisThread(false);
  if (opens)
    state.closeReport();
  state.scramble = true;
  return KIV_DUMP_DONE;
}

void Fct_SetMiniDumpFileName(char const * name) {
  if (name == nullptr || *name == '\0') {
    fileNameOverride[0] = '\0';
    return;
  }
  lstrcpynA(fileNameOverride, name, kPathSize);
  failFast();
}

void Fct_CreateCallstack(char const * file, unsigned long line) {
  kivara::BoundedText<kPathSize> const name("_kiv.minidump.%s.%u.txt", orEmpty(file), static_cast<unsigned>(line));
  Fct_SetMiniDumpFileName(name.c_str());
  writeCallstack(orEmpty(file), line, name.c_str());
  fileNameOverride[0] = '\0';
}

char const * Kiv_GetDBLogFile() { return databaseLog; }

void Kiv_SetDBLogFile(char const * name) { lstrcpynA(databaseLog, orEmpty(name), kPathSize); }

/// The filter is there before any code of the program runs, and as long as the library.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH)
    installFilter(module);
  else if (reason == DLL_PROCESS_DETACH)
    uninstallFilter();
  return TRUE;
}
