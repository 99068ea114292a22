#include "amemcach.hpp"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

namespace {

constexpr std::size_t kMostBlocks = 10;

using Capacity = unsigned __int64;

/// The header before the memory that Alloc returns.
Capacity & capacityOf(void * block) { return *(static_cast<Capacity *>(block) - 1); }

void freeWithHeader(void * block) { std::free(&capacityOf(block)); }

void * allocateWithHeader(Capacity size) {
  // A size that overflows with its header fails like any other size that cannot be allocated.
  constexpr Capacity most = std::numeric_limits<Capacity>::max() - sizeof(Capacity);
  auto * const header = static_cast<Capacity *>(std::malloc(std::min(size, most) + sizeof(Capacity)));
  *header = size;
  return header + 1;
}

} // namespace

KivMemCache::KivMemCache() = default;
KivMemCache::KivMemCache(KivMemCache const &) = default;
KivMemCache & KivMemCache::operator=(KivMemCache const &) = default;
KivMemCache::~KivMemCache() { std::for_each(free_.begin(), free_.end(), freeWithHeader); }

KivMemCache & KivMemCache::General() {
  static KivMemCache theCache;
  return theCache;
}

void * KivMemCache::Alloc(unsigned __int64 size) {
  // Only the largest block is tried: users of large buffers ask for about the same size each time.
  if (free_.empty() || capacityOf(free_.back()) < size)
    return allocateWithHeader(size);
  void * const block = free_.back();
  free_.pop_back();
  return block;
}

void KivMemCache::Free(void * block) {
  if (block == nullptr)
    return;
  if (free_.size() >= kMostBlocks) {
    freeWithHeader(block);
    return;
  }
  auto const place = std::lower_bound(free_.begin(), free_.end(), capacityOf(block),
                                      [](void * kept, Capacity size) { return capacityOf(kept) < size; });
  free_.insert(place, block);
}

KivMemBuf::KivMemBuf(KivMemBuf && other) noexcept
    : data(std::exchange(other.data, nullptr)), size(std::exchange(other.size, 0)) {}

KivMemBuf::~KivMemBuf() { std::free(data); }
