#pragma once
/// \file
/// Memory of the process's heap, as the system's interfaces want it. Internal.

#include "handles/handle.hpp"

namespace kivara {

struct HeapKind : handles::NullKind<void *> {
  static void close(void * block) { HeapFree(GetProcessHeap(), 0, block); }
};

/// Freed with this object; none where there was no memory.
using HeapBlock = handles::Handle<HeapKind>;

/// \param size  in bytes
inline HeapBlock heapBlock(std::size_t size) { return HeapBlock(HeapAlloc(GetProcessHeap(), 0, size)); }

} // namespace kivara
