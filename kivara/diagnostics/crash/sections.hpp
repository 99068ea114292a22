#pragma once
/// \file
/// What a crash report says about the program and the machine. Internal.

namespace kivara::crash {

/// Writes title, program, system, folders, plug-ins, times, executable, environment, printer, and the times of process and
/// system. A part whose facts cannot be fetched, for lack of memory, ends where it is.
void writeFacts(char const * title);

} // namespace kivara::crash
