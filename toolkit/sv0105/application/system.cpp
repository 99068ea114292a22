#include "sv/system.hpp"

#include "tools/winapi.hpp"

namespace SV {

Size System::GetScreenSizePixel() { return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}; }

Size System::GetVirtualScreenSizePixel() {
  return {GetSystemMetrics(SM_CXVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

} // namespace SV
