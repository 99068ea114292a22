#pragma once
/// \file
/// From an address to the line of source, by the debug symbols of a program or DLL.

#include "modules/image.hpp"
#include "symbols/dwarfunit.hpp"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kivcrash {

/// A function with the line in it.
struct Location {
  std::string function; ///< with its arguments, as in the source
  Place place;
};

class DebugSymbols {
public:
  /// \param image  stays where it is for as long as this object
  /// \throws std::runtime_error  with the reason why there is nothing to be read
  explicit DebugSymbols(Image const & image);

  /// What runs at the offset from the image's beginning: the function whose code it is first, then those that it was inlined
  /// into, from the inside out. Empty where no symbols are: never the nearest name.
  std::vector<Location> at(std::uint64_t offset);

private:
  struct UnitRange {
    AddressRange range;
    Dwarf_Off die;
  };

  void readUnits();
  DwarfUnit const * unitAt(std::uint64_t address);
  Location locationOf(Dwarf_Off function, Place place);

  DwarfObject object_;
  std::uint64_t base_;
  std::vector<UnitRange> ranges_; // by their beginnings
  std::map<Dwarf_Off, std::unique_ptr<DwarfUnit>> units_;
};

} // namespace kivcrash
