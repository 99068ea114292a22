// A library that somebody has put where it does not belong. Wherever it is loaded as code it appends a line to the file that the variable
// KIVARA_PLANTED names: its own file, a tab, and the command line of the program whose rights it then has. With KIVARA_PLANTED_ENDS in
// the environment it ends that program with 99.

#include "tools/winapi.hpp"

#include <cstdio>
#include <cstdlib>

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void *) {
  char const * const record = std::getenv("KIVARA_PLANTED");
  if (reason != DLL_PROCESS_ATTACH || record == nullptr)
    return TRUE;
  char path[MAX_PATH] = "";
  GetModuleFileNameA(module, path, sizeof path);
  if (std::FILE * const file = std::fopen(record, "ab")) {
    std::fprintf(file, "%s\t%s\n", path, GetCommandLineA());
    std::fclose(file);
  }
  if (std::getenv("KIVARA_PLANTED_ENDS") != nullptr)
    TerminateProcess(GetCurrentProcess(), 99);
  return TRUE;
}

/// So that it can stand in for plugin_needed.dll.
extern "C" __declspec(dllexport) int answerOfNeeded() { return 42; }
