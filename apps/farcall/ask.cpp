// ask SERVICE TEXT MODULE...: loads the modules, calls the service with the text and prints the answer.
//
//   ask text.words "one two three" textservices.dll
//
// A sample of far calls: this program knows what a text service takes and answers, but no module that offers one. A
// module needs nothing but to register its services while it is loaded.

#include "afarcall.hpp"
#include "agreement.hpp"

#include "tools/winapi.hpp"

#include <cstdio>

namespace {

bool isLoaded(char const * module) {
  if (LoadLibraryA(module) != nullptr) // it stays: its services are called in its code
    return true;
  std::fprintf(stderr, "ask: cannot load %s\n", module);
  return false;
}

} // namespace

int main(int count, char ** arguments) {
  if (count < 3) {
    std::fputs("usage: ask SERVICE TEXT MODULE...\n", stderr);
    return 2;
  }
  for (int i = 3; i < count; ++i)
    if (!isLoaded(arguments[i]))
      return 1;
  KivMemBuf answer;
  if (!KivFarCallFactory::Instance().call(arguments[1], {arguments[2]}, answer)) {
    std::fprintf(stderr, "ask: no module offers %s\n", arguments[1]);
    return 1;
  }
  if (answer.data != nullptr)
    std::fwrite(answer.data, 1, static_cast<std::size_t>(answer.size), stdout);
  std::fputc('\n', stdout);
  return 0;
}
