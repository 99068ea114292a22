#pragma once
/// \file
/// The addresses that belong to a function or a source file.

#include "symbols/dwarfobject.hpp"

#include <cstdint>
#include <vector>

namespace kivcrash {

/// Addresses are those that the linker gave; the end does not belong to it.
struct AddressRange {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;

  bool has(std::uint64_t address) const { return address >= begin && address < end; }
};

/// The ranges of a function or a file; none where they cannot be read.
std::vector<AddressRange> rangesOf(Dwarf_Debug debug, Dwarf_Die die);

} // namespace kivcrash
