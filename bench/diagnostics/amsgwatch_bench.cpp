// A message to a window that nobody watches, while another is watched, beside the same message without any hook: the watch is
// there for the life of a process, and all its windows pay for it.

#include "amsgwatch.hpp"
#include "support/ratio.hpp"
#include "sv/application.hpp"
#include "sv/window.hpp"
#include "tools/winapi.hpp"

#include <utility>

namespace {

/// The toolkit up, with two windows, of which one is watched.
class Windows {
public:
  Windows() : toolkit_(isToolkitUp()), watched_(nullptr, 0), other_(nullptr, 0) {
    KivWindowsMessageWatcher::addHookWindow(watched_.GethWnd(), "watched");
  }

  void sendMessages(benchmark::State & state) const {
    HWND const window = other_.GethWnd();
    for (auto _ : state)
      benchmark::DoNotOptimize(SendMessageA(window, WM_NULL, 0, 0));
  }

private:
  static bool isToolkitUp() {
    SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_HIDE);
    return SV::InitSV(0, nullptr);
  }

  bool toolkit_;
  SV::Window watched_;
  SV::Window other_;
};

Windows const & windows() {
  static Windows const & all = *new Windows; // the toolkit ends with the process
  return all;
}

bench::Pair const unwatched{"Message to an unwatched window", bench::atMost(1.1),
                            [](benchmark::State & state) { windows().sendMessages(state); }, "without a hook",
                            [](benchmark::State & state) {
                              Windows const & all = windows();
                              SV::MessageHook const hook = SV::Sysdepen::ChangeHook(nullptr);
                              all.sendMessages(state);
                              SV::Sysdepen::ChangeHook(hook);
                            }};

} // namespace
