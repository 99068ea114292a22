// A checker of database drivers. It ends with the code in KIVTEST_CHECKER_CODE, after so many milliseconds as
// KIVTEST_CHECKER_WAIT says, and writes how it was started to the file in KIVTEST_CHECKER_REPORT.

#include "tools/winapi.hpp"

#include <cstdio>
#include <cstdlib>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
  auto const setting = [](char const * name) {
    char const * const value = std::getenv(name);
    return value != nullptr ? value : "";
  };
  STARTUPINFOA startup = {};
  GetStartupInfoA(&startup);
  Sleep(static_cast<DWORD>(std::atoi(setting("KIVTEST_CHECKER_WAIT"))));
  if (FILE * const report = std::fopen(setting("KIVTEST_CHECKER_REPORT"), "ab")) {
    std::fprintf(report, "flags=0x%lx show=%d arguments='%s'\n", startup.dwFlags, startup.wShowWindow, arguments);
    std::fclose(report);
  }
  return std::atoi(setting("KIVTEST_CHECKER_CODE"));
}
