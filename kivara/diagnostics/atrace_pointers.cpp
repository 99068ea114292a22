#include "atrace.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

/// The fill patterns of uninitialised, freed and guard memory, as a debugging heap writes them.
bool isPoisoned(void const * pointer) {
  switch (static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(pointer)) & 0xFFFF0000) {
  case 0xCCCC0000:
  case 0xCDCD0000:
  case 0xDDDD0000:
  case 0xFDFD0000: return true;
  default: return false;
  }
}

/// Whether a NUL stands in the range. Another thread may take the memory away meanwhile, so it is copied by the system,
/// which then refuses; a read of our own would be the end of the process.
bool hasNUL(char const * start, std::size_t length) {
  char piece[256];
  for (std::size_t done = 0; done < length;) {
    std::size_t const count = std::min(length - done, sizeof piece);
    if (!ReadProcessMemory(GetCurrentProcess(), start + done, piece, count, nullptr))
      return false;
    if (std::memchr(piece, '\0', count) != nullptr)
      return true;
    done += count;
  }
  return false;
}

enum class Extent { wholeRange, untilNUL };

/// Whether reading the range, or a text in it, would come to a guard page before anything else stops it. That must not
/// be tried out: it would use the guard up, with which a stack loses its room to grow, and not every system's IsBad...
/// functions catch the exception.
bool meetsGuardPage(void const * pointer, std::size_t length, Extent extent) {
  auto const * const start = static_cast<char const *>(pointer);
  MEMORY_BASIC_INFORMATION region = {};
  for (std::size_t done = 0; done < length;) {
    char const * const at = start + done;
    if (VirtualQuery(at, &region, sizeof region) == 0 || region.State != MEM_COMMIT || region.Protect == PAGE_NOACCESS)
      return false;
    if ((region.Protect & PAGE_GUARD) != 0)
      return true;
    auto const rest = static_cast<std::size_t>(static_cast<char const *>(region.BaseAddress) + region.RegionSize - at);
    if (extent == Extent::untilNUL && hasNUL(at, rest))
      return false;
    done += rest;
  }
  return false;
}

constexpr auto kMaximum = static_cast<std::size_t>(-1);

} // namespace

bool Kiv_MemoryIsReadable(void const * pointer, std::size_t length) {
  return pointer != nullptr && !isPoisoned(pointer) && !meetsGuardPage(pointer, length, Extent::wholeRange) &&
         !IsBadReadPtr(pointer, length);
}

bool Kiv_MemoryIsWriteable(void const * pointer, std::size_t length) {
  return Kiv_MemoryIsReadable(pointer, length) && !IsBadWritePtr(const_cast<void *>(pointer), length);
}

// Null is a valid absent text for callers that print optional arguments.
bool Kiv_MemoryIsString(char const * pointer) {
  return pointer == nullptr || (!isPoisoned(pointer) && !meetsGuardPage(pointer, kMaximum, Extent::untilNUL) &&
                                !IsBadStringPtrA(pointer, kMaximum));
}
