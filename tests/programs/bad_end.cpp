// Ends as a test program must not: "bad_end crash" reads address 16, "bad_end box" leaves a box open under a short
// watchdog.

#include "support/last_words.hpp"
#include "tools/winapi.hpp"

#include <cstring>

int main(int count, char ** arguments) {
  support::printStackOnCrash();
  if (count > 1 && std::strcmp(arguments[1], "crash") == 0) {
    int const volatile * volatile const nowhere = reinterpret_cast<int *>(16);
    return *nowhere;
  }
  support::startWatchdog(3);
  return MessageBoxA(nullptr, "A question", "Left open", MB_OK);
}
