// Watches two windows that only the hook knows. What the process does is in its words, in their order:
// - "watch": both windows are added
// - "unwatch": both are removed
// - "hook": another hook is there before
// - "late": when the library has ended, all operations and the hook are called once more

#include "event_holder.hpp"

#include "amsgwatch.hpp"
#include "sv/sysdepen.hpp"
#include "tools/winapi.hpp"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

HWND windowOf(std::uintptr_t number) { return reinterpret_cast<HWND>(number); }

SV::MessageHook installedHook = nullptr;

int otherHook(HWND, unsigned, unsigned long long, long long, long long & result) {
  result = 17;
  return 1;
}

void comeLate(void *) {
  KivWindowsMessageWatcher::addHookWindow(windowOf(0x30), "late");
  KivWindowsMessageWatcher::removeHookWindow(windowOf(0x10));
  KivWindowsMessageWatcher::addMessage("late\n");
  long long result = 0;
  int const answer = installedHook(windowOf(0x10), WM_SIZE, 0, 0, result);
  // What the toolkit has by now: a hook of before, or none.
  SV::MessageHook const hook = SV::Sysdepen::GetHook();
  std::printf("%d %s\n", answer, hook == otherHook ? "former hook" : hook == nullptr ? "no hook" : "hook still there");
  std::fflush(stdout);
}

} // namespace

int main(int argc, char ** argv) {
  for (int i = 1; i < argc; ++i) {
    char const * const word = argv[i];
    if (std::strcmp(word, "hook") == 0)
      SV::Sysdepen::ChangeHook(otherHook);
    if (std::strcmp(word, "watch") == 0) {
      KivWindowsMessageWatcher::addHookWindow(windowOf(0x10), "first");
      KivWindowsMessageWatcher::addHookWindow(windowOf(0x20), "second");
      installedHook = SV::Sysdepen::GetHook();
    }
    if (std::strcmp(word, "unwatch") == 0) {
      KivWindowsMessageWatcher::removeHookWindow(windowOf(0x10));
      KivWindowsMessageWatcher::removeHookWindow(windowOf(0x20));
    }
    if (std::strcmp(word, "late") == 0)
      hold(nullptr, comeLate);
  }
  return 0;
}
