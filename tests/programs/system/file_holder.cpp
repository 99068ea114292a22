// file_holder FILE [shared]: keeps a file open until it is ended, with "shared" letting others read and write it, but not move or
// delete it. Says "held" when it has it.

#include "tools/winapi.hpp"

#include <cstdio>
#include <cstdlib>

int main(int argc, char ** argv) {
  if (argc < 2)
    return 1;
  DWORD const sharing = argc > 2 ? FILE_SHARE_READ | FILE_SHARE_WRITE : 0;
  HANDLE const file = CreateFileA(argv[1], GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    return 2;
  std::puts("held");
  std::fflush(stdout);
  Sleep(INFINITE);
}
