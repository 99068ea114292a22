#pragma once
/// \file
/// Memory blocks: a cache of freed blocks, and an owner of one block.
///
/// The cache is for code that allocates and frees large buffers over and over: freed blocks are reused without going
/// through the heap. There are no locks: only one thread at a time may use a cache, and the process-wide one is for the
/// main thread.
///
/// \code
///   KivMemCache & cache = KivMemCache::General();
///   void * const row = cache.Alloc(width * 4);
///   paint(row);
///   cache.Free(row); // the next Alloc of up to that size returns it again
/// \endcode

#include "export.hpp"
#include "tools/containers.hpp"

#include <cstdint>

/// Keeps up to 10 freed blocks. A block is freed through the cache that allocated it, or through a copy of that cache.
class KIV_API KivMemCache {
public:
  /// An empty cache.
  KivMemCache();

  /// A copy shares the kept blocks, and both caches would free them, so copy only empty caches.
  KivMemCache(KivMemCache const &);
  KivMemCache & operator=(KivMemCache const &);

  /// Frees the kept blocks. Blocks in use stay allocated.
  ~KivMemCache();

  /// The process-wide cache, destroyed at the end of the process.
  static KivMemCache & General();

  /// Returns the largest kept block if it is large enough, otherwise a new block. The largest is taken even if a smaller
  /// one would do, and it keeps its capacity. When memory is exhausted, this crashes instead of returning null.
  /// \param size  in bytes; 0 gives a valid block too
  /// \return at least that many bytes, not cleared, aligned to 8 bytes
  void * Alloc(unsigned __int64 size);

  /// Keeps the block for reuse. If 10 blocks are kept already, it goes back to the heap, whatever its size.
  /// \param block  from Alloc; null does nothing
  void Free(void * block);

private:
  ISequence<void *> free_; ///< by capacity, the smallest first
};

/// Owns one block from malloc. Moving leaves the source empty.
class KIV_API KivMemBuf {
public:
  KivMemBuf() = default;
  /// Takes over the block.
  KivMemBuf(KivMemBuf && other) noexcept;
  KivMemBuf & operator=(KivMemBuf &&) = delete;
  /// Frees the block.
  virtual ~KivMemBuf();

  void * data = nullptr;     ///< from malloc, owned; may be null
  unsigned __int64 size = 0; ///< in bytes
};
