#pragma once
/// \file
/// Memory blocks: a cache of freed ones for reuse, and the owner of one.
///
/// The cache is for code that allocates and frees large buffers over and over: what it frees comes back without the
/// heap. Nothing is locked: a cache is for one thread at a time, and the process-wide one is for the main thread.
///
/// \code
///   KivMemCache & cache = KivMemCache::General();
///   void * const row = cache.Alloc(width * 4);
///   paint(row);
///   cache.Free(row); // the next Alloc of up to that size gives it out again
/// \endcode

#include "export.hpp"
#include "tools/containers.hpp"

#include <cstdint>

/// Keeps up to 10 freed blocks. Blocks go back to the cache that gave them out, or to a copy of it.
class KIV_API KivMemCache {
public:
  /// Keeps nothing yet.
  KivMemCache();

  /// Copies share the blocks that are kept, and each will free them: only empty caches may be copied.
  KivMemCache(KivMemCache const &);
  KivMemCache & operator=(KivMemCache const &);

  /// Frees the blocks that are kept; those in use stay with their users.
  ~KivMemCache();

  /// The cache of the process; destroyed at its end.
  static KivMemCache & General();

  /// The largest of the kept blocks, if it is large enough, otherwise a new one. The largest is taken even where a
  /// smaller one would do, and it keeps its capacity. Exhausted memory is a crash in here, not a result.
  /// \param size  in bytes; 0 gives a valid block too
  /// \return memory of at least that size, not cleared, aligned to 8 bytes
  void * Alloc(unsigned __int64 size);

  /// Keeps the block for reuse; with 10 blocks kept already it goes back to the heap, whatever its size.
  /// \param block  from Alloc; null does nothing
  void Free(void * block);

private:
  ISequence<void *> free_; ///< by capacity, the smallest first
};

/// The owner of one block that malloc gave. It can be moved, which leaves the source empty.
class KIV_API KivMemBuf {
public:
  KivMemBuf() = default;
  /// Takes the block over.
  KivMemBuf(KivMemBuf && other) noexcept;
  KivMemBuf & operator=(KivMemBuf &&) = delete;
  /// Calls free on the block.
  virtual ~KivMemBuf();

  void * data = nullptr;     ///< from malloc, owned; may be null
  unsigned __int64 size = 0; ///< in bytes
};
