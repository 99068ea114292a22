#include "diagnostics/crash/paths.hpp"

#include "tools/winapi.hpp"

#include <cstdio>
#include <cstring>

namespace kivara::crash {
namespace {

/// Where the file's name begins.
char const * nameOf(char const * path) {
  char const * const backslash = std::strrchr(path, '\\');
  return backslash != nullptr ? backslash + 1 : path;
}

void setFolder(char (&folder)[kPathSize], char const * program) {
  auto const length = static_cast<std::size_t>(nameOf(program) - program);
  if (length == 0) {
    std::strcpy(folder, ".");
    return;
  }
  std::memcpy(folder, program, length);
  folder[length] = '\0';
}

void setTemporaryFolder(char (&folder)[kPathSize]) {
  DWORD const length = GetTempPathA(kPathSize, folder);
  if (length == 0 || length >= kPathSize)
    std::strcpy(folder, ".");
}

bool endsInSeparator(char const * path) {
  std::size_t const length = std::strlen(path);
  return length != 0 && (path[length - 1] == '\\' || path[length - 1] == '/');
}

} // namespace

void findPaths(Paths & paths) {
  char program[kPathSize] = "";
  GetModuleFileNameA(nullptr, program, kPathSize);
  program[kPathSize - 1] = '\0';
  setFolder(paths.moduleDirectory, program);
  setTemporaryFolder(paths.temporaryDirectory);
  char const * const separator = endsInSeparator(paths.temporaryDirectory) ? "" : "\\";
  std::snprintf(paths.dumpBase, kPathSize, "%s%s%s", paths.temporaryDirectory, separator, nameOf(program));
  std::snprintf(paths.report, kPathSize, "%s%s%s.log", paths.temporaryDirectory, separator, nameOf(program));
}

} // namespace kivara::crash
