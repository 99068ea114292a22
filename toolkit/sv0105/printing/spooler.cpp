#include "printing/spooler.hpp"

namespace SV::detail {

Spooler openPrinter(String const & name) {
  HANDLE printer = nullptr;
  String own = name;
  return Spooler(OpenPrinterA(const_cast<char *>(own.c_str()), &printer, nullptr) ? printer : nullptr);
}

namespace {

/// Of its facts in bytes; 0 when there are none.
DWORD sizeOfFacts(Spooler const & printer) {
  DWORD size = 0;
  if (printer)
    GetPrinterA(printer.get(), 2, nullptr, 0, &size);
  return size;
}

} // namespace

bool isKnown(Spooler const & printer) { return sizeOfFacts(printer) > 0; }

String driverNameOf(Spooler const & printer) {
  DWORD size = sizeOfFacts(printer);
  std::vector<unsigned char> bytes(size);
  if (size == 0 || !GetPrinterA(printer.get(), 2, bytes.data(), size, &size))
    return String();
  return String(reinterpret_cast<PRINTER_INFO_2A const *>(bytes.data())->pDriverName);
}

PrinterSettings::PrinterSettings(Spooler const & printer, String const & name) {
  char * const device = const_cast<char *>(name.c_str());
  LONG const size = DocumentPropertiesA(nullptr, printer.get(), device, nullptr, nullptr, 0);
  if (size < static_cast<LONG>(sizeof(DEVMODEA)))
    return;
  bytes_.resize(static_cast<std::size_t>(size));
  if (DocumentPropertiesA(nullptr, printer.get(), device, &mode(), nullptr, DM_OUT_BUFFER) != IDOK)
    bytes_.clear();
}

bool PrinterSettings::isLandscape() const {
  return get() != nullptr && (get()->dmFields & DM_ORIENTATION) != 0 && get()->dmOrientation == DMORIENT_LANDSCAPE;
}

void PrinterSettings::setLandscape(bool landscape) {
  mode().dmFields |= DM_ORIENTATION;
  mode().dmOrientation = landscape ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
}

} // namespace SV::detail
