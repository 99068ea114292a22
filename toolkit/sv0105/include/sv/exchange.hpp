#pragma once
/// \file
/// Exchange: data that programs hand to each other.

#include "sv/export.hpp"
#include "tools/string.hpp"

namespace SV {

/// Formats of the clipboard and of what is dragged. Static members alone; any thread.
class SV_API Exchange {
public:
  /// The number of a format for all programs of the session; the same for the same name, in whatever case. 0 when the
  /// system refuses, as it does for the empty name.
  static unsigned long RegisterFormatName(String const & name);
};

} // namespace SV
