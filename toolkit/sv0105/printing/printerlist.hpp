#pragma once
/// \file
/// Which printers there are. Internal.

#include "tools/containers.hpp"
#include "tools/string.hpp"

#include <optional>

namespace SV::detail {

/// As the switches say, in the order in which the system names them.
ISequence<String> printerNames();

/// Empty when there is none.
String defaultPrinterName();

/// The name of a printer as the system spells it; nothing when there is no such printer.
std::optional<String> findPrinter(String const & name);

} // namespace SV::detail
