#pragma once
/// \file
/// How many pens, brushes and fonts the window library holds: counted through what it imports, since the system's own
/// count is 0 under Wine.

#include "support/import_hook.hpp"

namespace svtest {

inline int & gdiObjects() {
  static int count = 0;
  return count;
}

inline HPEN WINAPI countPen(int style, int width, COLORREF color) {
  HPEN const pen = CreatePen(style, width, color);
  gdiObjects() += pen ? 1 : 0;
  return pen;
}

inline HBRUSH WINAPI countBrush(COLORREF color) {
  HBRUSH const brush = CreateSolidBrush(color);
  gdiObjects() += brush ? 1 : 0;
  return brush;
}

inline HFONT WINAPI countFont(LOGFONTA const * description) {
  HFONT const font = CreateFontIndirectA(description);
  gdiObjects() += font ? 1 : 0;
  return font;
}

inline BOOL WINAPI countDeleted(HGDIOBJ object) {
  BOOL const deleted = DeleteObject(object);
  gdiObjects() -= deleted ? 1 : 0;
  return deleted;
}

/// Begins to count; the count stays on for the rest of the process.
inline void countGdiObjects() {
  gdiObjects() = 0;
  support::replaceImports(GetModuleHandleA("SV0105.dll"), "GDI32.dll",
                          {{"CreatePen", reinterpret_cast<void *>(countPen)},
                           {"CreateSolidBrush", reinterpret_cast<void *>(countBrush)},
                           {"CreateFontIndirectA", reinterpret_cast<void *>(countFont)},
                           {"DeleteObject", reinterpret_cast<void *>(countDeleted)}});
}

} // namespace svtest
