#pragma once
/// \file
/// Reports of a thread's stack, each place of the source in a file of its own. Internal.

namespace kivara::crash {

/// Writes about the calling thread into the open report, or that this failed.
void writeDumpOfThisThread(bool silent);

/// Writes the section on the stack of the calling thread into a file. The first time for a place, what the file held is
/// dropped.
/// \param name  of the file
void writeCallstack(char const * file, unsigned long line, char const * name);

} // namespace kivara::crash
