#pragma once
/// \file
/// Calls of the window library to the system's visual styles.

#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

#include <string>
#include <uxtheme.h>
#include <vector>

namespace themetest {

struct StyleCalls {
  std::vector<std::string> opened; ///< names of classes
  std::vector<HWND> windows;       ///< for which they were
  std::vector<std::string> drawn;  ///< "part,state"
  std::vector<RECT> areas;         ///< into which it was
  int open = 0;                    ///< handles that were not closed
};

inline StyleCalls & styleCalls() {
  static StyleCalls calls;
  return calls;
}

inline HTHEME WINAPI openNoted(HWND window, LPCWSTR classes) {
  std::wstring const name(classes);
  styleCalls().opened.emplace_back(name.begin(), name.end());
  styleCalls().windows.push_back(window);
  HTHEME const theme = OpenThemeData(window, classes);
  styleCalls().open += theme ? 1 : 0;
  return theme;
}

inline HRESULT WINAPI closeNoted(HTHEME theme) {
  HRESULT const result = CloseThemeData(theme);
  styleCalls().open -= SUCCEEDED(result) ? 1 : 0;
  return result;
}

inline HRESULT WINAPI drawNoted(HTHEME theme, HDC device, int part, int state, RECT const * area, RECT const * clip) {
  styleCalls().drawn.push_back(std::to_string(part) + "," + std::to_string(state));
  styleCalls().areas.push_back(*area);
  return DrawThemeBackground(theme, device, part, state, area, clip);
}

/// From now on; before the window library has made its first call.
inline void noteStyleCalls() {
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "uxtheme.dll",
                          {{"OpenThemeData", reinterpret_cast<void *>(openNoted)},
                           {"CloseThemeData", reinterpret_cast<void *>(closeNoted)},
                           {"DrawThemeBackground", reinterpret_cast<void *>(drawNoted)}});
}

} // namespace themetest
