#pragma once
/// \file
/// System: facts about the machine.

#include "sv/export.hpp"
#include "sv/geometry.hpp"

namespace SV {

/// As they are at the moment of the call. Static members alone; any thread.
class SV_API System {
public:
  /// Of the main screen.
  static Size GetScreenSizePixel();

  /// Of the smallest rectangle around all screens.
  static Size GetVirtualScreenSizePixel();
};

} // namespace SV
