#pragma once
/// \file
/// What becomes of the files of a crash: the archive, and the box that names it. Internal.

namespace kivara::crash {

/// Shows a box without an owner, since the program's windows may be what has failed.
void showCrashBox(char const * text);

/// Starts the archiver, which packs minidump, report and the database's log, if there is one, and shows where the archive
/// will be. Nothing waits for the archiver or looks at its result: the files that it packs stay.
/// \param base  path and name of the files without ".dmp" and ".crash"
void packArchive(char const * base);

} // namespace kivara::crash
