// Looks at the paint buffer before and after another resolution of the display. Its one argument is the file that gets a line
// for each: the size of all screens, and that of the buffer. It is meant for a virtual desktop of the system's shell, since only there the
// resolution can be changed without changing that of everybody else.

#include "adrawcch.hpp"
#include "sv/system.hpp"
#include "sv/virtualdevice.hpp"
#include "tools/winapi.hpp"

#include <cstdio>

namespace {

void report(std::FILE * file) {
  SV::VirtualDevice const & device = KivPaintBuffer::VD();
  SV::Size const screens = SV::System::GetVirtualScreenSizePixel();
  SV::Size const size = device.GetOutputSizePixel();
  std::fprintf(file, "screens %ld x %ld, buffer %ld x %ld\n", screens.width, screens.height, size.width, size.height);
}

LONG change(DWORD width, DWORD height) {
  DEVMODEA mode = {};
  mode.dmSize = sizeof mode;
  mode.dmFields = DM_PELSWIDTH | DM_PELSHEIGHT;
  mode.dmPelsWidth = width;
  mode.dmPelsHeight = height;
  return ChangeDisplaySettingsA(&mode, 0);
}

/// The shell makes the new screen after the call.
void waitFor(int width) {
  for (int tries = 0; tries < 3000 && GetSystemMetrics(SM_CXVIRTUALSCREEN) != width; ++tries)
    Sleep(10);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, char * fileName, int) {
  std::FILE * const file = std::fopen(fileName, "wt");
  if (!file)
    return 2;
  report(file);
  for (int const width : {640, 1024}) {
    std::fprintf(file, "changed %ld\n", change(static_cast<DWORD>(width), static_cast<DWORD>(width) * 3 / 4));
    waitFor(width);
    report(file);
  }
  std::fprintf(file, "end\n");
  return std::fclose(file) == 0 ? 0 : 1;
}
