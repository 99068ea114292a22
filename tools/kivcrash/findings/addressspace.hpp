#pragma once
/// \file
/// The memory of the process that failed: what the minidump has of it, and the files of its modules.

#include "crash/dump.hpp"
#include "modules/modulefiles.hpp"

#include <cstdint>
#include <optional>

namespace kivcrash {

class AddressSpace {
public:
  /// Both stay where they are for as long as this object.
  AddressSpace(Dump const & dump, ModuleFiles & files) : dump_(dump), files_(files) {}

  /// Copies as many bytes as are known, and returns how many those are.
  std::size_t read(std::uint64_t address, void * to, std::size_t size) const;
  std::optional<std::uint64_t> readPointer(std::uint64_t address) const;

  Module const * moduleAt(std::uint64_t address) const { return dump_.moduleAt(address); }
  /// The file of the module with the address; null where none fits.
  Image const * imageAt(std::uint64_t address) const;
  /// The entry that says how the function at the address keeps its stack; null where there is none.
  RUNTIME_FUNCTION const * functionAt(std::uint64_t address) const;
  /// Whether a function that was called there may return to the address.
  bool isAfterCall(std::uint64_t address) const;

private:
  Dump const & dump_;
  ModuleFiles & files_;
};

} // namespace kivcrash
