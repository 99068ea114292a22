// line_reader FILE: writes the length of each line of the file, and "end" behind the last. The platform shows the message of a
// fatal end in a box only where the window system is loaded, which in a program of the product it is.

#include "areader.hpp"

#include "tools/winapi.hpp"

#include <cstdio>
#include <memory>

int main(int count, char ** arguments) {
  LoadLibraryA("user32.dll");
  auto * const reader = new KivTextFileReader(count > 1 ? arguments[1] : "");
  std::unique_ptr<KivLineReader> const owner(reader);
  if (!reader->Init())
    return 2;
  for (SV::String line; reader->GetLine(line); std::fflush(stdout))
    std::printf("%d\n", static_cast<int>(line.Len()));
  std::puts("end");
  return 0;
}
