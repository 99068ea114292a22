// The memory cache beside malloc and free: a block is had and given back, over and over, as for the rows of a picture.

#include "amemcach.hpp"

#include "support/ratio.hpp"

#include <cstdlib>

namespace {

struct FromCache {
  KivMemCache cache;
  void * alloc(std::size_t size) { return cache.Alloc(size); }
  void free(void * block) { cache.Free(block); }
};

struct FromHeap {
  static void * alloc(std::size_t size) { return std::malloc(size); }
  static void free(void * block) { std::free(block); }
};

/// \param isWritten  a byte of each page is written, as a user of the block would
template <class Source> bench::Body taking(std::size_t size, bool isWritten) {
  return [size, isWritten](benchmark::State & state) {
    constexpr std::size_t page = 4096;
    Source source;
    for (auto _ : state) {
      auto * const block = static_cast<char *>(source.alloc(size));
      benchmark::DoNotOptimize(block);
      for (std::size_t at = 0; isWritten && at < size; at += page)
        block[at] = 'x';
      benchmark::ClobberMemory();
      source.free(block);
    }
  };
}

bench::Pair pairOf(char const * name, std::size_t size, bool isWritten) {
  return {name, bench::atMost(1), taking<FromCache>(size, isWritten), "malloc and free",
          taking<FromHeap>(size, isWritten)};
}

constexpr std::size_t kKilo = 1024;

bench::Pair const pairs[] = {
    pairOf("Memory cache: a block of 1 kB", kKilo, false),
    pairOf("Memory cache: a block of 16 kB", 16 * kKilo, false),
    pairOf("Memory cache: a block of 256 kB", 256 * kKilo, false),
    pairOf("Memory cache: a block of 1 MB", 1024 * kKilo, false),
    pairOf("Memory cache: a block of 4 MB", 4096 * kKilo, false),
    pairOf("Memory cache: a block of 1 kB, written", kKilo, true),
    pairOf("Memory cache: a block of 256 kB, written", 256 * kKilo, true),
    pairOf("Memory cache: a block of 4 MB, written", 4096 * kKilo, true),
};

} // namespace
