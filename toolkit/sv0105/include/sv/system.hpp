#pragma once
/// \file
/// System: facts about the machine.

#include "sv/export.hpp"
#include "sv/geometry.hpp"
#include "tools/string.hpp"

namespace SV {

/// As they are at the moment of the call. Static members alone; any thread.
class SV_API System {
public:
  /// Of the main screen.
  static Size GetScreenSizePixel();

  /// Of the smallest rectangle around all screens.
  static Size GetVirtualScreenSizePixel();

  /// The driver of the Printer that was made last and still lives; empty when none does. The system is not asked, so that the
  /// report of a crash can name it. Main thread.
  static String GetPrinterDriverName();
};

} // namespace SV
