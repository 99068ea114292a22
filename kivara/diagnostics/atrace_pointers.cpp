#include "atrace.hpp"
#include "tools/winapi.hpp"

#include <cstdint>

namespace {

/// The fill patterns of uninitialised, freed and guard memory, as a debugging heap writes them.
bool isPoisoned(void const * pointer) {
  switch (static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(pointer)) & 0xFFFF0000) {
  case 0xCCCC0000:
  case 0xCDCD0000:
  case 0xDDDD0000:
  case 0xFDFD0000:
    return true;
  default:
    return false;
  }
}

} // namespace

bool Kiv_MemoryIsReadable(void const * pointer, std::size_t length) {
  return pointer != nullptr && !isPoisoned(pointer) && !IsBadReadPtr(pointer, length);
}

bool Kiv_MemoryIsWriteable(void const * pointer, std::size_t length) {
  return Kiv_MemoryIsReadable(pointer, length) && !IsBadWritePtr(const_cast<void *>(pointer), length);
}

// Null is a valid absent text for callers that print optional arguments.
bool Kiv_MemoryIsString(char const * pointer) {
  return pointer == nullptr || (!isPoisoned(pointer) && !IsBadStringPtrA(pointer, static_cast<UINT_PTR>(-1)));
}
