#include "ui/tray/traylimits.hpp"

#include "atrace.hpp"
#include "sv/application.hpp"

#include <cstdio>

// Not from assert.h, where it never returns: it does when a user tells it to, and the caller has to go on then.
extern "C" __declspec(dllimport) void __cdecl _wassert(wchar_t const * text, wchar_t const * file, unsigned line);

namespace kivara::tray {

void require(bool holds, Limit const & limit) {
  if (holds)
    return;
  if (!SV::Application::IsModalDialogSuppression()) {
    _wassert(limit.text, L"asystray", limit.line);
    return;
  }
  char text[256];
  std::snprintf(text, sizeof text, "[assertion] asystray (%u): %ls\n", limit.line, limit.text);
  KivDebugOut(text);
}

} // namespace kivara::tray
