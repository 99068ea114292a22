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

/// The first guard page in the range, unless inaccessible memory comes before it; null if there is none. Reading the
/// page would use the guard up, so that a stack could no longer grow, and the IsBad... functions of some systems do not
/// catch the exception.
char const * guardPageAhead(void const * pointer, std::size_t length) {
  auto const * const start = static_cast<char const *>(pointer);
  MEMORY_BASIC_INFORMATION region = {};
  for (std::size_t done = 0; done < length;) {
    char const * const at = start + done;
    if (VirtualQuery(at, &region, sizeof region) == 0 || region.State != MEM_COMMIT || region.Protect == PAGE_NOACCESS)
      return nullptr;
    if ((region.Protect & PAGE_GUARD) != 0)
      return at;
    done += static_cast<std::size_t>(static_cast<char const *>(region.BaseAddress) + region.RegionSize - at);
  }
  return nullptr;
}

/// Whether there is a NUL in the range. The system copies the bytes, and fails if another thread has freed the memory
/// meanwhile; a read of our own would end the process.
bool hasNUL(char const * start, char const * end) {
  char piece[1024];
  while (start != end) {
    std::size_t const count = std::min(static_cast<std::size_t>(end - start), sizeof piece);
    if (!ReadProcessMemory(GetCurrentProcess(), start, piece, count, nullptr))
      return false;
    if (std::memchr(piece, '\0', count) != nullptr)
      return true;
    start += count;
  }
  return false;
}

bool runsIntoGuardPage(char const * text) {
  char const * const guard = guardPageAhead(text, static_cast<std::size_t>(-1));
  return guard != nullptr && !hasNUL(text, guard);
}

} // namespace

bool Kiv_MemoryIsReadable(void const * pointer, std::size_t length) {
  return pointer != nullptr && !isPoisoned(pointer) && guardPageAhead(pointer, length) == nullptr &&
         !IsBadReadPtr(pointer, length);
}

bool Kiv_MemoryIsWriteable(void const * pointer, std::size_t length) {
  return Kiv_MemoryIsReadable(pointer, length) && !IsBadWritePtr(const_cast<void *>(pointer), length);
}

// Null stands for an absent string: callers print optional arguments.
bool Kiv_MemoryIsString(char const * pointer) {
  return pointer == nullptr ||
         (!isPoisoned(pointer) && !runsIntoGuardPage(pointer) && !IsBadStringPtrA(pointer, static_cast<UINT_PTR>(-1)));
}
