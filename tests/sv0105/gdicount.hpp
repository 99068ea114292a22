#pragma once
/// \file
/// How many pens, brushes, fonts, regions, bitmaps and memory devices the window library holds: counted through what it imports, since the system's own
/// count is 0 under Wine.

#include "support/imports/import_hook.hpp"

#include <initializer_list>

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

inline HRGN WINAPI countRegion(RECT const * area) {
  HRGN const region = CreateRectRgnIndirect(area);
  gdiObjects() += region ? 1 : 0;
  return region;
}

inline HRGN WINAPI countPlainRegion(int left, int top, int right, int bottom) {
  HRGN const region = CreateRectRgn(left, top, right, bottom);
  gdiObjects() += region ? 1 : 0;
  return region;
}

inline HBITMAP WINAPI countBitmap(HDC device, BITMAPINFO const * info, UINT use, void ** bits, HANDLE section,
                                  DWORD offset) {
  HBITMAP const bitmap = CreateDIBSection(device, info, use, bits, section, offset);
  gdiObjects() += bitmap ? 1 : 0;
  return bitmap;
}

inline HDC WINAPI countDevice(HDC like) {
  HDC const device = CreateCompatibleDC(like);
  gdiObjects() += device ? 1 : 0;
  return device;
}

inline BOOL WINAPI countDeletedDevice(HDC device) {
  BOOL const deleted = DeleteDC(device);
  gdiObjects() -= deleted ? 1 : 0;
  return deleted;
}

inline BOOL WINAPI countDeleted(HGDIOBJ object) {
  BOOL const deleted = DeleteObject(object);
  gdiObjects() -= deleted ? 1 : 0;
  return deleted;
}

/// Begins to count in these modules; the count stays on for the rest of the process.
inline void countGdiObjects(std::initializer_list<char const *> modules = {"SV0105.dll"}) {
  gdiObjects() = 0;
  for (char const * const module : modules)
    support::replaceImports(GetModuleHandleA(module), "GDI32.dll",
                            {{"CreatePen", reinterpret_cast<void *>(countPen)},
                             {"CreateSolidBrush", reinterpret_cast<void *>(countBrush)},
                             {"CreateFontIndirectA", reinterpret_cast<void *>(countFont)},
                             {"CreateRectRgnIndirect", reinterpret_cast<void *>(countRegion)},
                             {"CreateRectRgn", reinterpret_cast<void *>(countPlainRegion)},
                             {"CreateDIBSection", reinterpret_cast<void *>(countBitmap)},
                             {"CreateCompatibleDC", reinterpret_cast<void *>(countDevice)},
                             {"DeleteDC", reinterpret_cast<void *>(countDeletedDevice)},
                             {"DeleteObject", reinterpret_cast<void *>(countDeleted)}});
}

} // namespace svtest
