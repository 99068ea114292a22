// A program on the library that faults. Its box is not shown: it would wait for somebody.

#include "acrash.hpp"
#include "support/imports/import_hook.hpp"
#include "tools/winapi.hpp"

namespace {

int WINAPI showNothing(HWND, char const *, char const *, UINT) { return IDOK; }

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  support::replaceImports(GetModuleHandleA("kivara.dll"), "USER32.dll",
                          {{"MessageBoxA", reinterpret_cast<void *>(showNothing)}});
  Kiv_SetDBLogFile(nullptr);
  int const volatile * const volatile nowhere = reinterpret_cast<int *>(16);
  return *nowhere;
}
