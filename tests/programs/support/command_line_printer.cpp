// Prints what it was started with: its command line, its working folder, the variable KIVARA_TEST and its standard
// input; then "done" on the error stream, and ends with the number of bytes of the command line.

#include "tools/winapi.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  char folder[MAX_PATH] = "";
  GetCurrentDirectoryA(sizeof(folder), folder);
  char const * const variable = std::getenv("KIVARA_TEST");
  char input[4096] = "";
  std::size_t const count = std::fread(input, 1, sizeof(input) - 1, stdin);
  input[count] = '\0';
  std::printf("line=%s\nfolder=%s\n", GetCommandLineA(), folder);
  std::printf("variable=%s\ninput=%s\n", variable ? variable : "(none)", input);
  std::fputs("done", stderr);
  return static_cast<int>(std::strlen(GetCommandLineA()));
}
