#pragma once
/// \file
/// What a process holds of the system: figures that must not grow while it works.

#include <array>
#include <string>
#include <vector>

namespace endurance {

/// The figures, in the order in which they are printed.
enum Kind {
  kHandles,
  kThreads,
  kDrawingObjects, ///< pens, bitmaps, fonts, devices, ... (GDI)
  kWindowObjects,  ///< windows, menus, icons, key tables (USER)
  kHeapBlocks,
  kHeapBytes,
  kPrivateBytes,
  kFiles, ///< in the folders that it was asked about
  kKinds
};

char const * nameOf(Kind kind);

using Figures = std::array<double, kKinds>;

/// The figures of this process at this moment. Other threads should rest meanwhile, or what they are about to give back counts too.
/// \param folders  whose files are counted, without those of folders in them
Figures measure(std::vector<std::string> const & folders);

} // namespace endurance
