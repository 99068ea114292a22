#pragma once
/// \file
/// The report file of crashes and the one writer of its texts. Internal.
///
/// Everything is written to the disk at once and without the heap, so that a process that dies in the middle leaves what it
/// had written. Nothing here is locked.

#include "diagnostics/crash/paths.hpp"
#include "tools/winapi.hpp"

namespace kivara::crash {

/// The state of the process's dumps.
struct DumpState {
  Paths paths{};
  HANDLE report = INVALID_HANDLE_VALUE;
  bool scramble = true;

  DumpState() { findPaths(paths); }
  DumpState(DumpState const &) = delete;
  DumpState & operator=(DumpState const &) = delete;
  ~DumpState() { closeReport(); }

  void closeReport();
};

/// Made by the first call, which is that of the installation.
DumpState & dumpState();

/// Opens the file at its end.
/// \param disposition  OPEN_ALWAYS, or CREATE_ALWAYS for an empty one
/// \return whether it is open; otherwise GetLastError has the reason
bool openReport(char const * path, DWORD disposition);

/// Writes a text of at most 4096 bytes; what is longer is cut. Formatted as by the runtime's printf.
__attribute__((format(ms_printf, 1, 2))) void write(char const * format, ...);

/// Writes a text of any length between two others.
void writeLong(char const * before, char const * text, char const * after);

/// The blank line that ends a section.
inline void endSection() { write("\r\n"); }

/// The line of a call that failed. Fetch the error at once.
inline void writeFailure(char const * call, DWORD error) {
  write("# [%s failed with EC %d]\r\n", call, static_cast<int>(error));
}

/// Writes a line to descriptor 2, past the streams of the runtime, whose locks a crashed thread may hold. It is cut after
/// 255 bytes.
__attribute__((format(ms_printf, 1, 2))) void writeError(char const * format, ...);

} // namespace kivara::crash
