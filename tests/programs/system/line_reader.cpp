// line_reader FILE: writes the length of each line of the file, and "end" after the last one, while dialogs are suppressed.

#include "areader.hpp"

#include "sv/application.hpp"

#include <cstdio>
#include <memory>

int main(int count, char ** arguments) {
  SV::Application::SetModalDialogSuppression(true);
  auto * const reader = new KivTextFileReader(count > 1 ? arguments[1] : "");
  std::unique_ptr<KivLineReader> const owner(reader);
  if (!reader->Init())
    return 2;
  for (SV::String line; reader->GetLine(line); std::fflush(stdout))
    std::printf("%d\n", static_cast<int>(line.Len()));
  std::puts("end");
  return 0;
}
