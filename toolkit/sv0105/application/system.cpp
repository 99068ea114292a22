#include "sv/system.hpp"

#include "application/toolkit.hpp"
#include "sv/printer.hpp"
#include "tools/winapi.hpp"

namespace SV {

Size System::GetScreenSizePixel() { return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}; }

Size System::GetVirtualScreenSizePixel() {
  return {GetSystemMetrics(SM_CXVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

String System::GetPrinterDriverName() {
  auto const & printers = detail::toolkit().livingPrinters;
  return printers.empty() ? String() : printers.back()->GetDriverName();
}

} // namespace SV
