// secret_keeper CODED CODED: crashes with two secrets in its memory, one in a variable of the function that fails and one in a block of the
// heap. Each is the coded text with every character one lower.

#include "acrash.hpp"
#include "sv/application.hpp"
#include "tools/winapi.hpp"

#include <cstdlib>

namespace {

constexpr std::size_t kMost = 64;

void decode(char const * coded, char volatile * secret) {
  std::size_t i = 0;
  for (; coded[i] != '\0' && i < kMost - 1; ++i)
    secret[i] = static_cast<char>(coded[i] - 1);
  secret[i] = '\0';
}

/// Each character is one lower than the coded one, so that the secret stands nowhere else.
void failWithSecrets(char const * codedOfStack, char const * codedOfHeap) {
  char volatile onStack[kMost];
  auto * const onHeap = static_cast<char volatile *>(std::malloc(1 << 20));
  if (onHeap == nullptr)
    return;
  decode(codedOfStack, onStack);
  decode(codedOfHeap, onHeap);
  *static_cast<int volatile *>(nullptr) = 1;
  decode(codedOfStack, onStack); // both are still in use
  decode(codedOfHeap, onHeap);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, char *, int) {
  Fct_SetMiniDumpFileName(nullptr); // so that the library is loaded, and with it the filter
  SV::Application::SetModalDialogSuppression(true);
  if (__argc == 3)
    failWithSecrets(__argv[1], __argv[2]);
  return 1;
}
