// Ends with 0 when the runtime's start-up and the library split this program's command line alike, otherwise with the
// number of the first word that differs; a difference in the count of words is 1000.

#include "frame/arguments.hpp"
#include "tools/winapi.hpp"

#include <cstring>

/// Words stay as they stand: the runtime must not take '*' and '?' for file patterns.
extern "C" {
int _dowildcard = 0;
}

int main(int argc, char ** argv) {
  kivara::ArgumentBlock const ours = kivara::splitCommandLine(GetCommandLineA());
  if (argc != ours.count)
    return 1000;
  for (int i = 1; i < argc; ++i)
    if (std::strcmp(argv[i], ours.words[i]) != 0)
      return i;
  return 0;
}
