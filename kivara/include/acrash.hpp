#pragma once
/// \file
/// Crash reports: what a program leaves behind when it fails.
///
/// Once the library is loaded, an unhandled exception leaves three files in the temporary folder, whose names begin
/// with that of the program: "program.exe.log", the report in text, to which later ones are appended;
/// "program.exe.<time>.dmp", a minidump; and "program.exe.<time>.crash", an archive of both, where the program has the
/// archiver in "tools\zip\7za.exe" below its folder. Nothing in the process can replace the filter that does it:
/// SetUnhandledExceptionFilter returns null and does nothing. Only the first exception is reported, breakpoints never, and
/// nothing in a process that a debugger started.
///
/// The text of the report is scrambled, each byte by the same value, unless the environment variable
/// "KIVDUMP_NO_ENCRYPT" is set. That prevents casual reading and protects nothing: the report holds the command line
/// and all variables of the environment.
///
/// \code
///   if (!index.isConsistent())
///     Fct_CreateMiniDump(__FILE__, __LINE__); // appends to the report, and the program goes on
/// \endcode

#include "export.hpp"

/// How Fct_CreateMiniDump ended.
enum DumpEC {
  KIV_DUMP_DONE = 88,    ///< written, if only to say that it failed; or a debugger is attached and nothing is written
  KIV_DUMP_NO_FILE = 89, ///< the report cannot be opened
};

/// Appends a report on the calling thread, and on the process, to the report file. The thread is suspended meanwhile; any
/// thread may call, but two at once write into each other's lines. It makes no minidump and no archive, shows no box for the
/// report, and may be called often. It must not be called while the thread holds the loader lock, as in DllMain: after
/// 30 seconds, only a line that says so is then written.
/// \param file  the place in the source that is named in the report; null counts as empty
KIV_API DumpEC Fct_CreateMiniDump(char const * file, unsigned long line);

/// Null or an empty name clears the name of the next report. Any other one ends the process at once, with the exit code
/// 0xC0000409 and without a report. That stays as it is: call this with null or an empty name only.
KIV_API void Fct_SetMiniDumpFileName(char const * name);

/// Ends the process as Fct_SetMiniDumpFileName does, which it calls with a name.
KIV_API void Fct_CreateCallstack(char const * file, unsigned long line);

/// \name The database's log
/// If a file of this name, "kivdb.log" at first, lies in the temporary folder, the archive of a crash holds it too.
/// @{

/// The name without a folder.
KIV_API char const * Kiv_GetDBLogFile();
/// Null counts as empty, for no log. It is cut after 259 bytes.
KIV_API void Kiv_SetDBLogFile(char const * name);
/// @}
