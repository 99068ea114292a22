#include "findings/addressspace.hpp"

namespace kivcrash {

std::size_t AddressSpace::read(std::uint64_t address, void * to, std::size_t size) const {
  if (std::size_t const count = dump_.readMemory(address, to, size); count != 0)
    return count;
  Module const * const module = moduleAt(address);
  Image const * const image = imageAt(address);
  return image ? image->readMemory(address - module->base, to, size) : 0;
}

std::optional<std::uint64_t> AddressSpace::readPointer(std::uint64_t address) const {
  std::uint64_t value = 0;
  return read(address, &value, sizeof value) == sizeof value ? std::optional(value) : std::nullopt;
}

Image const * AddressSpace::imageAt(std::uint64_t address) const {
  Module const * const module = moduleAt(address);
  if (!module)
    return nullptr;
  std::optional<Image> const & image = files_.file(*module).image;
  return image ? &*image : nullptr;
}

RUNTIME_FUNCTION const * AddressSpace::functionAt(std::uint64_t address) const {
  Image const * const image = imageAt(address);
  return image ? image->functionAt(static_cast<std::uint32_t>(address - moduleAt(address)->base)) : nullptr;
}

bool AddressSpace::isAfterCall(std::uint64_t address) const {
  constexpr unsigned kLongest = 7;       // bytes of a call
  constexpr unsigned char kNear = 0xE8;  // with a distance of four bytes
  constexpr unsigned char kOther = 0xFF; // through a register or memory, by the middle of the next byte
  unsigned char code[kLongest];
  Image const * const image = imageAt(address);
  if (!image || functionAt(address - 1) == nullptr)
    return false;
  std::uint64_t const offset = address - moduleAt(address)->base;
  if (offset < kLongest || image->readMemory(offset - kLongest, code, kLongest) != kLongest)
    return false;
  if (code[kLongest - 5] == kNear)
    return true;
  for (unsigned length = 2; length <= kLongest; ++length)
    if (code[kLongest - length] == kOther && (code[kLongest - length + 1] >> 3 & 7) == 2)
      return true;
  return false;
}

} // namespace kivcrash
