#pragma once
/// \file
/// A printer as the system's spooler knows it. Internal.

#include "handles/handle.hpp"
#include "tools/string.hpp"

#include <winspool.h>

#include "tools/winnames.hpp"

#include <vector>

namespace SV::detail {

struct SpoolerKind : handles::NullKind<HANDLE> {
  static void close(HANDLE printer) { ClosePrinter(printer); }
};
using Spooler = handles::Handle<SpoolerKind>;

/// None when there is no such printer.
Spooler openPrinter(String const & name);

/// Whether the system still has it: it can be opened by those that use it after it was taken away.
bool isKnown(Spooler const & printer);

/// The name of the driver; empty when the system does not say.
String driverNameOf(Spooler const & printer);

/// Its settings, as the system lays them out. Empty when the printer refuses.
class PrinterSettings {
public:
  PrinterSettings() = default;
  PrinterSettings(Spooler const & printer, String const & name);

  /// Null when there are none.
  DEVMODEA const * get() const { return bytes_.empty() ? nullptr : reinterpret_cast<DEVMODEA const *>(bytes_.data()); }

  bool isLandscape() const;
  void setLandscape(bool landscape);

private:
  DEVMODEA & mode() { return *reinterpret_cast<DEVMODEA *>(bytes_.data()); }

  std::vector<unsigned char> bytes_;
};

} // namespace SV::detail
