#include "diagnostics/crash/callstack.hpp"

#include "diagnostics/crash/dumpthread.hpp"
#include "diagnostics/crash/report.hpp"

#include <cstdio>
#include <set>
#include <string>
#include <utility>

namespace kivara::crash {
namespace {

bool isFirstTime(char const * file, unsigned long line) {
  static std::set<std::pair<std::string, unsigned long>> places;
  return places.emplace(file, line).second;
}

} // namespace

void writeDumpOfThisThread(bool silent) {
  if (!dumpThisThread(silent))
    write("# [failed to create the minidump - EC %d]\r\n", static_cast<int>(GetLastError()));
}

void writeCallstack(char const * file, unsigned long line, char const * name) {
  std::printf("Creating minidump for %s(%u)\n", file, static_cast<unsigned>(line));
  DWORD const disposition = isFirstTime(file, line) ? CREATE_ALWAYS : OPEN_ALWAYS;
  DumpState & state = dumpState();
  state.closeReport();
  if (!openReport(name, disposition))
    return;
  writeDumpOfThisThread(true);
  state.closeReport();
  state.scramble = true;
}

} // namespace kivara::crash
