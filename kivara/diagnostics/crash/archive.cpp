#include "diagnostics/crash/archive.hpp"

#include "acrash.hpp"
#include "aproc.hpp"
#include "base/boundedtext.hpp"
#include "diagnostics/crash/report.hpp"
#include "tools/string.hpp"

namespace kivara::crash {
namespace {

bool isFile(char const * path) {
  DWORD const attributes = GetFileAttributesA(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// The paths stand without quotes: a folder whose name has a blank loses the archive.
SV::String archiveCommand(char const * base) {
  Paths const & paths = dumpState().paths;
  SV::String command(paths.moduleDirectory);
  command += "\\tools\\zip\\7za.exe a -y -tzip ";
  command += base;
  command += ".crash ";
  command += base;
  command += ".dmp ";
  command += paths.report;
  BoundedText<2 * kPathSize> const log("%s\\%s", paths.temporaryDirectory, Kiv_GetDBLogFile());
  if (isFile(log.c_str())) {
    command += " ";
    command += log.c_str();
  }
  return command;
}

} // namespace

void showCrashBox(char const * text) { MessageBoxA(nullptr, text, "An unrecoverable error occured", MB_ICONERROR); }

void packArchive(char const * base) {
  try {
    KivSynchronousProcess archiver(archiveCommand(base), SV::String(), KIV_CMDSHOW_MINIMIZED);
    archiver.Execute(false);
  } catch (...) { // no memory for the command: the files are still there
  }
  showCrashBox(BoundedText<512>("A crash dump file was written to\n  '%s.crash'\n", base).c_str());
}

} // namespace kivara::crash
