#include "diagnostics/crash/archive.hpp"

#include "acrash.hpp"
#include "aproc.hpp"
#include "base/boundedtext.hpp"
#include "diagnostics/crash/report.hpp"
#include "tools/string.hpp"

#include <cstring>

namespace kivara::crash {
namespace {

constexpr char kArchiver[] = "\\tools\\zip\\7za.exe";

bool isFile(char const * path) {
  DWORD const attributes = GetFileAttributesA(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

using ArchiverPath = BoundedText<kPathSize + sizeof kArchiver>;

ArchiverPath archiverPath() { return ArchiverPath("%s%s", dumpState().paths.moduleDirectory, kArchiver); }

/// Whether the system would run another program: without quotes it tries each part of a path that ends before a blank first, and
/// somebody who may not write to the program's folder may have put a file there.
bool isAnotherProgramFirst(char const * path) {
  for (char const * at = std::strpbrk(path, " \t"); at != nullptr; at = std::strpbrk(at + 1, " \t")) {
    auto const length = static_cast<int>(at - path);
    if (isFile(ArchiverPath("%.*s", length, path).c_str()) || isFile(ArchiverPath("%.*s.exe", length, path).c_str()))
      return true;
  }
  return false;
}

/// The paths stand without quotes: a temporary folder whose name has a blank loses the archive.
SV::String archiveCommand(char const * base) {
  Paths const & paths = dumpState().paths;
  SV::String command(archiverPath().c_str());
  command += " a -y -tzip ";
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
    if (!isAnotherProgramFirst(archiverPath().c_str()))
      archiver.Execute(false);
  } catch (...) { // no memory for the command: the files are still there
  }
  showCrashBox(BoundedText<512>("A crash dump file was written to\n  '%s.crash'\n", base).c_str());
}

} // namespace kivara::crash
