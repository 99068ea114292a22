#include "resources/lowmemory.hpp"

#include "tools/winapi.hpp"

#include <cstdint>
#include <cstring>

namespace SV::detail {

namespace {

constexpr std::uint64_t kLimit = std::uint64_t{1} << 32;
constexpr std::uint64_t kGranularity = 0x10000;
constexpr std::uint64_t kStep = 0x100000;

std::uint64_t endOfRegion(std::uint64_t address, bool & isFree) {
  MEMORY_BASIC_INFORMATION region;
  if (!VirtualQuery(reinterpret_cast<void const *>(address), &region, sizeof region))
    return kLimit;
  isFree = region.State == MEM_FREE;
  return reinterpret_cast<std::uint64_t>(region.BaseAddress) + region.RegionSize;
}

void * allocateBelow4GiB(std::size_t size) {
  for (std::uint64_t address = kGranularity; address + size <= kLimit;) {
    bool isFree = false;
    std::uint64_t const end = endOfRegion(address, isFree);
    if (isFree) {
      // An allocation may fail at the start of a free region and succeed further on.
      for (; address + size <= end && address + size <= kLimit; address += kStep)
        if (void * memory =
                VirtualAlloc(reinterpret_cast<void *>(address), size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE))
          return memory;
    }
    address = (end + kGranularity - 1) / kGranularity * kGranularity;
  }
  return nullptr;
}

} // namespace

char const * copyBelow4GiB(String const & text) {
  static char * block = nullptr;
  static std::size_t room = 0;
  std::size_t const needed = static_cast<std::size_t>(text.Len()) + 1;
  if (needed > room) {
    if (block)
      VirtualFree(block, 0, MEM_RELEASE);
    block = static_cast<char *>(allocateBelow4GiB(needed));
    room = block ? needed : 0;
  }
  if (block)
    std::memcpy(block, text.c_str(), needed);
  return block;
}

} // namespace SV::detail
