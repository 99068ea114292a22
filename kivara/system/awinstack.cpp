#include "awinstack.hpp"

#include "aevents.hpp"
#include "atrace.hpp"
#include "base/modules.hpp"
#include "sv/window.hpp"
#include "tools/winapi.hpp"

#include <vector>

namespace {

constexpr unsigned kLinePushedNull = 1852;
constexpr unsigned kLinePoppedNull = 1873;
constexpr unsigned kLinePoppedUnreadable = 1875;
constexpr unsigned kLineTopUnreadable = 1898;

constexpr std::size_t kTestedBytes = 480;

std::vector<SV::Window *> parentWindows; // the newest first

bool isReadable(MEMORY_BASIC_INFORMATION const & region) {
  constexpr DWORD readable = PAGE_READONLY | PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READ |
                             PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
  return region.State == MEM_COMMIT && (region.Protect & readable) != 0 && (region.Protect & PAGE_GUARD) == 0;
}

/// Whether the window's operations can be called without a fault. Kiv_MemoryIsReadable, whose result is reported, rejects more:
/// pointers that look like the fill pattern of freed memory.
bool canBeAsked(SV::Window const * window) {
  auto const * const end = reinterpret_cast<char const *>(window) + sizeof *window;
  for (auto const * at = reinterpret_cast<char const *>(window); at < end;) {
    MEMORY_BASIC_INFORMATION region = {};
    if (VirtualQuery(at, &region, sizeof region) == 0 || !isReadable(region))
      return false;
    at = static_cast<char const *>(region.BaseAddress) + region.RegionSize;
  }
  return true;
}

void tellOfChange(SV::Window const * window, bool pushed) {
  SV::String const title = canBeAsked(window) ? window->GetText() : SV::String();
  KivWindowStackChangedEvent(parentWindows.size(), pushed, title).trigger();
}

/// Each position is read from the stack anew: while the box of a report is open, the program runs on and may change the stack.
SV::Window * topmostVisible(std::size_t firstIndex) {
  for (std::size_t index = firstIndex; index < parentWindows.size(); ++index) {
    SV::Window * const window = parentWindows[index];
    if (!Kiv_MemoryIsReadable(window, kTestedBytes))
      displayErrorMessage(kivara::modules::kAtools, kLineTopUnreadable);
    if (canBeAsked(window) && window->IsVisible())
      return window;
  }
  return nullptr;
}

} // namespace

void Kiv_PushParentWindow(SV::Window * window) {
  if (window == nullptr) {
    displayErrorMessage(kivara::modules::kAtools, kLinePushedNull);
    return;
  }
  bool const isHeld = std::erase(parentWindows, window) != 0;
  parentWindows.insert(parentWindows.begin(), window);
  if (!isHeld)
    tellOfChange(window, true);
}

SV::Window * Kiv_PopParentWindow(SV::Window * window) {
  if (window == nullptr)
    displayErrorMessage(kivara::modules::kAtools, kLinePoppedNull);
  if (!Kiv_MemoryIsReadable(window, kTestedBytes))
    displayErrorMessage(kivara::modules::kAtools, kLinePoppedUnreadable);
  if (std::erase(parentWindows, window) == 0)
    return nullptr;
  tellOfChange(window, false);
  return window;
}

SV::Window * Kiv_GetTopWindow(unsigned long firstIndex) {
  if (SV::Window * const window = topmostVisible(firstIndex))
    return window;
  SV::Window * const window = SV::Application::GetAppWindow();
  return window != nullptr && window->IsVisible() ? window : nullptr;
}
